// SPDX-License-Identifier: MIT
// The skin that ships, as the engine will read it.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "bitmap.h"
#include "compile.h"
#include "files.h"
#include "module_reader.h"
#include "source.h"

namespace tlk {
namespace {

constexpr std::array<const char*, kSlotCount> kMasks{
    "LANG1_SMALL_MASK", "LANG1_LARGE_MASK", "UML1_SMALL_MASK", "UML1_LARGE_MASK",
    "LANG2_SMALL_MASK", "LANG2_LARGE_MASK", "UML2_SMALL_MASK", "UML2_LARGE_MASK"};

struct Keyboard {
    std::string picture;
    std::string layout;
    std::vector<std::string> masks;
    Size size;
};

std::vector<Keyboard> Keyboards() {
    std::vector<Keyboard> boards{{"char_keyboard_bitmap", "CHAR_LAYOUT_STRUCT", {}, {240, 80}},
                                 {"LANSCAPE_KEYBOARD_BITMAP", "LNDSCP_LAYOUT_STRUCT", {}, {320, 80}},
                                 {"digit_keyboard_bitmap", "DIGIT_LAYOUT_STRUCT", {"DIGIT_MASK"}, {240, 80}}};
    for (const std::string mask : kMasks) {
        boards[0].masks.push_back(mask);
        boards[1].masks.push_back(mask + "_LS");
    }
    return boards;
}

struct Record {
    std::uint16_t key;
    Rect rect;
};

class StandardSkin : public testing::Test {
protected:
    StandardSkin()
        : m_Source(ReadSource(ReadText(STANDARD_SOURCE))),
          m_Module(Module::Parse(ReadBytes(STANDARD_SKIN))) {}

    std::vector<Record> Records(const std::string& name) const {
        const auto data = m_Module.Find(ResourceKind::Data, name);
        if (!data) return {};
        const auto big = [&data](std::size_t offset) { return (*data)[offset] << 8 | (*data)[offset + 1]; };
        std::vector<Record> records;
        for (std::size_t at = 0; at + 16 <= data->size(); at += 16)
            records.push_back(
                {static_cast<std::uint16_t>(big(at)), {big(at + 4), big(at + 6), big(at + 8), big(at + 10)}});
        return records;
    }

    std::optional<Picture> Bitmap(const std::string& name) const {
        const auto data = m_Module.Find(ResourceKind::Bitmap, name);
        return data ? DecodeBitmap(*data) : std::nullopt;
    }

