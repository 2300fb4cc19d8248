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
        return test::SkinBuilder().Bitmap("char_keyboard_bitmap",
                                          test::MaskBytes(3, 3, [](int, int) { return true; }));
    }
    static bool HasSettingsKey() {
        CRegistryKeyOwner key;
        return RegOpenKeyExW(HKEY_LOCAL_MACHINE, kSettingsKey, 0, KEY_READ, key.Receive()) == ERROR_SUCCESS;
    }
    static std::string Bytes(const WideString& text) {
        return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(WCHAR)};
    }
};

TEST_F(Initialisation, FirstStartStoresWhatItChose) {
    TestSkin().Install("b.tlk");
    UnfitSkin().Install("a.tlk");
    ASSERT_TRUE(InitPortrait());
    EXPECT_FALSE(m_keyboard->m_bNoSkin);
    EXPECT_EQ(m_keyboard->m_strSkinPath, kB);
    EXPECT_EQ(Value(kSkinValue), Text(kB));
    EXPECT_EQ(Value(kSwipeValue), std::pair(DWORD{REG_DWORD}, DwordBytes(1)));
    EXPECT_EQ(Value(kSwipeOnlySkinValue), std::pair(DWORD{REG_DWORD}, DwordBytes(0)));
    EXPECT_EQ(Value(kExtSymValue).first, 0u) << "the default is never written";
    EXPECT_EQ(Value(kUserSkinsValue).first, 0u);
}

TEST_F(Initialisation, StoredTextIsPartOfThePathOfAValidSkin) {
    TestSkin().Install("a.tlk");
    TestSkin().Install("b.tlk");
    UnfitSkin().Install("unfit.tlk");
    const struct {
        WideString stored, path;
        bool isKept;
    } cases[] = {
        {kB, kB, true},
        {TEXT("b.tlk"), TEXT("b.tlk"), true},  // the loader looks in the folder of Windows
        {TEXT("B.tlk"), kA, false},            // letter case counts
        {TEXT("\\windows\\c.tlk"), kA, false},
        {TEXT("\\windows\\unfit.tlk"), kA, false},
        {TEXT(""), kA, false},
        {WideString(259, 'x'), kA, false},
        {WideString(260, 'x'), kA, false},  // 261 characters with the null: too long to be read
        {WideString(2000, 'x'), kA, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.stored));
        SetText(kSkinValue, c.stored);
        ASSERT_TRUE(InitPortrait());
        EXPECT_EQ(m_keyboard->m_strSkinPath, c.path);
        EXPECT_EQ(Value(kSkinValue), Text(c.isKept ? c.stored : c.path));
        EXPECT_EQ(m_keyboard->m_Charset.size(), 222u);
    }
}

TEST_F(Initialisation, StoredTextEndsAtItsNullOrAtItsSize) {
    TestSkin().Install("a.tlk");
    TestSkin().Install("b.tlk");
    const WideString whole = kB;
    for (const std::string& bytes :
         {Bytes(whole), Bytes(whole) + "x", Bytes(whole + WideString(1, 0) + TEXT("a.tlk"))}) {
        SetValue(kSkinValue, REG_BINARY, bytes);
        ASSERT_TRUE(InitPortrait());
        EXPECT_EQ(m_keyboard->m_strSkinPath, kB);
        EXPECT_EQ(Value(kSkinValue), std::pair(DWORD{REG_BINARY}, bytes));
    }
}

TEST_F(Initialisation, ChosenFileThatDoesNotLoadOrFitFails) {
    TestSkin().Install("a.tlk");
    SetText(kSkinValue, TEXT("indows\\a"));  // is part of the path, and names no file
    EXPECT_FALSE(InitPortrait());
    EXPECT_EQ(Value(kSkinValue), Text(TEXT("indows\\a")));
    TestSkin().Without("LANSCAPE_KEYBOARD_BITMAP").Install("b.tlk");
    SetText(kSkinValue, kB);
    EXPECT_FALSE(InitLandscape());
    EXPECT_EQ(Value(kSkinValue), Text(kB));
    // The next one starts afresh.
    SetText(kSkinValue, kA);
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
    SetText(kSkinValue, TEXT("\\card\\my.tlk"));
    EXPECT_TRUE(InitPortrait());
    EXPECT_TRUE(m_keyboard->m_bNoSkin);
    EXPECT_EQ(Value(kSkinValue), Text(TEXT("\\card\\my.tlk")));
    TestSkin().Install("a.tlk");
    EXPECT_TRUE(InitPortrait());
    EXPECT_FALSE(m_keyboard->m_bNoSkin);
}

TEST_F(Initialisation, NumbersAreReadWhateverTheirTypeIs) {
    TestSkin().Install("a.tlk");
    const struct {
        DWORD type;
        std::string bytes;
        DWORD value;
        bool isRead;
    } cases[] = {
        {REG_DWORD, DwordBytes(0), 0, true},
        {REG_DWORD, DwordBytes(2), 2, true},
        {REG_BINARY, DwordBytes(0x80000000), 0x80000000, true},
        {REG_SZ, std::string("2\0\0\0", 4), 0x32, true},
        {REG_SZ,
         std::string("2\0"
                     "3\0\0\0",
                     6),
         1, false},  // more than 4 bytes
    };
    for (const auto& c : cases) {
        SetValue(kSwipeValue, c.type, c.bytes);
        SetValue(kExtSymValue, c.type, c.bytes);
        ASSERT_TRUE(InitPortrait());
        EXPECT_EQ(m_keyboard->m_dwSwipe, c.value);
        EXPECT_EQ(m_keyboard->m_bExtSym, c.value);
        const auto untouched = std::pair(c.type, c.bytes);
        EXPECT_EQ(Value(kSwipeValue), c.isRead ? untouched : std::pair(DWORD{REG_DWORD}, DwordBytes(1)));
        EXPECT_EQ(Value(kExtSymValue), untouched);
    }
}

