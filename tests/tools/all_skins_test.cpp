// SPDX-License-Identifier: MIT
// Types through every built skin with the real engine: selects each plane by tapping status keys, taps each
// key in its middle, and compares the events with the tables of the library and the skin, which are read here
// from their resources.
#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <set>

#include "keyboard_fixture.h"

namespace {

namespace fs = std::filesystem;

struct SkinFile {
    fs::path path;
    SIZE screen;  // upright
};

// Skins are in folders named after their screen, such as 240x320.
std::vector<SkinFile> AllSkins() {
    std::vector<SkinFile> skins;
    for (const auto& folder : fs::directory_iterator(SKINS_FOLDER)) {
        const std::string name = folder.path().filename().string();
        const std::size_t x = name.find('x');
        if (x == std::string::npos || name.find_first_not_of("0123456789x") != std::string::npos) continue;
        const SIZE screen{std::stoi(name), std::stoi(name.substr(x + 1))};
        for (const auto& entry : fs::directory_iterator(folder))
            if (entry.path().extension() == ".tlk") skins.push_back({entry.path(), screen});
    }
    std::sort(skins.begin(), skins.end(), [](const auto& a, const auto& b) { return a.path < b.path; });
    return skins;
}

std::string NameOf(const testing::TestParamInfo<SkinFile>& skin) {
    std::string name = fs::relative(skin.param.path, SKINS_FOLDER).replace_extension().string();
    std::replace_if(
        name.begin(), name.end(), [](unsigned char letter) { return !std::isalnum(letter); }, '_');
    return name;
}

using Slots = std::array<WORD, 8>;
using Table = std::vector<Slots>;
using Layout = std::map<WORD, std::vector<RECT>>;
using Bytes = std::vector<unsigned>;

Bytes ReadData(HMODULE module, LPCWSTR name) {
    const HRSRC resource = FindResourceW(module, name, TEXT("RC_DATA"));
    if (!resource) return {};
    const auto* bytes = static_cast<const BYTE*>(LoadResource(module, resource));
    return {bytes, bytes + SizeofResource(module, resource)};
}

WORD Little(const Bytes& bytes, std::size_t at) { return static_cast<WORD>(bytes[at] | bytes[at + 1] << 8); }
WORD Big(const Bytes& bytes, std::size_t at) { return static_cast<WORD>(bytes[at] << 8 | bytes[at + 1]); }

Slots EightTimes(WORD code) {
    Slots slots;
    slots.fill(code);
    return slots;
}

Table ReadTable(HMODULE library, HMODULE skin) {
    Table table;
    const Bytes digits = ReadData(library, TEXT("DIGITALSET"));
    for (std::size_t at = 0; at < digits.size(); at += 2)
        table.push_back(EightTimes(Little(digits, at)));
    const Bytes functions = ReadData(library, TEXT("FUNCSET"));
    for (std::size_t at = 0; at < functions.size(); at += 2)
        table.push_back(EightTimes(Big(functions, at)));
    const Bytes first = ReadData(library, TEXT("CHARSET_EN"));
    const Bytes second = ReadData(skin, TEXT("LOCALE_CHARSET"));
    for (std::size_t at = 0; at < first.size(); at += 8) {
        Slots& slots = table.emplace_back(Slots{});
        for (std::size_t i = 0; i < 4; ++i) {
            slots[i] = Little(first, at + 2 * i);
            if (2 + at + 8 <= second.size()) slots[4 + i] = Little(second, 2 + at + 2 * i);
        }
    }
    return table;
}

Layout ReadLayout(HMODULE skin, LPCWSTR name) {
    Layout layout;
    const Bytes bytes = ReadData(skin, name);
    for (std::size_t at = 0; at + 16 <= bytes.size(); at += 16)
        layout[Big(bytes, at)].push_back(
            {Big(bytes, at + 4), Big(bytes, at + 6), Big(bytes, at + 8), Big(bytes, at + 10)});
    return layout;
}

constexpr const WCHAR* kMasks[2][8] = {
    {TEXT("LANG1_SMALL_MASK"), TEXT("LANG1_LARGE_MASK"), TEXT("UML1_SMALL_MASK"), TEXT("UML1_LARGE_MASK"),
     TEXT("LANG2_SMALL_MASK"), TEXT("LANG2_LARGE_MASK"), TEXT("UML2_SMALL_MASK"), TEXT("UML2_LARGE_MASK")},
    {TEXT("LANG1_SMALL_MASK_LS"), TEXT("LANG1_LARGE_MASK_LS"), TEXT("UML1_SMALL_MASK_LS"),
     TEXT("UML1_LARGE_MASK_LS"), TEXT("LANG2_SMALL_MASK_LS"), TEXT("LANG2_LARGE_MASK_LS"),
     TEXT("UML2_SMALL_MASK_LS"), TEXT("UML2_LARGE_MASK_LS")}};

POINT Middle(const RECT& r) { return {(r.left + r.right) / 2, (r.top + r.bottom) / 2}; }

// The characters of key-downs, and all other events.
struct Arrived {
    std::vector<WORD> characters;
    Events others;
};

Arrived Sort(const Events& events) {
    Arrived arrived;
    for (const std::string& event : events) {
        const std::size_t flags = event.find("flags=");
        if (flags == std::string::npos) {
            arrived.others.push_back(event);
            continue;
        }
        if ((std::stoul(event.substr(flags + 6, 8), nullptr, 16) & 0x80) == 0) continue;
        const std::string character = event.substr(flags + 15);
        arrived.characters.push_back(character[0] == '\''
                                         ? static_cast<WORD>(character[1])
                                         : static_cast<WORD>(std::stoul(character.substr(2), nullptr, 16)));
    }
    return arrived;
}

class EverySkin : public KeyboardTest, public testing::WithParamInterface<SkinFile> {
protected:
    void TypeEverything(LONG width, LONG height) {
        SCOPED_TRACE(std::to_string(width) + "x" + std::to_string(height));
        ASSERT_TRUE(test::SetScreenSize(width, height));
        test::CopyToDevice(GetParam().path, "Windows/a.tlk");
        ASSERT_TRUE(m_keyboard->Init(width, height));
        ASSERT_FALSE(m_keyboard->m_bNoSkin);
        const bool landscape = width > height;
        m_table = ReadTable(_Module.GetModuleInstance(), m_keyboard->m_hSkinLib);
        m_layout = ReadLayout(m_keyboard->m_hSkinLib,
                              landscape ? TEXT("LNDSCP_LAYOUT_STRUCT") : TEXT("CHAR_LAYOUT_STRUCT"));
        ASSERT_FALSE(m_layout.empty());
        m_typed.clear();
        for (std::size_t plane = 0; plane < 8; ++plane)
            if (FindResourceW(m_keyboard->m_hSkinLib, kMasks[landscape][plane], RT_BITMAP)) TypePlane(plane);
        EXPECT_EQ(m_typed, Typable());
        TypeWithCapsLock(landscape, width == height);
        TypeFunctions();
        TypeDigits();
        BringUp(0);
    }

private:
    Events TapAt(const RECT& r) {
        Down(Middle(r));
        Up(Middle(r));
        return m_callback.Take();
    }
    void TapStatus(WORD key) {
        ASSERT_TRUE(m_layout.contains(key)) << "no key " << key << " leads on";
        TapAt(m_layout.at(key)[0]);
    }