    Skin m_Source;
    Module m_Module;
};

TEST_F(StandardSkin, IsWhatItsSourceSaysByteForByte) {
    EXPECT_EQ(WriteModule(CompileSkin(m_Source, Font(TLK_FONT))), ReadBytes(STANDARD_SKIN));
}

TEST_F(StandardSkin, MasksAreOneBitAndCoverTheirPicture) {
    for (const Keyboard& board : Keyboards()) {
        ASSERT_TRUE(Bitmap(board.picture)) << board.picture;
        EXPECT_EQ(Bitmap(board.picture)->GetSize(), board.size);
        for (const std::string& mask : board.masks) {
            ASSERT_TRUE(Bitmap(mask)) << mask;
            EXPECT_EQ(Bitmap(mask)->GetSize(), board.size) << mask;
            EXPECT_EQ(Get16(*m_Module.Find(ResourceKind::Bitmap, mask), 14), 1) << mask;
        }
    }
}

TEST_F(StandardSkin, KeysTileThePictureOnce) {
    for (const Keyboard& board : Keyboards()) {
        Grid<int> hits(board.size, 0);
        for (const Record& record : Records(board.layout)) {
            EXPECT_LT(record.key, m_Source.characters.size());
            ASSERT_TRUE(hits.Contains(record.rect.left, record.rect.top)) << board.layout;
            ASSERT_TRUE(hits.Contains(record.rect.right, record.rect.bottom)) << board.layout;
            for (int y = record.rect.top; y <= record.rect.bottom; ++y)
                for (int x = record.rect.left; x <= record.rect.right; ++x)
                    ++hits.At(x, y);
        }
        EXPECT_EQ(std::ranges::count(hits.Pixels(), 1), board.size.width * board.size.height) << board.layout;
    }
}

TEST_F(StandardSkin, KeysOfEachKeyboardAreThoseItNeeds) {
    const auto keys = [this](const char* layout) {
        std::set<int> found;
        for (const Record& record : Records(layout))
            found.insert(record.key);
        return found;
    };
    const std::set<int> portrait = keys("CHAR_LAYOUT_STRUCT");
    EXPECT_EQ(portrait, keys("LNDSCP_LAYOUT_STRUCT"));
    for (int key = 70; key <= 116; ++key)
        EXPECT_TRUE(portrait.count(key)) << key;
    for (int key : {48, 49, 51, 52, 53, 54, 55, 56, 57, 58, 59, 60, 61, 62})
        EXPECT_TRUE(portrait.count(key)) << key;
    EXPECT_FALSE(portrait.count(50)) << "a caps-lock key: double taps on Shift would no longer lock";
    const std::set<int> digits = keys("DIGIT_LAYOUT_STRUCT");
    for (int key = 0; key <= 37; ++key)
        EXPECT_TRUE(digits.count(key)) << key;
    EXPECT_TRUE(digits.count(52));
    EXPECT_FALSE(digits.count(46) && digits.count(53)) << "these two count as one key";
}

// The ink of a key: its pixels left-aligned, with their height in the key's row.
using Ink = std::set<std::pair<int, int>>;

Ink InkOf(const Picture& mask, const Rect& rect) {
    Ink ink;
    int left = rect.right;
    for (int y = rect.top; y <= rect.bottom; ++y)
        for (int x = rect.left; x <= rect.right; ++x)
            if (mask.At(x, y) == Color{}) left = std::min(left, x);
    for (int y = rect.top; y <= rect.bottom; ++y)
        for (int x = rect.left; x <= rect.right; ++x)
            if (mask.At(x, y) == Color{}) ink.emplace(x - left, y - rect.top);
    return ink;
}

// The engine inverts a key's rectangle less its last column and row: nothing may stick out, nor reach the
// bevel.
TEST_F(StandardSkin, EveryKeyShowsSomethingInsideItsFace) {
    for (const Keyboard& board : Keyboards()) {
        for (const std::string& name : board.masks) {
            const Picture mask = *Bitmap(name);
            for (const Record& record : Records(board.layout)) {
                const Rect& rect = record.rect;
                const Rect inner{rect.left + 1, rect.top + 1, rect.right - 2, rect.bottom - 2};
                const std::size_t all = InkOf(mask, rect).size();
                EXPECT_NE(all, 0u) << name << " key " << record.key;
                EXPECT_EQ(all, InkOf(mask, inner).size()) << name << " key " << record.key;
            }
        }
    }
}

TEST_F(StandardSkin, DifferentCharactersLookDifferent) {
    for (const Keyboard& board : Keyboards()) {
        for (std::size_t slot = 0; slot < board.masks.size(); ++slot) {
            const Picture mask = *Bitmap(board.masks[slot]);
            std::map<Ink, char16_t> seen;
            for (const Record& record : Records(board.layout)) {
                if (IsFunction(record.key)) continue;
                const char16_t character = m_Source.characters[record.key][slot];
                const auto [same, isNew] = seen.emplace(InkOf(mask, record.rect), character);
                EXPECT_TRUE(isNew || same->second == character)
                    << board.masks[slot] << ": " << ToUtf8(same->second) << " and " << ToUtf8(character);
            }
        }
    }
}

// Caps lock spares these keys inside the rectangle only, and the engine takes a pressed key whose corner lies
// on the rectangle's edge for one of them.
TEST_F(StandardSkin, CapsRectangleHoldsTheDigitRowAndNoOtherCharacter) {
    const auto data = m_Module.Find(ResourceKind::Data, "CAPS_RECT");
    ASSERT_TRUE(data && data->size() == 16);
    const auto edge = [&data](std::size_t offset) { return static_cast<int>(*Get32(*data, offset)); };
    const Rect caps{edge(0), edge(4), edge(8), edge(12)};
    for (const Record& record : Records("CHAR_LAYOUT_STRUCT")) {
        const Rect& rect = record.rect;
        const bool corner = rect.left >= caps.left && rect.left <= caps.right && rect.top >= caps.top &&
                            rect.top <= caps.bottom;
        const bool digitRow = (record.key >= 70 && record.key <= 81) || record.key == 55;
        EXPECT_EQ(corner, digitRow) << record.key;
        if (digitRow) {
            EXPECT_LE(rect.right, caps.right) << record.key;
            EXPECT_LE(rect.bottom, caps.bottom) << record.key;
        }
    }
}

TEST_F(StandardSkin, SecondLanguageIsGermanThroughout) {
    const auto data = m_Module.Find(ResourceKind::Data, "LOCALE_CHARSET");
    ASSERT_TRUE(data);
    ASSERT_EQ(data->size(), 2u + 8 * 47);
    const auto group = [&data](std::size_t key) {
        std::u16string units;
        for (std::size_t i = 0; i < 4; ++i)
            units += static_cast<char16_t>(*Get16(*data, 2 + (key - 70) * 8 + i * 2));
        return units;
    };
    for (std::size_t key = 70; key <= 116; ++key)
        EXPECT_EQ(group(key).find(u'\0'), std::u16string::npos) << key;
    EXPECT_EQ(group(87), u"zZêÊ");
    EXPECT_EQ(group(105), u"yYýÝ");
    EXPECT_EQ(group(92), u"üÜûÛ");
    EXPECT_EQ(group(80), u"ß?\\\\");
    EXPECT_EQ(group(84), u"eE€€");
}

}  // namespace
}  // namespace tlk