TEST_F(Initialisation, LanguageIsTheOnlyStatusThatSurvives) {
    Start();
    for (const WCHAR code : {kShiftCode, kCapsCode, kControlCode, kLanguageCode, kUmlautCode, kDigitCode}) {
        m_keyboard->m_bHasCapsKey = TRUE;
        m_keyboard->SetKbStatus(&code, &m_window);
    }
    Down({5, 5});
    m_callback.Take();
    ASSERT_TRUE(InitPortrait());
    const KbStatus& status = m_keyboard->m_stKbStatus;
    EXPECT_EQ(status.m_bShift + status.m_bCAPS + status.m_bCtrl + status.m_bDigit + status.m_bUml, 0);
    EXPECT_EQ(status.m_bLng1, 0);
    EXPECT_EQ(GetCurrentObject(m_keyboard->m_hMaskDC, OBJ_BITMAP), m_keyboard->m_hLng2SmlKbMask);
    EXPECT_EQ(m_keyboard->m_nPressedIndex, -1);
    EXPECT_EQ(m_keyboard->m_pWnd, nullptr);
    EXPECT_EQ(m_keyboard->m_pCallback, &m_callback);
    EXPECT_TRUE(m_keyboard->m_PressedRects.empty());
    EXPECT_EQ(m_callback.Take(), Events());
    ASSERT_TRUE(InitLandscape());
    EXPECT_EQ(m_keyboard->m_stKbStatus.m_bLng1, 0);
}

// From every state, with every mask selected once: the handle count after the test tells of leaks.
TEST_F(Initialisation, RepeatingItInAnyStatusKeepsNoHandle) {
    Start();
    for (int state = 0; state < 64; ++state) {
        KbStatus& status = m_keyboard->m_stKbStatus;
        status = {BYTE(state & 1),      BYTE(state >> 1 & 1), BYTE(state >> 2 & 1),
                  BYTE(state >> 3 & 1), BYTE(state >> 4 & 1), BYTE(state >> 5 & 1)};
        m_keyboard->GetKeyboardMask();
        ASSERT_TRUE(state % 3 ? InitPortrait() : InitLandscape());
    }
    EXPECT_EQ(CKeyboard().m_stKbStatus.m_bLng1, 1);
    EXPECT_TRUE(CKeyboard::IsValidSkin(kA));
    // A file that is still loaded by somebody cannot be deleted.
    m_keyboard.reset();
    EXPECT_TRUE(DeleteFileW(kA));
}

TEST_F(Initialisation, FoldersSkinsComeFirstThenTheUsersThatExist) {
    test::WriteDeviceFile("Windows/b.tlk", "");
    test::WriteDeviceFile("Windows/A.TLK", "");
    test::WriteDeviceFile("Windows/c.tlkx", "");
    test::WriteDeviceFile("Windows/tlk", "");
    test::WriteDeviceFile("card/my skin.tlk", "");
    WideStringList found = {TEXT("\\windows\\A.TLK"), kB};
    if (!test::ActsAsHandheld(test::Difference::ShortNames)) found.push_back(TEXT("\\windows\\c.tlkx"));
    EXPECT_EQ(CKeyboard::GetSkinList(), found);
    EXPECT_FALSE(HasSettingsKey());
    EXPECT_EQ(CKeyboard::FindSkinFiles(TEXT("tlkx")), WideStringList{TEXT("\\windows\\c.tlkx")});
    EXPECT_EQ(CKeyboard::FindSkinFiles(TEXT("none")), WideStringList());

    const WideString nothing(1, 0);
    const WideString card = TEXT("\\card\\my skin.tlk");
    const WideString absent = TEXT("\\card\\absent.tlk");
    const WideString b = kB;
    const struct {
        std::string bytes;
        WideStringList users;
    } cases[] = {
        {"", {}},
        {std::string(4, '\0'), {}},
        {Bytes(card + nothing + absent + nothing + b + nothing + nothing), {card, b}},
        {Bytes(b + nothing + b + nothing + nothing + nothing), {b, b}},
        {Bytes(card), {card}},                                    // no null at all
        {Bytes(card + nothing + b) + "x", {card, b}},             // an odd byte
        {Bytes(card + nothing + nothing + b + nothing), {card}},  // ends at the empty string
        {Bytes(nothing + card + nothing), {}},
        {Bytes(card + WideString(2600 - card.size(), 0)), {card}},  // 5200 bytes
        {Bytes(card + WideString(2601 - card.size(), 0)), {}},      // 2 too many
    };
    for (const auto& c : cases) {
        SetValue(kUserSkinsValue, REG_MULTI_SZ, c.bytes);
        WideStringList expected = found;
        expected.insert(expected.end(), c.users.begin(), c.users.end());
        EXPECT_EQ(CKeyboard::GetSkinList(), expected) << c.bytes.size() << " bytes";
    }
}

TEST_F(Initialisation, UsersSkinServesWhereTheFolderHasNone) {
    test::WriteDeviceFile("card/my.tlk", TestSkin().Build());
    SetValue(kUserSkinsValue, REG_MULTI_SZ, Bytes(TEXT("\\card\\my.tlk")) + std::string(6, '\0'));
    ASSERT_TRUE(InitPortrait());
    EXPECT_EQ(m_keyboard->m_strSkinPath, TEXT("\\card\\my.tlk"));
    EXPECT_FALSE(m_keyboard->m_bNoSkin);
}

}  // namespace