    // One-shot statuses end with every key, the language stays.
    void BringUp(std::size_t plane) {
        const KbStatus& status = m_keyboard->m_stKbStatus;
        if ((plane >= 4) != !status.m_bLng1) TapStatus(test::KeyLanguage);
        if (plane % 4 >= 2) BringUpUmlauts();
        if (plane % 2 == 1) TapStatus(test::KeyShift);
    }
    void BringUpUmlauts() {
        if (m_layout.contains(test::KeyUmlaut)) return TapStatus(test::KeyUmlaut);
        const RECT& key = m_layout.at(test::KeyLanguage)[0];
        const POINT end{Middle(key).x, key.top - 20};
        Down(Middle(key));
        Move(end);
        Up(end);
    }

    static bool IsCharacter(WORD key) { return key < test::KeyShift || key >= test::Key1; }

    bool ExpectTyped(WORD key, const RECT& r, WORD character, const char* where) {
        const std::vector<WORD> expected{character};
        const Arrived arrived = Sort(TapAt(r));
        EXPECT_EQ(arrived.characters, expected) << where << ", key " << key;
        return arrived.characters == expected;
    }

    void TypePlane(std::size_t plane) {
        static constexpr const char* kNames[] = {"lng1-small", "lng1-large", "uml1-small", "uml1-large",
                                                 "lng2-small", "lng2-large", "uml2-small", "uml2-large"};
        for (const auto& [key, rects] : m_layout) {
            if (!IsCharacter(key)) continue;
            ASSERT_LT(key, m_table.size());
            for (const RECT& r : rects) {
                ASSERT_NO_FATAL_FAILURE(BringUp(plane)) << kNames[plane];
                if (ExpectTyped(key, r, m_table[key][plane], kNames[plane])) m_typed.insert({plane, key});
            }
        }
    }

