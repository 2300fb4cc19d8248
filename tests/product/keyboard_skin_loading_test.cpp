// SPDX-License-Identifier: MIT
#include "differences.h"
#include "keyboard_fixture.h"

namespace {

using test::LayoutBytes;
using test::RectBytes;
using test::TestSkin;

std::string PictureOfWidth(LONG width, int height = 1) {
    return test::PictureBytes(
        static_cast<int>(width), height, [](int, int) { return RGB(1, 2, 3); });
}

LONG HeightOf(HBITMAP bitmap) {
    BITMAP description{};
    GetObjectW(bitmap, sizeof description, &description);
    return description.bmHeight;
}

// The complete layout: key, bitmap value and rectangles.
std::map<DWORD, std::pair<DWORD, Rects>> Content(const KeyLayout& layout) {
    std::map<DWORD, std::pair<DWORD, Rects>> content;
    for (const auto& [key, entry] : layout)
        content[key] = {entry.m_nBitmap, entry.m_Rects};
    return content;
}

class SkinLoading : public KeyboardTest {
protected:
    bool IsValid(const std::string& fileBytes) {
        test::WriteDeviceFile("Windows/a.tlk", fileBytes);
        return CKeyboard::IsValidSkin(TEXT("\\windows\\a.tlk"));
    }
};

TEST_F(SkinLoading, LayoutsAreRecordsOfSixteenBytes) {
    // Big-endian: key 70, bitmap 7, rectangle; key 83; then three records of two keys.
    const std::string first("\x00\x46\x00\x07\x00\x10\x00\x20\x01\x00\x00\x40\xEE\xEE\xEE\xEE", 16);
    const std::string second("\x00\x53\x00\x00\xFF\xFF\x80\x00\x00\x01\x00\x02\x00\x00\x00\x00", 16);
    const std::string several =
        LayoutBytes({{90, 50, 0, 60, 9, 5}, {70, 1, 2, 3, 4, 1}, {90, 0, 0, 9, 9, 3}});
    const std::pair<DWORD, Rects> ofFirst{7, {{16, 32, 256, 64}}};
    const struct {
        std::string bytes;
        std::map<DWORD, std::pair<DWORD, Rects>> content;
    } cases[] = {
        {first.substr(0, 15), {}},
        {first + second.substr(0, 15), {{70, ofFirst}}},
        {first + second + "more", {{70, ofFirst}, {83, {0, {{65535, 32768, 1, 2}}}}}},
        {several, {{70, {1, {{1, 2, 3, 4}}}}, {90, {3, {{50, 0, 60, 9}, {0, 0, 9, 9}}}}}},
    };
    for (const auto& c : cases) {
        Start(TestSkin().Data("CHAR_LAYOUT_STRUCT", c.bytes).Data("DIGIT_LAYOUT_STRUCT", first));
        EXPECT_EQ(Content(m_keyboard->m_CharLayout), c.content);
        EXPECT_EQ(Content(m_keyboard->m_DigitLayout).at(70), ofFirst);
    }
}

TEST_F(SkinLoading, OnlyTheCharacterLayoutHasACapsKey) {
    for (const bool isCharacter : {true, false}) {
        Start(TestSkin().Data(isCharacter ? "CHAR_LAYOUT_STRUCT" : "DIGIT_LAYOUT_STRUCT",
                              LayoutBytes({{test::KeyCaps, 0, 0, 1, 1}})));
        EXPECT_EQ(m_keyboard->m_bHasCapsKey != FALSE, isCharacter);
    }
}

TEST_F(SkinLoading, CapsRectangleIsLittleEndianAndSigned) {
    const std::string bytes = RectBytes({-2, 0x12345678, 3, 4});
    const std::pair<test::SkinBuilder, RECT> cases[] = {
        {TestSkin().Data("CAPS_RECT", bytes + "more"), {-2, 0x12345678, 3, 4}},
        {TestSkin().Data("CAPS_RECT", bytes.substr(0, 15)), {}},
        {TestSkin().Without("CAPS_RECT"), {}}};
    for (const auto& [skin, rectangle] : cases) {
        m_keyboard->m_CAPSRect = {1, 2, 3, 4};
        Start(skin);
        EXPECT_EQ(m_keyboard->m_CAPSRect, rectangle);
    }
}

TEST_F(SkinLoading, ASwipeOnlySkinTurnsStrokesOnAndStoresItsMark) {
    for (const auto& [stored, expected] : {std::pair(0u, 1u), {1u, 1u}, {2u, 3u}}) {
        Store(kSwipeValue, NumberValue(stored));
        Start(TestSkin().Data("SWIPE_ONLY", ""));
        EXPECT_EQ(m_keyboard->m_dwSwipe, expected);
        EXPECT_EQ(Stored(kSwipeOnlySkinValue).first, DWORD{REG_DWORD});
        EXPECT_NE(Stored(kSwipeOnlySkinValue), NumberValue(0));
        EXPECT_EQ(Stored(kSwipeValue), NumberValue(stored)) << "the setting stays the user's";
        Start();
        EXPECT_EQ(m_keyboard->m_dwSwipe, stored);
        EXPECT_EQ(Stored(kSwipeOnlySkinValue), NumberValue(0));
    }
}

TEST_F(SkinLoading, TheSwipeOnlyMarkNeverCreatesTheKey) {
    TestSkin().Data("SWIPE_ONLY", "x").Install("a.tlk");
    m_keyboard->m_hSkinLib = LoadLibraryW(TEXT("\\windows\\a.tlk"));
    EXPECT_TRUE(m_keyboard->LoadSkin(test::ScreenSides().cx, test::ScreenSides().cy));
    EXPECT_EQ(m_keyboard->m_dwSwipe, 1u);
    EXPECT_FALSE(test::KeyExists(HKEY_LOCAL_MACHINE, kSettingsKey));
}

// Every bitmap of this skin has a different height, which shows where a field came from.
TEST_F(SkinLoading, OrientationAndExtendedSymbolsChooseTheBitmaps) {
    struct {
        HBITMAP CKeyboard::*field;
        std::string portrait, landscape;
        bool isUmlaut;
    } const fields[] = {
        {&CKeyboard::m_hKbBitmap, "char_keyboard_bitmap", "LANSCAPE_KEYBOARD_BITMAP", false},
        {&CKeyboard::m_hLng1SmlKbMask, "LANG1_SMALL_MASK", "LANG1_SMALL_MASK_LS", false},
        {&CKeyboard::m_hLng1LrgKbMask, "LANG1_LARGE_MASK", "LANG1_LARGE_MASK_LS", false},
        {&CKeyboard::m_hLng2SmlKbMask, "LANG2_SMALL_MASK", "LANG2_SMALL_MASK_LS", false},
        {&CKeyboard::m_hLng2LrgKbMask, "LANG2_LARGE_MASK", "LANG2_LARGE_MASK_LS", false},
        {&CKeyboard::m_hUml1SmlKbMask, "UML1_SMALL_MASK", "UML1_SMALL_MASK_LS", true},
        {&CKeyboard::m_hUml1LrgKbMask, "UML1_LARGE_MASK", "UML1_LARGE_MASK_LS", true},
        {&CKeyboard::m_hUml2SmlKbMask, "UML2_SMALL_MASK", "UML2_SMALL_MASK_LS", true},
        {&CKeyboard::m_hUml2LrgKbMask, "UML2_LARGE_MASK", "UML2_LARGE_MASK_LS", true},
        {&CKeyboard::m_hDigitKbBitmap, "digit_keyboard_bitmap", "digit_keyboard_bitmap", false},
        {&CKeyboard::m_hDigitMask, "DIGIT_MASK", "DIGIT_MASK", false},
    };
    const LONG narrow = test::ScreenSides().cx;
    test::SkinBuilder skin = TestSkin();
    std::map<std::string, LONG> heights;
    for (const auto& f : fields) {
        for (const std::string& name : {f.portrait, f.landscape}) {
            const LONG height = heights.emplace(name, LONG(heights.size()) + 1).first->second;
            skin.Bitmap(name, PictureOfWidth(narrow, static_cast<int>(height)));
        }
    }
    skin.Install("a.tlk");
    for (const SIZE screen : {SIZE{narrow, narrow + 80}, {narrow + 80, narrow}, {narrow, narrow}}) {
        for (const DWORD extended : {1u, 0u, 7u}) {
            SCOPED_TRACE(testing::Message() << screen.cx << " x " << screen.cy << ", extended " << extended);
            Store(kExtSymValue, NumberValue(extended));
            ASSERT_TRUE(m_keyboard->Init(screen.cx, screen.cy));
            EXPECT_EQ(m_keyboard->m_bPortrait != FALSE, screen.cx < screen.cy);
            for (const auto& f : fields) {
                const HBITMAP bitmap = (*m_keyboard).*f.field;
                const std::string& name = screen.cx > screen.cy ? f.landscape : f.portrait;
                const LONG height = f.isUmlaut && !extended ? 0 : heights[name];
                EXPECT_EQ(bitmap ? HeightOf(bitmap) : 0, height) << name;
            }
        }
    }
}

// An empty landscape layout is used; only a missing one falls back to that of portrait.
TEST_F(SkinLoading, LandscapeFallsBackToThePortraitLayout) {
    const std::size_t all = test::CharacterLayout().size();
    const std::pair<test::SkinBuilder, std::size_t> cases[] = {
        {TestSkin(), 1},
        {TestSkin().Without("LNDSCP_LAYOUT_STRUCT"), all},
        {TestSkin().Data("LNDSCP_LAYOUT_STRUCT", ""), 0}};
    for (const auto& [skin, keys] : cases) {
        Start(skin);
        EXPECT_EQ(m_keyboard->m_CharLayout.size(), all);
        ASSERT_TRUE(InitLandscape());
        EXPECT_EQ(m_keyboard->m_CharLayout.size(), keys);
    }
}

TEST_F(SkinLoading, ThePictureInUseIsAsWideAsOneSideOfTheScreen) {
    const auto [narrow, wide] = test::ScreenSides();
    for (const auto& [width, fits] :
         {std::pair(wide, true), {narrow, true}, {wide - 1, false}, {narrow + 1, false}}) {
        Start(TestSkin().Bitmap("LANSCAPE_KEYBOARD_BITMAP", PictureOfWidth(width)));
        EXPECT_EQ(InitLandscape(), fits) << width;
    }
}

TEST_F(SkinLoading, ValidSkinsHaveAPictureAsWideAsTheNarrowSide) {
    const LONG narrow = test::ScreenSides().cx;
    const auto skinOfWidth = [](LONG width) {
        return test::SkinBuilder().Bitmap("CHAR_KEYBOARD_BITMAP", PictureOfWidth(width)).Build();
    };
    EXPECT_TRUE(IsValid(skinOfWidth(narrow)));
    for (const std::string& invalid :
         {skinOfWidth(narrow + 1), skinOfWidth(narrow - 1),
          TestSkin().Without("char_keyboard_bitmap").Build(),
          test::SkinBuilder().Data("char_keyboard_bitmap", PictureOfWidth(narrow)).Build(),
          TestSkin().Bitmap("char_keyboard_bitmap", "no bitmap at all").Build(),
          std::string("text, not a library"), std::string()})
        EXPECT_FALSE(IsValid(invalid)) << invalid.size() << " bytes";
    if (test::ActsAsHandheld(test::Difference::ResourceBounds))
        EXPECT_FALSE(IsValid(TestSkin().PointOutside("char_keyboard_bitmap").Build()));
    EXPECT_FALSE(CKeyboard::IsValidSkin(TEXT("\\windows\\absent.tlk")));
    EXPECT_FALSE(CKeyboard::IsValidSkin(TEXT("")));
}

TEST_F(SkinLoading, TurningTheScreenKeepsASkinValid) {
    const auto [narrow, wide] = test::ScreenSides();
    const std::string skin = TestSkin().Build();
    for (const auto& [width, height] : {std::pair(wide, narrow), {wide, wide}, {narrow, narrow}}) {
        test::SetScreenSize(width, height);
        EXPECT_EQ(IsValid(skin), width == narrow || height == narrow);
    }
}

TEST_F(SkinLoading, UnloadingKeepsSelectedBitmapsForLater) {
    Start();
    m_keyboard->SetKbStatus(&kCapsCode, &m_window);
    Down(test::KeyCenter(test::KeyQ));
    Move({1, 2});
    CKeyboard& kb = *m_keyboard;
    kb.UnloadSkin();
    // The selected picture and masks of the contexts could not be deleted.
    const bool stays = test::Either(test::Difference::SelectedObjects, true, false);
    for (const HBITMAP kept : {kb.m_hKbBitmap, kb.m_hLng1LrgKbMask, kb.m_hLng1SmlKbMask})
        EXPECT_EQ(kept != nullptr, stays);
    for (const void* gone : std::initializer_list<const void*>{
             kb.m_hDigitKbBitmap, kb.m_hDigitMask, kb.m_hLng2SmlKbMask, kb.m_hLng2LrgKbMask,
             kb.m_hUml1SmlKbMask, kb.m_hUml1LrgKbMask, kb.m_hUml2SmlKbMask, kb.m_hUml2LrgKbMask,
             kb.m_hOrigMaskBmp, kb.m_hOrigExtMaskBmp, kb.m_hKbDC, kb.m_hMaskDC, kb.m_hExtMaskDC,
             kb.m_hSkinLib})
        EXPECT_EQ(gone, nullptr);
    EXPECT_TRUE(kb.m_Charset.empty() && kb.m_CharLayout.empty() && kb.m_DigitLayout.empty());
    EXPECT_EQ(kb.m_bPressedDrawn, 0);
    EXPECT_NE(kb.m_CAPSRect, RECT{}) << "state outlives the skin";
    EXPECT_EQ(kb.m_strSkinPath, TEXT("\\windows\\a.tlk"));
    // Without the contexts, unloading again deletes them.
    kb.UnloadSkin();
    EXPECT_EQ(kb.m_hKbBitmap, nullptr);
    EXPECT_EQ(kb.m_hLng1LrgKbMask, nullptr);
    EXPECT_TRUE(InitPortrait());
}

// The mask that was selected when its skin was unloaded still exists, and still shows its plane.
TEST_F(SkinLoading, WithoutExtendedSymbolsTheUmlautFieldsAreLeftAlone) {
    Start();
    m_keyboard->SetKbStatus(&kUmlautCode, &m_window);
    const HBITMAP kept =
        test::Either<HBITMAP>(test::Difference::SelectedObjects, m_keyboard->m_hUml1SmlKbMask, nullptr);
    Store(kExtSymValue, NumberValue(0));
    ASSERT_TRUE(InitPortrait());
    EXPECT_EQ(m_keyboard->m_hUml1SmlKbMask, kept);
    m_keyboard->SetKbStatus(&kUmlautCode, &m_window);
    EXPECT_EQ(SelectedMask(), kept ? kept : m_keyboard->m_hOrigMaskBmp);
}

// With a truncated or nonsensical file the keyboard stays usable; sanitizers and the handle count check it,
// too.
TEST_F(SkinLoading, BrokenSkinsLeaveItUsable) {
    const std::string whole = TestSkin().Build();
    for (std::size_t size = 0; size < whole.size(); size += size < 0x400 ? 16 : whole.size() / 40) {
        test::WriteDeviceFile("Windows/a.tlk", whole.substr(0, size));
        InitPortrait();
        m_keyboard->Paint(nullptr, &m_window);
    }
    std::vector<test::LayoutRecord> records;
    for (const WORD key : std::initializer_list<WORD>{0, 47, 69, 221, 222, 0x7FFF, 0x8000, 0xFFFF}) {
        records.push_back({key, 0, 0, 65535, 65535});
        records.push_back({key, 65535, 65535, 0, 0});
    }
    test::SkinBuilder hostile = TestSkin();
    for (const char* layout : {"CHAR_LAYOUT_STRUCT", "DIGIT_LAYOUT_STRUCT"})
        hostile.Data(layout, LayoutBytes(records));
    hostile.Bitmap("LANG1_SMALL_MASK", PictureOfWidth(3)).Bitmap("LANG1_LARGE_MASK", "junk");
    if (test::ActsAsHandheld(test::Difference::ResourceBounds))
        hostile.PointOutside("UML1_SMALL_MASK").PointOutside("CAPS_RECT").PointOutside("LOCALE_CHARSET");
    Start(hostile.Without("digit_keyboard_bitmap").Without("DIGIT_MASK"));
    for (const WCHAR code : {kShiftCode, kUmlautCode, kDigitCode, kCapsCode}) {
        m_keyboard->SetKbStatus(&code, &m_window);
        Down({5, 5});
        Move({300, 300});
        Up({5, 5});
    }
}

}  // namespace
