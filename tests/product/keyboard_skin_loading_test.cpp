// SPDX-License-Identifier: MIT
#include "differences.h"
#include "keyboard_fixture.h"

#include <set>

namespace {

using test::LayoutBytes;
using test::MaskBytes;
using test::RectBytes;
using test::TestSkin;

std::string PictureOfWidth(int width) {
    return test::PictureBytes(width, 1, [](int, int) { return RGB(1, 2, 3); });
}

SIZE SizeOf(HBITMAP bitmap) {
    BITMAP description{};
    GetObjectW(bitmap, sizeof description, &description);
    return {description.bmWidth, description.bmHeight};
}

class SkinLoading : public KeyboardTest {
protected:
    std::set<DWORD> Keys(const KeyLayout& layout) const {
        std::set<DWORD> keys;
        for (const auto& [key, entry] : layout) {
            keys.insert(key);
        }
        return keys;
    }
    bool IsValid(const std::string& fileBytes) {
        test::WriteDeviceFile("Windows/a.tlk", fileBytes);
        return CKeyboard::IsValidSkin(TEXT("\\windows\\a.tlk"));
    }
};

TEST_F(SkinLoading, RecordsAreBigEndianAndARemainderIsIgnored) {
    const std::string record("\x00\x46\x00\x07\x00\x10\x00\x20\x01\x00\x00\x40\xEE\xEE\xEE\xEE", 16);
    const std::string second("\x00\x53\x00\x00\xFF\xFF\x80\x00\x00\x01\x00\x02\x00\x00\x00\x00", 16);
    Start(TestSkin().Data("CHAR_LAYOUT_STRUCT", record + second.substr(0, 15)));
    ASSERT_EQ(Keys(m_keyboard->m_CharLayout), std::set<DWORD>{70});
    EXPECT_EQ(m_keyboard->m_CharLayout[70].m_nBitmap, 7u);
    EXPECT_EQ(m_keyboard->m_CharLayout[70].m_Rects, (Rects{{16, 32, 256, 64}}));

    Start(TestSkin().Data("CHAR_LAYOUT_STRUCT", record + second + record.substr(0, 15)));
    ASSERT_EQ(Keys(m_keyboard->m_CharLayout), (std::set<DWORD>{70, 83}));
    EXPECT_EQ(m_keyboard->m_CharLayout[83].m_Rects, (Rects{{65535, 32768, 1, 2}}));

    Start(TestSkin().Data("CHAR_LAYOUT_STRUCT", record.substr(0, 15)).Data("DIGIT_LAYOUT_STRUCT", record));
    EXPECT_TRUE(m_keyboard->m_CharLayout.empty());
    EXPECT_EQ(Keys(m_keyboard->m_DigitLayout), std::set<DWORD>{70});
}

TEST_F(SkinLoading, RecordsOfOneKeyAddTheirRectanglesInFileOrder) {
    Start(TestSkin().Data("CHAR_LAYOUT_STRUCT",
                          LayoutBytes({{90, 50, 0, 60, 9, 5}, {70, 1, 2, 3, 4, 1}, {90, 0, 0, 9, 9, 3}})));
    EXPECT_EQ(m_keyboard->m_CharLayout[90].m_Rects, (Rects{{50, 0, 60, 9}, {0, 0, 9, 9}}));
    EXPECT_EQ(m_keyboard->m_CharLayout[90].m_nBitmap, 3u);
    EXPECT_EQ(m_keyboard->m_CharLayout[70].m_nBitmap, 1u);
}

TEST_F(SkinLoading, OnlyTheCharacterLayoutHasACapsKey) {
    const std::string caps = LayoutBytes({{test::KeyCaps, 0, 0, 1, 1}});
    Start(TestSkin().Data("CHAR_LAYOUT_STRUCT", caps));
    EXPECT_TRUE(m_keyboard->m_bHasCapsKey);
    Start(TestSkin().Data("DIGIT_LAYOUT_STRUCT", caps));
    EXPECT_FALSE(m_keyboard->m_bHasCapsKey);
}

TEST_F(SkinLoading, CapsRectangleIsLittleEndianAndSigned) {
    Start(TestSkin().Data("CAPS_RECT", RectBytes({-2, 0x12345678, 3, 4}) + "more"));
    EXPECT_EQ(m_keyboard->m_CAPSRect, (RECT{-2, 0x12345678, 3, 4}));
    Start(TestSkin().Data("CAPS_RECT", RectBytes({1, 2, 3, 4}).substr(0, 15)));
    EXPECT_EQ(m_keyboard->m_CAPSRect, RECT{});
    Start();
    EXPECT_NE(m_keyboard->m_CAPSRect, RECT{});
    Start(TestSkin().Without("CAPS_RECT"));
    EXPECT_EQ(m_keyboard->m_CAPSRect, RECT{});
}

TEST_F(SkinLoading, SwipeOnlySkinTurnsStrokesOnAndLeavesItsMark) {
    const struct { DWORD stored, expected; } cases[] = {{0, 1}, {1, 1}, {2, 3}};
    for (const auto& c : cases) {
        SetDword(kSwipeValue, c.stored);
        Start(TestSkin().Data("SWIPE_ONLY", ""));
        EXPECT_EQ(m_keyboard->m_dwSwipe, c.expected);
        const auto [type, bytes] = Value(kSwipeOnlySkinValue);
        EXPECT_EQ(type, DWORD{REG_DWORD});
        EXPECT_EQ(bytes.size(), 4u);
        EXPECT_NE(bytes, DwordBytes(0));
        EXPECT_EQ(Value(kSwipeValue).second, DwordBytes(c.stored)) << "the setting stays the user's";
        Start();
        EXPECT_EQ(m_keyboard->m_dwSwipe, c.stored);
        EXPECT_EQ(Value(kSwipeOnlySkinValue), std::pair(DWORD{REG_DWORD}, DwordBytes(0)));
    }
}

TEST_F(SkinLoading, SwipeOnlyMarkNeverMakesTheKey) {
    TestSkin().Data("SWIPE_ONLY", "x").Install("a.tlk");
    m_keyboard->m_hSkinLib = LoadLibraryW(TEXT("\\windows\\a.tlk"));
    EXPECT_TRUE(m_keyboard->LoadSkin(test::ScreenSides().cx, test::ScreenSides().cy));
    EXPECT_EQ(m_keyboard->m_dwSwipe, 1u);
    HKEY key = nullptr;
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, kSettingsKey, 0, KEY_READ, &key), ERROR_FILE_NOT_FOUND);
}

