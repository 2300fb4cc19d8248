// SPDX-License-Identifier: MIT
#include <aygshell.h>
#include <shell_dialogs.h>

#include <rectangles.h>

#include "controls/fixture.h"

namespace {

class ShellDialogs : public test::Dialogs {
protected:
    void SetUp() override {
        Dialogs::SetUp();
        Add(TEXT("Button"), 11, WS_TABSTOP | BS_AUTOCHECKBOX, TEXT("One"));
        onDialog = [this](UINT message, WPARAM, LPARAM lParam, INT_PTR&) {
            if (message == WM_SIZE) m_sizes.push_back(lParam);
            if (message != WM_INITDIALOG) return false;
            MoveWindow(dialog, m_start.left, m_start.top, m_start.right, m_start.bottom, TRUE);
            m_sizes.clear();
            if (m_failsToMakeButton) host::FailCall(host::Call::CreateWindow);
            SHINITDLGINFO info{SHIDIM_FLAGS, dialog, SHIDIF_DONEBUTTON | SHIDIF_SIZEDLGFULLSCREEN};
            m_answer = SHInitDialog(&info);
            return true;
        };
    }

    void ExpectFullScreen(LONG width, LONG height) const {
        RECT place{};
        GetWindowRect(dialog, &place);
        EXPECT_EQ(place, (RECT{0, 0, width, height}));
        RECT done{};
        GetWindowRect(Item(IDOK), &done);
        EXPECT_LT(done.bottom, std::max(width, height) / 13) << "clear of the line under the title";
        EXPECT_GT(done.left, width / 2);
        EXPECT_LT(done.right, width);
    }

    RECT m_start{10, 10, 100, 100};  // left, top, width, height
    bool m_failsToMakeButton = false;
    std::vector<LPARAM> m_sizes;
    BOOL m_answer = FALSE;
};

TEST_F(ShellDialogs, DialogFillsTheScreenAndHasADoneButton) {
    for (const RECT& start : {RECT{10, 10, 100, 100}, RECT{0, 0, 240, 320}}) {
        m_start = start;
        const auto look = [&] {
            EXPECT_TRUE(m_answer);
            EXPECT_EQ(m_sizes, (std::vector<LPARAM>{MAKELPARAM(240, 320)}));
            ExpectFullScreen(240, 320);
            EXPECT_EQ(FocusedId(), 11);
        };
        EXPECT_EQ(Run({look, TapOn(IDOK)}), IDOK);
    }
}

TEST_F(ShellDialogs, DialogFollowsTheScreen) {
    Run({[&] {
        host::SetScreenSize({320, 240});
        FitFullScreenDialogs();
        ExpectFullScreen(320, 240);
    }});
}

TEST_F(ShellDialogs, WithoutTheButtonTheDialogStillFillsTheScreen) {
    m_failsToMakeButton = true;
    Run({[&] {
        EXPECT_FALSE(m_answer);
        EXPECT_EQ(m_sizes.size(), 1u);
    }});
    SHINITDLGINFO stale{SHIDIM_FLAGS, nullptr, SHIDIF_DONEBUTTON};
    EXPECT_FALSE(SHInitDialog(&stale));
    EXPECT_FALSE(SHInitDialog(nullptr));
}

}  // namespace
