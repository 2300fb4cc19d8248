// SPDX-License-Identifier: MIT
#include "differences.h"
#include "keyboard_fixture.h"

namespace {

using test::TestSkin;

constexpr WCHAR kA[] = TEXT("\\windows\\a.tlk");
constexpr WCHAR kB[] = TEXT("\\windows\\b.tlk");

class Initialisation : public KeyboardTest {
protected:
    static test::SkinBuilder UnfitSkin() {
        return test::SkinBuilder().Bitmap("char_keyboard_bitmap", test::MaskBytes(
                                                                      3, 3, [](int, int) { return true; }));
    }
    static bool HasSettingsKey() { return test::KeyExists(HKEY_LOCAL_MACHINE, kSettingsKey); }
};

TEST_F(Initialisation, TheFirstStartStoresItsChoice) {
    TestSkin().Install("b.tlk");
    UnfitSkin().Install("a.tlk");
    ASSERT_TRUE(InitPortrait());
    EXPECT_FALSE(m_keyboard->m_bNoSkin);
    EXPECT_EQ(m_keyboard->m_strSkinPath, kB);
    EXPECT_EQ(Stored(kSkinValue), TextValue(kB));
    EXPECT_EQ(Stored(kSwipeValue), NumberValue(1));
    EXPECT_EQ(Stored(kSwipeOnlySkinValue), NumberValue(0));
    EXPECT_EQ(Stored(kExtSymValue).first, 0u) << "the default is never written";
    EXPECT_EQ(Stored(kUserSkinsValue).first, 0u);
}

TEST_F(Initialisation, TheStoredTextIsAPartOfAValidSkinsPath) {
    TestSkin().Install("a.tlk");
    TestSkin().Install("b.tlk");
    UnfitSkin().Install("unfit.tlk");
    const struct {
        WideString stored, path;
        bool isKept;
    } cases[] = {
        {kB, kB, true},
        {TEXT("b.tlk"), TEXT("b.tlk"), true},  // the loader looks in the folder of Windows
        {TEXT("B.tlk"), kA, false},            // case matters
        {TEXT("\\windows\\c.tlk"), kA, false},
        {TEXT("\\windows\\unfit.tlk"), kA, false},
        {TEXT(""), kA, false},
        {WideString(2000, 'x'), kA, false},  // too long to be read
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.stored));
        Store(kSkinValue, TextValue(c.stored));
        ASSERT_TRUE(InitPortrait());
        EXPECT_EQ(m_keyboard->m_strSkinPath, c.path);
        EXPECT_EQ(Stored(kSkinValue), TextValue(c.isKept ? c.stored : c.path));
        EXPECT_EQ(m_keyboard->m_Charset.size(), 222u);
    }
}

TEST_F(Initialisation, AChosenFileThatDoesNotLoadOrFitFails) {
    TestSkin().Install("a.tlk");
    Store(kSkinValue, TextValue(TEXT("indows\\a")));  // a part of the path, but no file
    EXPECT_FALSE(InitPortrait());
    EXPECT_EQ(Stored(kSkinValue), TextValue(TEXT("indows\\a")));
    TestSkin().Without("LANSCAPE_KEYBOARD_BITMAP").Install("b.tlk");
    Store(kSkinValue, TextValue(kB));
    EXPECT_FALSE(InitLandscape());
    EXPECT_EQ(Stored(kSkinValue), TextValue(kB));
    // The next Init starts afresh.
    Store(kSkinValue, TextValue(kA));
    EXPECT_TRUE(InitLandscape());
}

TEST_F(Initialisation, WithoutASkinFileNothingIsWritten) {
    EXPECT_TRUE(InitPortrait());
    EXPECT_TRUE(m_keyboard->m_bNoSkin);
    EXPECT_FALSE(HasSettingsKey());
    EXPECT_TRUE(m_keyboard->m_Charset.empty());
    EXPECT_NE(m_keyboard->m_hKbDC, nullptr);
    EXPECT_EQ(m_keyboard->FindKeyIndex(5, 5, true), -1);
    EXPECT_EQ(Tap(test::KeyQ), Events());
}

TEST_F(Initialisation, WithoutAValidSkinTheChoiceStays) {
    UnfitSkin().Install("a.tlk");
    Store(kSkinValue, TextValue(TEXT("\\card\\my.tlk")));
    EXPECT_TRUE(InitPortrait());
    EXPECT_TRUE(m_keyboard->m_bNoSkin);
    EXPECT_EQ(Stored(kSkinValue), TextValue(TEXT("\\card\\my.tlk")));
    TestSkin().Install("a.tlk");
    EXPECT_TRUE(InitPortrait());
    EXPECT_FALSE(m_keyboard->m_bNoSkin);
}

