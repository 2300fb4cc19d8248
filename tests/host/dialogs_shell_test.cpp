// SPDX-License-Identifier: MIT
#include <aygshell.h>
#include <shell_dialogs.h>

#include "dialogs_fixture.h"

namespace {

class ShellDialogs : public test::Dialogs {
protected:
    void SetUp() override {
        Dialogs::SetUp();
        Add(TEXT("Button"), 11, WS_TABSTOP | BS_AUTOCHECKBOX, TEXT("One"));
        onMessage = [this](UINT message, WPARAM, LPARAM lParam, INT_PTR& result) {
            if (message == WM_SIZE) m_sizes.push_back(lParam);
            if (message != WM_INITDIALOG) return false;
            MoveWindow(dialog, m_start.left, m_start.top, m_start.right, m_start.bottom, TRUE);
            m_sizes.clear();
            SHINITDLGINFO info{SHIDIM_FLAGS, dialog, SHIDIF_DONEBUTTON | SHIDIF_SIZEDLGFULLSCREEN};
            m_answer = SHInitDialog(&info);
            result = TRUE;
            return true;
        };
    }

    static void ExpectFullScreen(HWND dialog, LONG width, LONG height) {
        RECT place{};
        GetWindowRect(dialog, &place);
        const RECT screen{0, 0, width, height};
        EXPECT_TRUE(EqualRect(&place, &screen));
        RECT done{};
        GetWindowRect(GetDlgItem(dialog, IDOK), &done);
        EXPECT_LT(done.bottom, std::max(width, height) / 13) << "clear of the line under the title";
        EXPECT_GT(done.left, width / 2);
        EXPECT_LT(done.right, width);
    }

    RECT m_start{10, 10, 100, 100};  // left, top, width, height
    std::vector<LPARAM> m_sizes;
    BOOL m_answer = FALSE;
};

TEST_F(ShellDialogs, DialogFillsTheScreenAndHasADoneButton) {
    for (const RECT& start : {RECT{10, 10, 100, 100}, RECT{0, 0, 240, 320}}) {
        m_start = start;
        EXPECT_EQ(Run({[&] {
                      EXPECT_TRUE(m_answer);
                      EXPECT_EQ(m_sizes, (std::vector<LPARAM>{MAKELPARAM(240, 320)}));
                      ExpectFullScreen(dialog, 240, 320);
                      EXPECT_EQ(FocusedId(), 11);
                      Tap(Item(IDOK));
                  }}),
                  IDOK);
    }
}

TEST_F(ShellDialogs, DialogFollowsTheScreen) {
    Run({[&] {
        host::SetScreenSize({320, 240});
        FitFullScreenDialogs();
        ExpectFullScreen(dialog, 320, 240);
    }});
    host::SetScreenSize({240, 320});
    FitFullScreenDialogs();
}

TEST_F(ShellDialogs, WithoutTheButtonTheDialogStillFits) {
    onMessage = [&, next = onMessage](UINT message, WPARAM wParam, LPARAM lParam, INT_PTR& result) {
        if (message == WM_INITDIALOG) host::FailCall(host::Call::CreateWindow);
        return next(message, wParam, lParam, result);
    };
    Run({[&] {
        EXPECT_FALSE(m_answer);
        EXPECT_EQ(m_sizes.size(), 1u);
    }});
    SHINITDLGINFO stale{SHIDIM_FLAGS, nullptr, SHIDIF_DONEBUTTON};
    EXPECT_FALSE(SHInitDialog(&stale));
    EXPECT_FALSE(SHInitDialog(nullptr));
}

}  // namespace
