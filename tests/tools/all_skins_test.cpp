// SPDX-License-Identifier: MIT
// Types through every built skin with the real engine: selects each plane by tapping status keys, taps each
// key in its middle, and compares the events with the characters that the table has for it.
#include <algorithm>
#include <cctype>
#include <filesystem>

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

POINT Middle(const RECT& r) { return {(r.left + r.right) / 2, (r.top + r.bottom) / 2}; }

// The characters of key-downs.
std::vector<WORD> CharactersOf(const Events& events) {
    std::vector<WORD> characters;
    for (const std::string& event : events) {
        const std::size_t flags = event.find("flags=");
        if (flags == std::string::npos) continue;
        if ((std::stoul(event.substr(flags + 6, 8), nullptr, 16) & 0x80) == 0) continue;
        const std::string character = event.substr(flags + 15);
        characters.push_back(character[0] == '\''
                                 ? static_cast<WORD>(character[1])
                                 : static_cast<WORD>(std::stoul(character.substr(2), nullptr, 16)));
    }
    return characters;
}

struct TypedPlane {
    const char* name;
    HBITMAP CKeyboard::*mask;
};
// By the slots of a character's record.
constexpr TypedPlane kPlanes[] = {
    {"lng1-small", &CKeyboard::m_hLng1SmlKbMask}, {"lng1-large", &CKeyboard::m_hLng1LrgKbMask},
    {"uml1-small", &CKeyboard::m_hUml1SmlKbMask}, {"uml1-large", &CKeyboard::m_hUml1LrgKbMask},
    {"lng2-small", &CKeyboard::m_hLng2SmlKbMask}, {"lng2-large", &CKeyboard::m_hLng2LrgKbMask},
    {"uml2-small", &CKeyboard::m_hUml2SmlKbMask}, {"uml2-large", &CKeyboard::m_hUml2LrgKbMask}};

class EverySkin : public KeyboardTest, public testing::WithParamInterface<SkinFile> {
protected:
    void TypeEverything(LONG width, LONG height) {
        SCOPED_TRACE(std::to_string(width) + "x" + std::to_string(height));
        test::SetScreenSize(width, height);
        test::CopyToDevice(GetParam().path, "Windows/a.tlk");
        ASSERT_TRUE(m_keyboard->Init(width, height));
        ASSERT_FALSE(m_keyboard->m_bNoSkin);
        ASSERT_FALSE(Keys().empty());
        for (std::size_t plane = 0; plane < std::size(kPlanes); ++plane) {
            EXPECT_EQ(m_keyboard.get()->*kPlanes[plane].mask != nullptr, CanShow(plane))
                << kPlanes[plane].name;
            if (CanShow(plane)) TypePlane(plane);
        }
        TypeWithCapsLock();
        TypeFunctions();
        TypeDigits();
        SelectPlane(0);
    }

private:
    // Of the keyboard shown.
    const KeyLayout& Keys() const {
        return m_keyboard->m_stKbStatus.m_bDigit ? m_keyboard->m_DigitLayout : m_keyboard->m_CharLayout;
    }
    bool Has(DWORD key) const { return Keys().count(key) != 0; }
    const RECT& FirstRect(DWORD key) const { return Keys().at(key).m_Rects[0]; }
    const WCHAR* CharactersOfKey(DWORD key) const { return m_keyboard->m_Charset.at(key).m_Slots; }

    Events TapAt(const RECT& r) {
        Down(Middle(r));
        Up(Middle(r));
        return m_callback.Take();
    }
    void TapStatus(DWORD key) {
        ASSERT_TRUE(Has(key)) << "no key " << key << " leads on";
        TapAt(FirstRect(key));
    }

    // One-shot statuses end with every key, the language stays.
    void SelectPlane(std::size_t plane) {
        const KbStatus& status = m_keyboard->m_stKbStatus;
        if ((plane >= 4) != !status.m_bLng1) TapStatus(test::KeyLanguage);
        if (plane % 4 >= 2) SelectUmlauts();
        if (plane % 2 == 1) TapStatus(test::KeyShift);
    }
    void SelectUmlauts() {
        if (Has(test::KeyUmlaut)) return TapStatus(test::KeyUmlaut);
        const RECT& key = FirstRect(test::KeyLanguage);
        const POINT end{Middle(key).x, key.top - 20};
        Down(Middle(key));
        Move(end);
        Up(end);
    }