// Every bitmap of this skin has a height of its own, so that a field tells where it came from.
TEST_F(SkinLoading, OrientationAndExtendedSymbolsChooseTheBitmaps) {
    const int narrow = static_cast<int>(test::ScreenSides().cx);
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
    test::SkinBuilder skin = TestSkin();
    std::map<std::string, LONG> heights;
    for (const auto& f : fields) {
        for (const std::string& name : {f.portrait, f.landscape}) {
            const int height =
                static_cast<int>(heights.emplace(name, LONG(heights.size()) + 1).first->second);
            skin.Bitmap(name, MaskBytes(narrow, height, [](int, int) { return true; }));
        }
    }
    const struct {
        LONG width, height;
        bool isLandscape, isPortraitFlag;
    } screens[] = {{narrow, narrow + 80, false, true},
                   {narrow + 80, narrow, true, false},
                   {narrow, narrow, false, false}};
    for (const auto& screen : screens) {
        for (const DWORD extended : {1u, 0u, 7u}) {
            SCOPED_TRACE(testing::Message()
                         << screen.width << " x " << screen.height << ", extended " << extended);
            SetDword(kExtSymValue, extended);
            skin.Install("a.tlk");
            ASSERT_TRUE(m_keyboard->Init(screen.width, screen.height));
            EXPECT_EQ(m_keyboard->m_bPortrait != FALSE, screen.isPortraitFlag);
            for (const auto& f : fields) {
                const HBITMAP bitmap = (*m_keyboard).*f.field;
                const std::string& name = screen.isLandscape ? f.landscape : f.portrait;
                if (f.isUmlaut && !extended) {
                    EXPECT_EQ(bitmap, nullptr) << name;
                } else {
                    EXPECT_EQ(SizeOf(bitmap).cy, heights[name]) << name;
                }
            }
        }
    }
}

