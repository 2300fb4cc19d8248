// SPDX-License-Identifier: MIT
#include "controls/fixture.h"

namespace {

class DialogModal : public test::Dialogs {
protected:
    void SetUp() override {
        Dialogs::SetUp();
        Add(TEXT("Static"), 10, SS_LEFT, TEXT("Name"));
        Add(TEXT("Button"), 11, WS_TABSTOP | BS_AUTOCHECKBOX, TEXT("One"));
        Add(TEXT("Button"), 12, BS_AUTOCHECKBOX, TEXT("Two"));
        Add(TEXT("ComboBox"), 13, WS_GROUP | WS_TABSTOP | CBS_DROPDOWNLIST | CBS_SORT, TEXT(""), 90);
        Add(TEXT("Button"), 14, WS_TABSTOP | WS_DISABLED, TEXT("Never"));
        Add(TEXT("Button"), IDOK, WS_GROUP | WS_TABSTOP | BS_DEFPUSHBUTTON, TEXT("OK"));
        Add(TEXT("Button"), IDCANCEL, WS_TABSTOP, TEXT("Cancel"));
    }

    Step End(int result) {
        return [this, result] { EndDialog(dialog, result); };
    }
    // The focus after each of the steps.
    std::vector<int> Walk(const std::vector<Step>& steps) {
        std::vector<int> order;
        std::vector<Step> all;
        for (const Step& step : steps) {
            all.push_back(step);
            all.push_back([&] { order.push_back(FocusedId()); });
        }
        Run(all);
        return order;
    }

