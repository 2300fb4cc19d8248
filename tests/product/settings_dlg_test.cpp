// SPDX-License-Identifier: MIT
// The lifetime of the options dialog; its use is tested through the simulator.
#include "settings/settings_dlg.h"

#include "fault_sweep.h"
#include "keyboard_fixture.h"

namespace {

constexpr CLSID kOwn = {0x5C1E0B7A, 0x93D4, 0x4F28, {0xB6, 0xA1, 0x2D, 0x7E, 0x4C, 0x9F, 0x8A, 0x30}};

// Presses OK as soon as it is open, and Cancel if that does not close it.
class ClosingDialog : public CSettingsDlg {
public:
    ClosingDialog() : CSettingsDlg(kOwn) {}

    BOOL ProcessWindowMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result,
                              DWORD map) override {
        if (message == WM_INITDIALOG)
            for (const int id : {IDOK, IDCANCEL})
                PostMessageW(m_hWnd, WM_COMMAND, static_cast<WPARAM>(id), 0);
        return CSettingsDlg::ProcessWindowMessage(window, message, wParam, lParam, result, map);
    }
};

class OptionsDialog : public KeyboardTest {
protected:
    void Open() {
        m_dialog.m_pKeyboard = m_keyboard.get();
        m_result = m_dialog.DoModal(nullptr, 0);
    }

    // Opens the dialog in each step of a sweep, then once more without a fault.
    template <typename Sweep, typename Check = void (*)()>
    void OpenThrough(Check check = [] {}) {
        for (Sweep sweep; sweep.Next();) {
            SCOPED_TRACE(sweep.Describe());
            sweep.Arm();
            Open();
            sweep.Disarm();
            ASSERT_EQ(m_dialog.m_hWnd, nullptr);
            check();
        }
        Open();
        EXPECT_EQ(m_result, IDOK);
    }

    ClosingDialog m_dialog;
    INT_PTR m_result = 0;
};

TEST_F(OptionsDialog, OpensAHundredTimes) {
    for (int i = 0; i < 100; ++i) {
        Open();
        ASSERT_EQ(m_result, IDOK);
        ASSERT_EQ(m_dialog.m_hWnd, nullptr);
    }
}

// The fixture checks that no handle is left.
TEST_F(OptionsDialog, SurvivesEveryFailureOfThePlatform) { OpenThrough<test::FaultSweep>(); }

// Nor does an incomplete list of skins replace the stored one.
TEST_F(OptionsDialog, SurvivesRunningOutOfMemoryAnywhere) {
    const WideStringList stored{TEXT("\\windows\\..\\other.tlk")};
    test::WriteDeviceFile("other.tlk", "");
    CSettingsKey(SettingsAccess::Create).WriteStringList(kUserSkinsValue, stored);
    OpenThrough<test::AllocationSweep>([&] {
        EXPECT_EQ(m_result, IDOK);
        WideStringList kept;
        EXPECT_TRUE(CSettingsKey(SettingsAccess::Read).ReadStringList(kUserSkinsValue, kept));
        EXPECT_TRUE(kept == stored);
    });
}

TEST_F(OptionsDialog, MessagesBeforeInitialisationFindNoControls) {
    Open();
    SetLastError(ERROR_SUCCESS);
    LRESULT result = 1;
    EXPECT_TRUE(m_dialog.CSettingsDlg::ProcessWindowMessage(nullptr, WM_SIZE, 0, 0, result, 0));
    EXPECT_EQ(result, 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_SUCCESS)) << "controls of the last opening";
    EXPECT_TRUE(m_dialog.CSettingsDlg::ProcessWindowMessage(
        nullptr, WM_COMMAND, MAKEWPARAM(IDC_SKIN_COMBO, CBN_SELCHANGE), 0, result, 0));
    EXPECT_FALSE(m_dialog.CSettingsDlg::ProcessWindowMessage(nullptr, WM_USER, 0, 0, result, 0));
}

TEST(SkinDisplayName, IsTheFileNameWithoutItsLastFourCharacters) {
    EXPECT_TRUE(SkinDisplayName(TEXT("\\windows\\Blue.tlk")) == TEXT("Blue"));
    EXPECT_TRUE(SkinDisplayName(TEXT("a.b\\c.skin")) == TEXT("c."));
    EXPECT_TRUE(SkinDisplayName(TEXT("x.tlk")) == TEXT("x"));
    EXPECT_TRUE(SkinDisplayName(TEXT("tlk")).empty());
}

}  // namespace