    static bool IsCharacter(DWORD key) { return key < test::KeyShift || key >= test::Key1; }

    void ExpectTyped(DWORD key, const RECT& r, WORD character, const char* where) {
        EXPECT_EQ(CharactersOf(TapAt(r)), std::vector<WORD>{character}) << where << ", key " << key;
    }

    bool CanShow(std::size_t plane) const {
        const bool hasLanguage2 = Has(test::KeyLanguage);
        if (plane % 2 == 1 && !Has(test::KeyShift)) return false;
        if (plane % 4 >= 2 && !hasLanguage2 && !Has(test::KeyUmlaut)) return false;
        return plane < 4 || hasLanguage2;
    }

    void TypePlane(std::size_t plane) {
        const char* const name = kPlanes[plane].name;
        for (const auto& [key, entry] : Keys()) {
            if (!IsCharacter(key)) continue;
            for (const RECT& r : entry.m_Rects) {
                ASSERT_NO_FATAL_FAILURE(SelectPlane(plane)) << name;
                ExpectTyped(key, r, CharactersOfKey(key)[plane], name);
            }
        }
    }

    // Only Shift is held down or latched between two keys.
    void TypeFunctions() {
        SelectPlane(0);
        ExpectFunctions("letters");
        if (!Has(test::KeyShift) || !Has(test::KeyBackspace)) return;
        TapStatus(test::KeyShift);
        EXPECT_EQ(TapAt(FirstRect(test::KeyBackspace)),
                  (Events{"vk 10 up", "vk 2E down", "vk 2E up", "vk 10 up"}));
    }
    void ExpectFunctions(const char* where) {
        for (const auto& [key, events] : FunctionKeyEvents())
            if (Has(key))
                for (const RECT& r : Keys().at(key).m_Rects)
                    EXPECT_EQ(TapAt(r), events) << where << ", key " << key;
    }

    void ToggleCapsLock() {
        if (Has(test::KeyCaps)) return TapStatus(test::KeyCaps);
        TapAt(FirstRect(test::KeyShift));
        if (!m_keyboard->m_stKbStatus.m_bShift) return;  // the tap released caps lock
        EXPECT_TRUE(m_keyboard->DblPressKey(Middle(FirstRect(test::KeyShift)), &m_window));
        m_callback.Take();
    }

    void TypeWithCapsLock() {
        if (!Has(test::KeyCaps) && !Has(test::KeyShift)) return;
        SelectPlane(0);
        ToggleCapsLock();
        ASSERT_TRUE(m_keyboard->m_stKbStatus.m_bCAPS);
        const bool spares = m_keyboard->m_bPortrait && m_keyboard->m_CAPSRect.right > 0;
        for (const auto& [key, entry] : Keys()) {
            if (!IsCharacter(key)) continue;
            const WCHAR* const characters = CharactersOfKey(key);
            const WCHAR code = characters[0];
            const bool digitRow = (code >= '0' && code <= '9') || code == '-' || code == '=';
            ExpectTyped(key, entry.m_Rects[0], characters[spares && digitRow ? 0 : 1], "caps lock");
        }
        ToggleCapsLock();
        EXPECT_FALSE(m_keyboard->m_stKbStatus.m_bCAPS);
    }

    void TypeDigits() {
        if (m_keyboard->m_DigitLayout.empty()) return;
        SelectPlane(0);
        ASSERT_NO_FATAL_FAILURE(TapStatus(test::KeyDigits));
        ASSERT_TRUE(m_keyboard->m_stKbStatus.m_bDigit);
        for (const auto& [key, entry] : Keys())
            for (const RECT& r : entry.m_Rects)
                if (IsCharacter(key)) ExpectTyped(key, r, CharactersOfKey(key)[7], "digit");
        ExpectFunctions("digits");
        ASSERT_NO_FATAL_FAILURE(TapStatus(test::KeyDigits));
        EXPECT_FALSE(m_keyboard->m_stKbStatus.m_bDigit);
    }
};

TEST_P(EverySkin, TypesWhatItsTablesSayInEveryPlane) {
    const SIZE screen = GetParam().screen;
    TypeEverything(screen.cx, screen.cy);
    if (screen.cx != screen.cy) TypeEverything(screen.cy, screen.cx);
}

INSTANTIATE_TEST_SUITE_P(Skins, EverySkin, testing::ValuesIn(AllSkins()), NameOf);

}  // namespace