    // Every character key in every plane that the layout's status keys can select.
    std::set<std::pair<std::size_t, WORD>> Typable() const {
        const bool hasLanguage2 = m_layout.contains(test::KeyLanguage);
        const bool hasUmlauts = hasLanguage2 || m_layout.contains(test::KeyUmlaut);
        std::set<std::pair<std::size_t, WORD>> typable;
        for (std::size_t plane = 0; plane < 8; ++plane) {
            if (plane % 2 == 1 && !m_layout.contains(test::KeyShift)) continue;
            if (plane % 4 >= 2 && !hasUmlauts) continue;
            if (plane >= 4 && !hasLanguage2) continue;
            for (const auto& [key, rects] : m_layout)
                if (IsCharacter(key)) typable.insert({plane, key});
        }
        return typable;
    }

    // Only Shift is held down or latched between two keys.
    void TypeFunctions() {
        BringUp(0);
        for (const auto& [key, events] : FunctionKeyEvents())
            if (m_layout.contains(key))
                for (const RECT& r : m_layout.at(key)) {
                    EXPECT_EQ(TapAt(r), events) << "key " << key;
                }
        if (!m_layout.contains(test::KeyShift) || !m_layout.contains(test::KeyBackspace)) return;
        TapStatus(test::KeyShift);
        EXPECT_EQ(TapAt(m_layout.at(test::KeyBackspace)[0]),
                  (Events{"vk 10 up", "vk 2E down", "vk 2E up", "vk 10 up"}));
    }

    void ToggleCapsLock() {
        if (m_layout.contains(test::KeyCaps)) return TapStatus(test::KeyCaps);
        const POINT shift = Middle(m_layout.at(test::KeyShift)[0]);
        TapAt(m_layout.at(test::KeyShift)[0]);
        if (!m_keyboard->m_stKbStatus.m_bShift) return;  // the tap released caps lock
        EXPECT_TRUE(m_keyboard->DblPressKey(shift, &m_window));
        m_callback.Take();
    }

    void TypeWithCapsLock(bool landscape, bool square) {
        if (!m_layout.contains(test::KeyCaps) && !m_layout.contains(test::KeyShift)) return;
        BringUp(0);
        ToggleCapsLock();
        ASSERT_TRUE(m_keyboard->m_stKbStatus.m_bCAPS);
        const bool spares =
            !landscape && !square && !ReadData(m_keyboard->m_hSkinLib, TEXT("CAPS_RECT")).empty();
        for (const auto& [key, rects] : m_layout) {
            if (!IsCharacter(key)) continue;
            const WORD code = m_table[key][0];
            const bool digitRow = (code >= '0' && code <= '9') || code == '-' || code == '=';
            ExpectTyped(key, rects[0], m_table[key][spares && digitRow ? 0 : 1], "caps lock");
        }
        ToggleCapsLock();
        EXPECT_FALSE(m_keyboard->m_stKbStatus.m_bCAPS);
    }

    void TypeDigits() {
        const Layout digits = ReadLayout(m_keyboard->m_hSkinLib, TEXT("DIGIT_LAYOUT_STRUCT"));
        if (digits.empty()) return;
        BringUp(0);
        ASSERT_NO_FATAL_FAILURE(TapStatus(test::KeyDigits));
        ASSERT_TRUE(m_keyboard->m_stKbStatus.m_bDigit);
        for (const auto& [key, rects] : digits) {
            for (const RECT& r : rects) {
                if (IsCharacter(key)) ExpectTyped(key, r, m_table[key][7], "digit");
                if (!FunctionKeyEvents().contains(key)) continue;
                EXPECT_EQ(TapAt(r), FunctionKeyEvents().at(key)) << "digit, key " << key;
            }
        }
        ASSERT_TRUE(digits.contains(test::KeyDigits));
        TapAt(digits.at(test::KeyDigits)[0]);
        EXPECT_FALSE(m_keyboard->m_stKbStatus.m_bDigit);
    }

    Table m_table;
    Layout m_layout;
    // The planes and keys whose character arrived.
    std::set<std::pair<std::size_t, WORD>> m_typed;
};

TEST_P(EverySkin, TypesWhatItsTablesSayInEveryPlane) {
    const SIZE screen = GetParam().screen;
    TypeEverything(screen.cx, screen.cy);
    if (screen.cx != screen.cy) TypeEverything(screen.cy, screen.cx);
}

INSTANTIATE_TEST_SUITE_P(Skins, EverySkin, testing::ValuesIn(AllSkins()), NameOf);

}  // namespace