    void ExpectAllAsBefore() {
        EXPECT_TRUE(IsWindowEnabled(m_desktop));
        EXPECT_EQ(GetFocus(), m_edit);
        EXPECT_EQ(host::TopmostModalWindow(), nullptr);
        EXPECT_EQ(host::CountHandles().windows, 2);
        EXPECT_EQ(host::CountHandles().fonts, 0);
    }
};

using Ids = std::vector<int>;

TEST_F(DialogModal, TheOwnerIsDisabledWhileTheDialogIsOpen) {
    const INT_PTR result = Run({[&] {
                                    EXPECT_FALSE(IsWindowEnabled(m_desktop));
                                    EXPECT_TRUE(IsWindowVisible(dialog));
                                    EXPECT_EQ(host::TopmostModalWindow(), dialog);
                                    EXPECT_EQ(GetActiveWindow(), dialog);
                                    EXPECT_EQ(GetParent(dialog), m_desktop);
                                },
                                [&] {
                                    EndDialog(dialog, 77);
                                    EXPECT_TRUE(IsWindowEnabled(m_desktop));
                                    EXPECT_FALSE(IsWindowVisible(dialog));
                                }});
    EXPECT_EQ(result, 77);
    ExpectAllAsBefore();
}

TEST_F(DialogModal, ADisabledOwnerStaysDisabled) {
    EnableWindow(m_desktop, FALSE);
    Run({End(1)});
    EXPECT_FALSE(IsWindowEnabled(m_desktop));
}

TEST_F(DialogModal, EndedDuringInitialisationItIsNeverShown) {
    bool shown = false;
    onDialog = [&](UINT message, WPARAM, LPARAM parameter, INT_PTR&) {
        if (message == WM_SHOWWINDOW) shown = true;
        if (message != WM_INITDIALOG) return false;
        EXPECT_EQ(parameter, 42);
        return EndDialog(dialog, 5) != FALSE;
    };
    EXPECT_EQ(Run(), 5);
    EXPECT_FALSE(shown);
    ExpectAllAsBefore();
}

TEST_F(DialogModal, TheFirstTabStopGetsTheFocusOnRequest) {
    for (const INT_PTR answer : {TRUE, FALSE}) {
        onDialog = [&](UINT message, WPARAM wParam, LPARAM, INT_PTR& result) {
            if (message != WM_INITDIALOG) return false;
            EXPECT_EQ(GetDlgCtrlID(reinterpret_cast<HWND>(wParam)), 11);
            if (!answer) SetFocus(GetDlgItem(dialog, 13));
            // Raising a control makes it the first, but the one offered to the procedure keeps the focus.
            BringWindowToTop(GetDlgItem(dialog, 13));
            result = answer;
            return true;
        };
        Run({[&] { EXPECT_EQ(FocusedId(), answer ? 11 : 13); }});
    }
    ExpectAllAsBefore();
}

TEST_F(DialogModal, TabCyclesInBothDirections) {
    const Step tab = Press(VK_TAB);
    EXPECT_EQ(Walk({tab, tab, tab, tab}), (Ids{13, IDOK, IDCANCEL, 11}));
    EXPECT_EQ(
        Walk({[] { host::PostKey(VK_SHIFT, true); }, tab, tab, [] { host::PostKey(VK_SHIFT, false); }, tab}),
        (Ids{11, IDCANCEL, IDOK, IDOK, IDCANCEL}));
}

TEST_F(DialogModal, ArrowsStayInTheGroup) {
    EXPECT_EQ(Walk({Press(VK_DOWN), Press(VK_DOWN), Press(VK_UP), [&] { SetFocus(Item(IDOK)); },
                    Press(VK_RIGHT), Press(VK_RIGHT)}),
              (Ids{12, 11, 12, IDOK, IDCANCEL, IDOK}));
}

TEST_F(DialogModal, EnterAndEscapeAreCommands) {
    EXPECT_EQ(Run({Press(VK_RETURN)}), IDOK);
    EXPECT_EQ(Run({Press(VK_ESCAPE)}), IDCANCEL);
    EXPECT_EQ(Run({[&] { SetFocus(Item(IDCANCEL)); }, Press(VK_RETURN)}), IDCANCEL);
    TakeCommands();
    // A key cannot press a disabled button either.
    Run({[&] {
             EnableWindow(Item(IDOK), FALSE);
             EnableWindow(Item(IDCANCEL), FALSE);
         },
         Press(VK_RETURN), Press(VK_ESCAPE)});
    EXPECT_TRUE(commands.empty());
    ExpectAllAsBefore();
}

TEST_F(DialogModal, DisabledFocusGoesToTheDialogSoThatKeysStillWork) {
    EXPECT_EQ(Run({[&] {
                       EnableWindow(Item(11), FALSE);
                       EXPECT_EQ(GetFocus(), dialog);
                   },
                   Press(VK_TAB), [&] { EXPECT_EQ(FocusedId(), 13); }, Press(VK_ESCAPE)}),
              IDCANCEL);
}

TEST_F(DialogModal, QuitEndsAllNestedLoops) {
    EXPECT_EQ(RunUntilQuit({[] { PostQuitMessage(9); }}), IDCANCEL);
    EXPECT_EQ(TakeQuit(), 9);
    ExpectAllAsBefore();
}

TEST_F(DialogModal, DestroyedDialogReturnsAtOnce) {
    EXPECT_EQ(Run({[&] { DestroyWindow(dialog); }}), -1);
    ExpectAllAsBefore();
    EXPECT_EQ(Run({[&] { DestroyWindow(m_desktop); }}), -1);
    EXPECT_EQ(host::TopmostModalWindow(), nullptr);
}

TEST_F(DialogModal, HandlersMayDestroyTheDialogDuringAnyMessage) {
    constexpr UINT kMessages[] = {WM_SETFONT,  WM_INITDIALOG, WM_SHOWWINDOW, WM_PAINT,      WM_ERASEBKGND,
                                  WM_COMMAND,  WM_DESTROY,    WM_MOVE,       WM_SIZE,       WM_KEYDOWN,
                                  WM_SETFOCUS, WM_KILLFOCUS,  WM_ENABLE,     WM_LBUTTONDOWN};
    for (const UINT trigger : kMessages) {
        HWND seen = nullptr;
        onDialog = [&](UINT message, WPARAM, LPARAM, INT_PTR&) {
            if (message == WM_INITDIALOG) seen = dialog;
            if (message == trigger) DestroyWindow(host::TopmostModalWindow());
            return false;
        };
        const Step focusDialog = [&] { SetFocus(dialog); };
        Run({[&] { MoveWindow(dialog, 1, 1, 200, 300, TRUE); }, focusDialog, Press(VK_TAB), TapOn(11),
             focusDialog, Press(VK_SPACE), TapOn(0, {5, 5})});
        onDialog = nullptr;
        EXPECT_FALSE(IsWindow(seen)) << trigger;
        EXPECT_TRUE(IsWindowEnabled(m_desktop)) << trigger;
        SetFocus(m_edit);
    }
    ExpectAllAsBefore();
}

TEST_F(DialogModal, NestedDialogsReturnInOrderAndMessagesGoOn) {
    std::vector<UINT> seen;
    bool inner = false;
    onDialog = [&](UINT message, WPARAM, LPARAM, INT_PTR&) {
        if (message == WM_USER || (message == WM_PAINT && inner)) seen.push_back(message);
        return false;
    };
    const INT_PTR result =
        Run({[&] {
                 inner = true;
                 EXPECT_EQ(MessageBoxW(dialog, TEXT("x"), TEXT("x"), MB_OKCANCEL), IDCANCEL);
                 inner = false;
                 EXPECT_EQ(FocusedId(), 11);
                 EXPECT_TRUE(IsWindowEnabled(dialog));
             },
             [&] {
                 EXPECT_NE(host::TopmostModalWindow(), dialog);
                 EXPECT_FALSE(IsWindowEnabled(dialog));
                 PostMessageW(dialog, WM_USER, 0, 0);
                 InvalidateRect(dialog, nullptr, TRUE);
                 Tap(dialog, {30, 70});  // a check box of a disabled dialog
             },
             TapOn(IDCANCEL), End(3)});
    EXPECT_EQ(result, 3);
    EXPECT_EQ(seen, (std::vector<UINT>{WM_USER, WM_PAINT}));
    EXPECT_TRUE(commands.empty());
    ExpectAllAsBefore();
}

TEST_F(DialogModal, OuterDialogMayEndBeforeTheInner) {
    EXPECT_EQ(Run({[&] { EXPECT_EQ(MessageBoxW(dialog, TEXT("x"), TEXT("x"), MB_OK), IDOK); }, End(4),
                   TapOn(IDOK)}),
              4);
    ExpectAllAsBefore();
}

TEST_F(DialogModal, OpeningItAThousandTimesLeaksNothing) {
    for (int i = 0; i < 1000; ++i)
        ASSERT_EQ(Run({[&] { SendMessageW(Item(IDOK), BM_CLICK, 0, 0); }}), IDOK);
    ExpectAllAsBefore();
}

TEST_F(DialogModal, FailedCreationLeavesNothing) {
    unsigned failures = 0;
    for (unsigned n = 1;; ++n) {
        host::FailCall(host::Call::CreateWindow, n);
        const INT_PTR result = Run({End(1)});
        ExpectAllAsBefore();
        if (result != -1) break;
        ++failures;
    }
    EXPECT_EQ(failures, 1 + m_layout.controls.size());
    m_layout.controls[3].className = TEXT("No such class");
    EXPECT_EQ(Run(), -1);
    ExpectAllAsBefore();
}

}  // namespace
