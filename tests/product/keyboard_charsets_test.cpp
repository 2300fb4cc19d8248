// SPDX-License-Identifier: MIT
#include <cstdint>

#include "keyboard_fixture.h"

namespace {

using test::WordBytes;

class KeyboardCharsets : public KeyboardTest {
protected:
    // A second language with this many groups: after the header, code units 1, 2, 3 and so on.
    static std::string Groups(WORD count) {
        std::vector<WORD> words = {0xFFFF};
        for (WORD unit = 1; unit <= 4 * count; ++unit)
            words.push_back(unit);
        return WordBytes(words);
    }
    std::vector<unsigned> Slots(std::size_t entry) const {
        const auto& slots = m_keyboard->m_Charset.at(entry).m_Slots;
        return {std::begin(slots), std::end(slots)};
    }
};

std::vector<unsigned> Eight(unsigned code) { return std::vector<unsigned>(8, code); }

// Skins name keys by their numbers, so no entry may ever change its number or its characters.
TEST_F(KeyboardCharsets, BuiltInTablesHaveTheNumbersThatSkinsUse) {
    Start(test::TestSkin().Without("LOCALE_CHARSET"));
    ASSERT_EQ(m_keyboard->m_Charset.size(), 222u);
    EXPECT_EQ(m_keyboard->m_nDigitFirst, 0u);
    EXPECT_EQ(m_keyboard->m_nDigitLast, 47u);
    EXPECT_EQ(m_keyboard->m_nFuncFirst, 48u);
    EXPECT_EQ(m_keyboard->m_nFuncLast, 69u);
    EXPECT_EQ(m_keyboard->m_nCharFirst, 70u);
    EXPECT_EQ(m_keyboard->m_nCharLast, 221u);

    // The ends of the blocks.
    EXPECT_EQ(Slots(0), Eight('['));
    EXPECT_EQ(Slots(47), Eight('0'));
    EXPECT_EQ(Slots(48), Eight(0xF000));
    EXPECT_EQ(Slots(69), Eight(0xF025));
    EXPECT_EQ(Slots(70), (std::vector<unsigned>{'1', '!', 0xBF, 0xBF, 0, 0, 0, 0}));
    EXPECT_EQ(Slots(221), (std::vector<unsigned>{']', '}', 0xA9, 0xAE, 0, 0, 0, 0}));

    // FNV-1a over all code units of the published tables, to notice any other change.
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const CharsetEntry& entry : m_keyboard->m_Charset)
        for (const WCHAR unit : entry.m_Slots)
            hash = (hash ^ static_cast<std::uint64_t>(unit)) * 0x100000001B3;
    EXPECT_EQ(hash, 0xEAF37AC3701477DCu);
}

TEST_F(KeyboardCharsets, SecondLanguageFillsTheUpperSlotsOfItsEntriesAndAddsSome) {
    struct {
        std::string bytes;
        std::map<std::size_t, std::vector<unsigned>>
            upperSlots;  // of the first, the last and the next entries
        std::size_t entries = 222;
    } const cases[] = {
        {Groups(160), {{70, {1, 2, 3, 4}}, {221, {605, 606, 607, 608}}, {229, {637, 638, 639, 640}}}, 230},
        {Groups(10) + "\x01\x02\x03", {{70, {1, 2, 3, 4}}, {79, {37, 38, 39, 40}}, {80, {0, 0, 0, 0}}}},
        {"", {{70, {0, 0, 0, 0}}}},
        {"x", {{70, {0, 0, 0, 0}}}},
        {"xx", {{70, {0, 0, 0, 0}}}},
        {"xxxxxxxxx", {{70, {0, 0, 0, 0}}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.bytes.size());
        Start(test::TestSkin().Data("LOCALE_CHARSET", c.bytes));
        EXPECT_EQ(m_keyboard->m_Charset.size(), c.entries) << "the table is built afresh each time";
        EXPECT_EQ(m_keyboard->m_nCharLast, c.entries - 1);
        EXPECT_EQ(Slots(69), Eight(0xF025));
        for (const auto& [entry, slots] : c.upperSlots) {
            const std::vector<unsigned> all = Slots(entry);
            EXPECT_EQ(std::vector<unsigned>(all.begin() + 4, all.end()), slots) << entry;
            EXPECT_EQ(all[0] == 0, entry > 221) << entry;
        }
    }
}

TEST_F(KeyboardCharsets, CodesAreClassifiedFromElevenEntriesOn) {
    Start();
    const struct {
        WCHAR code;
        bool digitalLine, status, functional;
    } cases[] = {
        {'/', false, false, false},    {'0', true, false, false},     {'9', true, false, false},
        {':', false, false, false},    {'-', true, false, false},     {'=', true, false, false},
        {0xEFFF, false, false, false}, {0xF000, false, true, true},   {0xF005, false, true, true},
        {0xF006, false, false, true},  {0xF010, false, false, true},  {0xF011, true, false, true},
        {0xF025, false, false, true},  {0xF026, false, false, false}, {0, false, false, false},
    };
    for (const std::size_t entries :
         {m_keyboard->m_Charset.size(), std::size_t{70}, std::size_t{11}, std::size_t{10}}) {
        m_keyboard->m_Charset.resize(entries);
        const bool isLoaded = entries >= 11;
        for (const auto& c : cases) {
            SCOPED_TRACE(testing::Message() << entries << " entries, code " << std::hex << unsigned{c.code});
            EXPECT_EQ(m_keyboard->IsDigitalLineEntry(c.code), isLoaded && c.digitalLine);
            EXPECT_EQ(m_keyboard->IsStatusKeyEntry(c.code), isLoaded && c.status);
            // This one also needs the complete function block.
            EXPECT_EQ(m_keyboard->IsFunctionalKeyEntry(c.code), entries >= 70 && c.functional);
        }
    }
}

}  // namespace