TEST_F(SkinLoading, LandscapeFallsBackToThePortraitLayout) {
    Start();
    EXPECT_EQ(m_keyboard->m_CharLayout.size(), test::CharacterLayout().size());
    ASSERT_TRUE(InitLandscape());
    EXPECT_EQ(Keys(m_keyboard->m_CharLayout), std::set<DWORD>{test::KeyQ});
    TestSkin().Without("LNDSCP_LAYOUT_STRUCT").Install("a.tlk");
    ASSERT_TRUE(InitLandscape());
    EXPECT_EQ(m_keyboard->m_CharLayout.size(), test::CharacterLayout().size());
    // One that is there and holds nothing is no reason to fall back.
    TestSkin().Data("LNDSCP_LAYOUT_STRUCT", "").Install("a.tlk");
    ASSERT_TRUE(InitLandscape());
    EXPECT_TRUE(m_keyboard->m_CharLayout.empty());
}

TEST_F(SkinLoading, PictureInUseIsAsWideAsOneSideOfTheScreen) {
    const auto [narrow, wide] = test::ScreenSides();
    const struct {
        LONG width;
        bool fits;
    } cases[] = {{wide, true}, {narrow, true}, {wide - 1, false}, {narrow + 1, false}};
    for (const auto& c : cases) {
        TestSkin()
            .Bitmap("LANSCAPE_KEYBOARD_BITMAP", PictureOfWidth(static_cast<int>(c.width)))
            .Install("a.tlk");
        EXPECT_EQ(InitLandscape(), c.fits) << c.width;
        EXPECT_TRUE(InitPortrait()) << "the portrait picture fits";
    }
    TestSkin().Without("LANSCAPE_KEYBOARD_BITMAP").Install("a.tlk");
    EXPECT_FALSE(InitLandscape());
    EXPECT_FALSE(m_keyboard->m_bNoSkin);
}

TEST_F(SkinLoading, ValidSkinsHaveAPictureAsWideAsTheNarrowSide) {
    const int narrow = static_cast<int>(test::ScreenSides().cx);
    const auto skinOfWidth = [](int width) {
        return test::SkinBuilder().Bitmap("CHAR_KEYBOARD_BITMAP", PictureOfWidth(width)).Build();
    };
    EXPECT_TRUE(IsValid(skinOfWidth(narrow)));
    EXPECT_FALSE(IsValid(skinOfWidth(narrow + 1)));
    EXPECT_FALSE(IsValid(skinOfWidth(narrow - 1)));
    EXPECT_FALSE(IsValid(TestSkin().Without("char_keyboard_bitmap").Build()));
    EXPECT_FALSE(IsValid(test::SkinBuilder().Data("char_keyboard_bitmap", PictureOfWidth(narrow)).Build()));
    EXPECT_FALSE(IsValid(TestSkin().Bitmap("char_keyboard_bitmap", "no bitmap at all").Build()));
    if (test::ActsAsHandheld(test::Difference::ResourceBounds)) {
        EXPECT_FALSE(IsValid(TestSkin().PointOutside("char_keyboard_bitmap").Build()));
    }
    EXPECT_FALSE(IsValid("text, not a library"));
    EXPECT_FALSE(IsValid(""));
    EXPECT_FALSE(CKeyboard::IsValidSkin(TEXT("\\windows\\absent.tlk")));
    EXPECT_FALSE(CKeyboard::IsValidSkin(TEXT("")));
}

TEST_F(SkinLoading, TurningTheScreenKeepsASkinValid) {
    const auto [narrow, wide] = test::ScreenSides();
    const std::string skin = TestSkin().Build();
    if (!test::SetScreenSize(wide, narrow)) GTEST_SKIP() << "the screen cannot be changed here";
    EXPECT_TRUE(IsValid(skin));
    ASSERT_TRUE(test::SetScreenSize(wide, wide));
    EXPECT_FALSE(IsValid(skin));
    ASSERT_TRUE(test::SetScreenSize(narrow, narrow));
    EXPECT_TRUE(IsValid(skin));
}