TEST_F(Initialisation, UnreadableNumbersHaveTheirDefault) {
    TestSkin().Install("a.tlk");
    const test::RegistryValue tooLong{REG_DWORD, "12345"};
    for (const auto& [stored, number] :
         {std::pair(NumberValue(0), 0u), {NumberValue(0x80000000), 0x80000000}, {tooLong, 1}}) {
        Store(kSwipeValue, stored);
        Store(kExtSymValue, stored);
        ASSERT_TRUE(InitPortrait());
        EXPECT_EQ(m_keyboard->m_dwSwipe, number);
        EXPECT_EQ(m_keyboard->m_bExtSym, number);
        EXPECT_EQ(Stored(kSwipeValue), NumberValue(number)) << "written when it could not be read";
        EXPECT_EQ(Stored(kExtSymValue), stored) << "never written";
    }
}

// From every state, with each mask selected once; the handle count after the test shows leaks.
TEST_F(Initialisation, OfAnyStatusOnlyTheLanguageSurvives) {
    Start();
    EXPECT_EQ(CKeyboard().m_stKbStatus.m_bLng1, 1);
    for (int state = 0; state < 64; ++state) {
        const BYTE language1 = state & 1;
        SetFlags({BYTE(state >> 1 & 1), BYTE(state >> 2 & 1), BYTE(state >> 3 & 1), language1,
                  BYTE(state >> 4 & 1), BYTE(state >> 5 & 1)});
        Down({5, 5});
        ASSERT_TRUE(state % 3 ? InitPortrait() : InitLandscape());
        const CKeyboard& kb = *m_keyboard;
        const KbStatus& s = kb.m_stKbStatus;
        EXPECT_EQ(s.m_bShift + s.m_bCAPS + s.m_bCtrl + s.m_bDigit + s.m_bUml, 0);
        EXPECT_EQ(s.m_bLng1, language1);
        EXPECT_EQ(SelectedMask(), language1 ? kb.m_hLng1SmlKbMask : kb.m_hLng2SmlKbMask);
        EXPECT_TRUE(kb.m_nPressedIndex == -1 && !kb.m_pWnd && Pressed().empty());
    }
    EXPECT_EQ(m_keyboard->m_pCallback, &m_callback);
    EXPECT_EQ(m_callback.Take(), Events());
    EXPECT_TRUE(CKeyboard::IsValidSkin(kA));
    // A file that is still loaded cannot be deleted.
    m_keyboard.reset();
    EXPECT_TRUE(DeleteFileW(kA));
}

TEST_F(Initialisation, SkinsOfTheFolderComeBeforeExistingUserSkins) {
    for (const char* file :
         {"Windows/b.tlk", "Windows/A.TLK", "Windows/c.tlkx", "Windows/tlk", "card/my skin.tlk"})
        test::WriteDeviceFile(file, "");
    WideStringList found = {TEXT("\\windows\\A.TLK"), kB};
    if (!test::ActsAsHandheld(test::Difference::ShortNames)) found.push_back(TEXT("\\windows\\c.tlkx"));
    EXPECT_EQ(CKeyboard::GetSkinList(), found);
    EXPECT_FALSE(HasSettingsKey());
    EXPECT_EQ(CKeyboard::FindSkinFiles(TEXT("tlkx")), WideStringList{TEXT("\\windows\\c.tlkx")});
    EXPECT_EQ(CKeyboard::FindSkinFiles(TEXT("none")), WideStringList());

    const WideString paths[] = {TEXT("\\card\\my skin.tlk"), TEXT("\\card\\absent.tlk"), kB, kB};
    std::string users;
    for (const WideString& path : paths)
        users += TextValue(path).second;
    Store(kUserSkinsValue, {REG_MULTI_SZ, users});
    found.insert(found.end(), {paths[0], kB, kB});
    EXPECT_EQ(CKeyboard::GetSkinList(), found);
}

TEST_F(Initialisation, AUserSkinIsUsedIfTheFolderHasNone) {
    test::WriteDeviceFile("card/my.tlk", TestSkin().Build());
    Store(kUserSkinsValue, TextValue(TEXT("\\card\\my.tlk")));
    ASSERT_TRUE(InitPortrait());
    EXPECT_EQ(m_keyboard->m_strSkinPath, TEXT("\\card\\my.tlk"));
    EXPECT_FALSE(m_keyboard->m_bNoSkin);
}

}  // namespace
