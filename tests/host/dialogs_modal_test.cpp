// SPDX-License-Identifier: MIT
#include "dialogs_fixture.h"

namespace {

using test::Command;

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

    void ExpectAllAsBefore() {
        EXPECT_TRUE(IsWindowEnabled(m_owner));
        EXPECT_EQ(GetFocus(), m_edit);
        EXPECT_EQ(host::TopmostModalWindow(), nullptr);
        EXPECT_EQ(host::CountHandles().windows, 2);
        EXPECT_EQ(host::CountHandles().fonts, 0);
    }
};

TEST_F(DialogModal, OwnerWaitsWhileTheDialogStands) {
    bool owned = false;
    const INT_PTR result = Run({[&] {
                                    EXPECT_FALSE(IsWindowEnabled(m_owner));
                                    EXPECT_TRUE(IsWindowVisible(dialog));
                                    EXPECT_EQ(host::TopmostModalWindow(), dialog);
                                    EXPECT_EQ(GetActiveWindow(), dialog);
                                    owned = GetParent(dialog) == m_owner;
                                },
                                [&] {
                                    EndDialog(dialog, 77);
                                    EXPECT_TRUE(IsWindowEnabled(m_owner));
                                    EXPECT_FALSE(IsWindowVisible(dialog));
                                }});
    EXPECT_EQ(result, 77);
    EXPECT_TRUE(owned);
    ExpectAllAsBefore();
}

TEST_F(DialogModal, OwnerThatWasDisabledStaysSo) {
    EnableWindow(m_owner, FALSE);
    Run({[&] { EndDialog(dialog, 1); }});
    EXPECT_FALSE(IsWindowEnabled(m_owner));
}

TEST_F(DialogModal, EndedInItsInitialisationItIsNeverShown) {
    bool shown = false;
    onMessage = [&](UINT message, WPARAM, LPARAM parameter, INT_PTR&) {
        if (message == WM_SHOWWINDOW) shown = true;
        if (message != WM_INITDIALOG) return false;
        EXPECT_EQ(parameter, 42);
        return EndDialog(dialog, 5) != FALSE;
    };
    EXPECT_EQ(Run(), 5);
    EXPECT_FALSE(shown);
    ExpectAllAsBefore();
}

TEST_F(DialogModal, FirstTabStopGetsTheFocusWhenAsked) {
    INT_PTR answer = TRUE;
    HWND offered = nullptr;
    onMessage = [&](UINT message, WPARAM wParam, LPARAM, INT_PTR& result) {
        if (message != WM_INITDIALOG) return false;
        offered = reinterpret_cast<HWND>(wParam);
        if (!answer) SetFocus(GetDlgItem(dialog, 13));
        // Raising a control makes it the first, but the offered one keeps the focus.
        BringWindowToTop(GetDlgItem(dialog, 13));
        result = answer;
        return true;
    };
    Run({[&] {
        EXPECT_EQ(FocusedId(), 11);
        EXPECT_EQ(GetDlgCtrlID(offered), 11);
    }});
    answer = FALSE;
    Run({[&] { EXPECT_EQ(FocusedId(), 13); }});
    ExpectAllAsBefore();
}

TEST_F(DialogModal, TabGoesRoundTheTabStopsInBothDirections) {
    std::vector<int> order;
    const auto press = [&] { Key(VK_TAB); };
    const auto look = [&] { order.push_back(FocusedId()); };
    Run({look, press, look, press, look, press, look, press, look});
    EXPECT_EQ(order, (std::vector<int>{11, 13, IDOK, IDCANCEL, 11}));
    order.clear();
    Run({[] { host::PostKey(VK_SHIFT, true); }, press, look, press, look,
         [] { host::PostKey(VK_SHIFT, false); }, press, look});
    EXPECT_EQ(order, (std::vector<int>{IDCANCEL, IDOK, IDCANCEL}));
}

TEST_F(DialogModal, ArrowsStayInTheGroup) {
    std::vector<int> order;
    const auto look = [&] { order.push_back(FocusedId()); };
    Run({[] { Key(VK_DOWN); }, look, [] { Key(VK_DOWN); }, look, [] { Key(VK_UP); }, look,
         [&] { SetFocus(Item(IDOK)); }, [] { Key(VK_RIGHT); }, look, [] { Key(VK_RIGHT); }, look});
    EXPECT_EQ(order, (std::vector<int>{12, 11, 12, IDCANCEL, IDOK}));
}

TEST_F(DialogModal, EnterAndEscapeCommand) {
    EXPECT_EQ(Run({[] { Key(VK_RETURN); }}), IDOK);
    EXPECT_EQ(Run({[] { Key(VK_ESCAPE); }}), IDCANCEL);
    EXPECT_EQ(Run({[&] { SetFocus(Item(IDCANCEL)); }, [] { Key(VK_RETURN); }}), IDCANCEL);
    TakeCommands();
    // A disabled button cannot be pressed with a key either.
    Run({[&] {
             EnableWindow(Item(IDOK), FALSE);
             EnableWindow(Item(IDCANCEL), FALSE);
         },
         [] { Key(VK_RETURN); }, [] { Key(VK_ESCAPE); }});
    EXPECT_TRUE(commands.empty());
    ExpectAllAsBefore();
}