TEST_F(SkinLoading, UnloadingKeepsSelectedBitmapsForLater) {
    Start();
    m_keyboard->SetKbStatus(&kCapsCode, &m_window);
    Down(test::KeyCenter(test::KeyQ));
    Move({1, 2});
    CKeyboard& kb = *m_keyboard;
    kb.UnloadSkin();
    // The picture and the masks of both contexts were selected; they could not be deleted.
    const bool stays = test::Either(test::Difference::SelectedObjects, true, false);
    EXPECT_EQ(kb.m_hKbBitmap != nullptr, stays);
    EXPECT_EQ(kb.m_hLng1LrgKbMask != nullptr, stays);
    EXPECT_EQ(kb.m_hLng1SmlKbMask != nullptr, stays);
    for (const HBITMAP gone : {kb.m_hDigitKbBitmap, kb.m_hDigitMask, kb.m_hLng2SmlKbMask, kb.m_hLng2LrgKbMask,
                               kb.m_hUml1SmlKbMask, kb.m_hUml1LrgKbMask, kb.m_hUml2SmlKbMask,
                               kb.m_hUml2LrgKbMask, kb.m_hOrigMaskBmp, kb.m_hOrigExtMaskBmp}) {
        EXPECT_EQ(gone, nullptr);
    }
    EXPECT_EQ(kb.m_hKbDC, nullptr);
    EXPECT_EQ(kb.m_hMaskDC, nullptr);
    EXPECT_EQ(kb.m_hExtMaskDC, nullptr);
    EXPECT_EQ(kb.m_hSkinLib, nullptr);
    EXPECT_TRUE(kb.m_Charset.empty() && kb.m_CharLayout.empty() && kb.m_DigitLayout.empty());
    EXPECT_TRUE(kb.m_PressedRects.empty());
    EXPECT_EQ(kb.m_nPressedIndex, -1);
    EXPECT_EQ(kb.m_bPressedDrawn, 0);
    EXPECT_EQ(kb.m_ptSwipeEnd.x, 0);
    EXPECT_EQ(kb.m_ptSwipeEnd.y, 0);
    // What outlives the skin.
    EXPECT_EQ(kb.m_stKbStatus.m_bCAPS, 1);
    EXPECT_EQ(kb.m_dwSwipe, 1u);
    EXPECT_EQ(kb.m_bExtSym, 1u);
    EXPECT_NE(kb.m_CAPSRect, RECT{});
    EXPECT_EQ(kb.m_strSkinPath, TEXT("\\windows\\a.tlk"));
    // With the contexts gone, unloading once more gets rid of them.
    kb.UnloadSkin();
    EXPECT_EQ(kb.m_hKbBitmap, nullptr);
    EXPECT_EQ(kb.m_hLng1LrgKbMask, nullptr);
    EXPECT_TRUE(InitPortrait());
}

// The mask that was selected when its skin was unloaded is still there, and so still shows its plane.
TEST_F(SkinLoading, WithoutExtendedSymbolsTheUmlautFieldsAreLeftAlone) {
    Start();
    m_keyboard->SetKbStatus(&kUmlautCode, &m_window);
    const HBITMAP kept =
        test::Either<HBITMAP>(test::Difference::SelectedObjects, m_keyboard->m_hUml1SmlKbMask, nullptr);
    SetDword(kExtSymValue, 0);
    ASSERT_TRUE(InitPortrait());
    EXPECT_EQ(m_keyboard->m_hUml1SmlKbMask, kept);
    m_keyboard->SetKbStatus(&kUmlautCode, &m_window);
    EXPECT_EQ(GetCurrentObject(m_keyboard->m_hMaskDC, OBJ_BITMAP), kept ? kept : m_keyboard->m_hOrigMaskBmp);
}

// Whatever a cut or senseless file leads to, the keyboard stays usable; sanitizers and the handle count
// watch.
TEST_F(SkinLoading, BrokenSkinsAreSurvived) {
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
    hostile.Data("CHAR_LAYOUT_STRUCT", LayoutBytes(records))
        .Data("DIGIT_LAYOUT_STRUCT", LayoutBytes(records));
    hostile.Bitmap("LANG1_SMALL_MASK", PictureOfWidth(3)).Bitmap("LANG1_LARGE_MASK", "junk");
    if (test::ActsAsHandheld(test::Difference::ResourceBounds)) {
        hostile.PointOutside("UML1_SMALL_MASK").PointOutside("CAPS_RECT").PointOutside("LOCALE_CHARSET");
    }
    hostile.Without("digit_keyboard_bitmap").Without("DIGIT_MASK");
    Start(hostile);
    for (const WCHAR code : {kShiftCode, kUmlautCode, kDigitCode, kCapsCode}) {
        m_keyboard->SetKbStatus(&code, &m_window);
        Down({5, 5});
        Move({300, 300});
        Up({5, 5});
    }
}

}  // namespace