TEST_F(DialogModal, DisabledFocusGoesToTheDialogSoThatKeysStillWork) {
    EXPECT_EQ(Run({[&] {
                       EnableWindow(Item(11), FALSE);
                       EXPECT_EQ(GetFocus(), dialog);
                   },
                   [] { Key(VK_TAB); }, [&] { EXPECT_EQ(FocusedId(), 13); }, [] { Key(VK_ESCAPE); }}),
              IDCANCEL);
}

TEST_F(DialogModal, QuitEndsEveryLoopAround) {
    EXPECT_EQ(RunUntilQuit({[] { PostQuitMessage(9); }}), IDCANCEL);
    EXPECT_EQ(TakeQuit(), 9);
    ExpectAllAsBefore();
}

TEST_F(DialogModal, DestroyedDialogReturnsAtOnce) {
    EXPECT_EQ(Run({[&] { DestroyWindow(dialog); }}), -1);
    ExpectAllAsBefore();
    EXPECT_EQ(Run({[&] { DestroyWindow(m_owner); }}), -1);
    EXPECT_EQ(host::TopmostModalWindow(), nullptr);
}

TEST_F(DialogModal, HandlersMayDestroyTheDialogDuringAnyMessage) {
    constexpr UINT kMessages[] = {WM_SETFONT, WM_INITDIALOG, WM_SHOWWINDOW, WM_PAINT,  WM_ERASEBKGND,
                                  WM_COMMAND, WM_DESTROY,    WM_NCDESTROY,  WM_MOVE,   WM_SIZE,
                                  WM_KEYDOWN, WM_SETFOCUS,   WM_KILLFOCUS,  WM_ENABLE, WM_LBUTTONDOWN};
    for (const UINT trigger : kMessages) {
        HWND seen = nullptr;
        onMessage = [&](UINT message, WPARAM, LPARAM, INT_PTR&) {
            if (message == WM_INITDIALOG) seen = dialog;
            if (message != trigger) return false;
            if (IsWindow(host::TopmostModalWindow())) DestroyWindow(host::TopmostModalWindow());
            return false;
        };
        Run({[&] { MoveWindow(dialog, 1, 1, 200, 300, TRUE); }, [&] { SetFocus(dialog); },
             [] { Key(VK_TAB); }, [&] { Tap(Item(11)); }, [&] { SetFocus(dialog); }, [] { Key(VK_SPACE); },
             [&] {
                 Tap(dialog, {5, 5});
             }});
        onMessage = nullptr;
        EXPECT_FALSE(IsWindow(seen)) << trigger;
        EXPECT_TRUE(IsWindowEnabled(m_owner)) << trigger;
        SetFocus(m_edit);
    }
    ExpectAllAsBefore();
}

TEST_F(DialogModal, NestedDialogsReturnInOrderWhileMessagesAndPaintGoOn) {
    std::vector<UINT> seen;
    bool inner = false;
    onMessage = [&](UINT message, WPARAM, LPARAM, INT_PTR&) {
        if (message == WM_USER || (message == WM_PAINT && inner)) seen.push_back(message);
        return false;
    };
    int boxResult = 0;
    const INT_PTR result = Run({[&] {
                                    inner = true;
                                    boxResult = MessageBoxW(dialog, TEXT("Sure?"), TEXT("Ask"), MB_OKCANCEL);
                                    inner = false;
                                    EXPECT_EQ(FocusedId(), 11);
                                    EXPECT_TRUE(IsWindowEnabled(dialog));
                                },
                                [&] {
                                    EXPECT_NE(host::TopmostModalWindow(), dialog);
                                    EXPECT_FALSE(IsWindowEnabled(dialog));
                                    PostMessageW(dialog, WM_USER, 0, 0);
                                    InvalidateRect(dialog, nullptr, TRUE);
                                    Tap(dialog, {30, 70});  // the check box of a disabled dialog
                                },
                                [&] { Tap(Item(IDCANCEL)); }, [&] { EndDialog(dialog, 3); }});
    EXPECT_EQ(boxResult, IDCANCEL);
    EXPECT_EQ(result, 3);
    EXPECT_EQ(seen, (std::vector<UINT>{WM_USER, WM_PAINT}));
    EXPECT_TRUE(commands.empty());
    ExpectAllAsBefore();
}

TEST_F(DialogModal, OuterDialogMayEndBeforeTheInner) {
    int boxResult = 0;
    EXPECT_EQ(Run({[&] { boxResult = MessageBoxW(dialog, TEXT("x"), TEXT("x"), MB_OK); },
                   [&] { EndDialog(dialog, 4); }, [&] { SendMessageW(Item(IDOK), BM_CLICK, 0, 0); }}),
              4);
    EXPECT_EQ(boxResult, IDOK);
    ExpectAllAsBefore();
}

TEST_F(DialogModal, ThousandOpeningsLeaveNothing) {
    for (int i = 0; i < 1000; ++i) {
        ASSERT_EQ(Run({[&] { SendMessageW(Item(IDOK), BM_CLICK, 0, 0); }}), IDOK);
    }
    ExpectAllAsBefore();
}

TEST_F(DialogModal, FailedCreationLeavesNothing) {
    unsigned failures = 0;
    for (unsigned n = 1;; ++n) {
        host::FailCall(host::Call::CreateWindow, n);
        const INT_PTR result = Run({[&] { EndDialog(dialog, 1); }});
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
