// SPDX-License-Identifier: MIT
#include <algorithm>

#include "control_combo.h"
#include "control_list.h"
#include "control_paint.h"
#include "dialogs_fixture.h"

namespace {

using test::Command;

constexpr int kCombo = 20;
constexpr int kCheck = 21;
constexpr int kPush = 22;
constexpr int kItems = 12;

class DialogControls : public test::Dialogs {
protected:
    void SetUp() override {
        Dialogs::SetUp();
        constexpr DWORD kComboStyle =
            WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST | CBS_SORT | CBS_NOINTEGRALHEIGHT;
        Add(TEXT("ComboBox"), kCombo, kComboStyle, TEXT(""), 120);
        Add(TEXT("Button"), kCheck, WS_TABSTOP | BS_AUTOCHECKBOX, TEXT("Check"));
        Add(TEXT("Button"), kPush, WS_TABSTOP, TEXT("Push"));
        onMessage = [this](UINT message, WPARAM, LPARAM, INT_PTR&) {
            if (message == WM_INITDIALOG) FillCombo();
            return false;
        };
    }

    // "item a", "item b" and so on; the second is selected.
    void FillCombo() {
        for (int i = kItems; i-- > 0;) {
            const std::u16string text = std::u16string(TEXT("item ")) + static_cast<char16_t>(TEXT('a') + i);
            SendMessageW(GetDlgItem(dialog, kCombo), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
        }
        SendMessageW(GetDlgItem(dialog, kCombo), CB_SETCURSEL, 1, 0);
    }

    HWND Combo() const { return GetDlgItem(dialog, kCombo); }
    LRESULT Selected() const { return SendMessageW(Combo(), CB_GETCURSEL, 0, 0); }
    bool IsOpen() const { return SendMessageW(Combo(), CB_GETDROPPEDSTATE, 0, 0) != 0; }
    bool IsChecked() const {
        return SendMessageW(GetDlgItem(dialog, kCheck), BM_GETCHECK, 0, 0) == BST_CHECKED;
    }

    // The window of the open list; null when none is open.
    static HWND List() {
        for (const host::Window* window : host::TopLevelWindows()) {
            if (window->windowClass->name == TEXT("ComboLBox")) return window->handle;
        }
        return nullptr;
    }
    static std::shared_ptr<host::DropDownList> ListObject() {
        return host::FindSystemWindow<host::DropDownList>(List());
    }
    // A point in the list on this item; the item has to be in view.
    static POINT PointOn(int item) {
        RECT client{};
        GetClientRect(List(), &client);
        for (LONG y = 0; y < client.bottom; ++y) {
            if (ListObject()->ItemAt({5, y}) == item) return {5, y};
        }
        ADD_FAILURE() << "item " << item << " is not in view";
        return {};
    }

    static constexpr Command kDropDown{kCombo, CBN_DROPDOWN};
    static constexpr Command kCloseUp{kCombo, CBN_CLOSEUP};
    static constexpr Command kTaken{kCombo, CBN_SELENDOK};
    static constexpr Command kCancelled{kCombo, CBN_SELENDCANCEL};
    static constexpr Command kChanged{kCombo, CBN_SELCHANGE};
};

TEST_F(DialogControls, PenPressesAButtonOnlyWhereItWentDown) {
    HWND push = nullptr;
    Run({[&] { Tap(push = Item(kPush)); },
         [&] {
             EXPECT_EQ(TakeCommands(), (std::vector<Command>{{kPush, BN_CLICKED}}));
             EXPECT_EQ(GetFocus(), push);
             Pen(host::Pen::Down, push, {5, 5});
         },
         [&] {
             Pen(host::Pen::Move, push, {5, 50});
         },
         [&] {
             Pen(host::Pen::Up, push, {5, 50});
         },
         [&] {
             EXPECT_EQ(GetCapture(), nullptr);
             Pen(host::Pen::Down, dialog, {5, 5});
             Pen(host::Pen::Up, push, {5, 5});
         },
         [&] {
             EnableWindow(push, FALSE);
             Tap(push);
             SendMessageW(push, BM_CLICK, 0, 0);
         }});
    EXPECT_TRUE(commands.empty());
}

TEST_F(DialogControls, CheckBoxFollowsPenSpaceBarAndProgram) {
    Run({[&] { Tap(Item(kCheck)); },
         [&] {
             EXPECT_TRUE(IsChecked());
             Key(VK_SPACE);
         },
         [&] {
             EXPECT_FALSE(IsChecked());
             EXPECT_EQ(TakeCommands(), (std::vector<Command>{{kCheck, BN_CLICKED}, {kCheck, BN_CLICKED}}));
             SendMessageW(Item(kCheck), BM_SETCHECK, 7, 0);
             EXPECT_TRUE(IsChecked());
             // A space bar that was pressed elsewhere does not click here.
             host::PostKey(VK_SPACE, false);
         },
         [&] {
             EXPECT_TRUE(commands.empty());
             SendMessageW(Item(kPush), BM_SETCHECK, BST_CHECKED, 0);
             EXPECT_EQ(SendMessageW(Item(kPush), BM_GETCHECK, 0, 0), BST_UNCHECKED);
         }});
}

TEST_F(DialogControls, PenOpensTheListAndTakesAnItem) {
    Run({[&] { Tap(Combo()); },
         [&] {
             EXPECT_TRUE(IsOpen());
             EXPECT_EQ(GetFocus(), Combo());
             EXPECT_EQ(TakeCommands(), (std::vector<Command>{kDropDown}));
             Tap(List(), PointOn(3));
         },
         [&] {
             EXPECT_FALSE(IsOpen());
             EXPECT_EQ(List(), nullptr);
             EXPECT_EQ(Selected(), 3);
             EXPECT_EQ(TakeCommands(), (std::vector<Command>{kTaken, kCloseUp, kChanged}));
             WCHAR text[20];
             GetWindowTextW(Combo(), text, 20);
             EXPECT_EQ(std::u16string(text), TEXT("item d"));
         }});
    EXPECT_EQ(host::CountHandles().windows, 2);
}

TEST_F(DialogControls, PenTakesAnItemInOneStroke) {
    Run({[&] {
             Pen(host::Pen::Down, Combo(), {190, 5});
         },
         [&] {
             Pen(host::Pen::Move, List(), PointOn(2));
             Pen(host::Pen::Up, List(), PointOn(2));
         },
         [&] {
             EXPECT_EQ(Selected(), 2);
             EXPECT_FALSE(IsOpen());
         }});
}

TEST_F(DialogControls, ListClosesWithoutASelectionWhenThePersonGoesElsewhere) {
    const std::vector<Step> ways{[&] {
                                     Tap(dialog, {2, 2});
                                 },
                                 [&] { Tap(Combo()); },
                                 [&] {
                                     Tap(Item(kPush), {150, 20});
                                 },
                                 [&] { Key(VK_ESCAPE); },
                                 [&] { SetFocus(Item(kCheck)); },
                                 [&] { EnableWindow(Combo(), FALSE); },
                                 [&] { SendMessageW(Combo(), CB_SHOWDROPDOWN, FALSE, 0); }};
    for (const Step& leave : ways) {
        Run({[&] { SendMessageW(Combo(), CB_SHOWDROPDOWN, TRUE, 0); },
             [&] {
                 MoveWindow(Item(kPush), 20, 290, 200, 24, TRUE);
                 SetFocus(Combo());
                 Key(VK_DOWN);
             },
             [&] {
                 EXPECT_TRUE(IsOpen());
                 TakeCommands();
                 leave();
             },
             [&] {
                 EXPECT_FALSE(IsOpen());
                 EXPECT_EQ(Selected(), 1);
                 const std::vector<Command> heard = TakeCommands();
                 ASSERT_GE(heard.size(), 2u);
                 EXPECT_EQ(heard[0], kCancelled);
                 EXPECT_EQ(heard[1], kCloseUp);
             }});
    }
}

TEST_F(DialogControls, PanelKeysMoveInTheOpenList) {
    const HWND panel = CreateWindowExW(WS_EX_TOPMOST, TEXT("Application"), nullptr, WS_POPUP | WS_VISIBLE, 0,
                                       200, 240, 120, nullptr, nullptr, nullptr, nullptr);
    Run({[&] { Tap(Combo()); },
         [&] {
             RECT place{};
             GetWindowRect(List(), &place);
             EXPECT_LE(place.bottom, 200) << "the list stays clear of the panel";
             Tap(panel);
             Key(VK_DOWN);
         },
         [&] {
             EXPECT_TRUE(IsOpen());
             EXPECT_EQ(Selected(), 1);
             TakeCommands();
             Key(VK_RETURN);
         },
         [&] {
             EXPECT_EQ(Selected(), 2);
             EXPECT_EQ(TakeCommands(), (std::vector<Command>{kTaken, kCloseUp, kChanged}));
         }});
    DestroyWindow(panel);
}

TEST_F(DialogControls, KeysSelectInTheClosedCombo) {
    Run({[] { Key(VK_DOWN); },
         [&] {
             EXPECT_EQ(Selected(), 2);
             EXPECT_EQ(TakeCommands(), (std::vector<Command>{kTaken, kChanged}));
             for (int i = 0; i < 20; ++i) {
                 Key(VK_UP);
             }
         },
         [&] {
             EXPECT_EQ(Selected(), 0);
             EXPECT_EQ(TakeCommands().size(), 4u) << "the end of the list is no change";
             SendMessageW(Combo(), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(TEXT("zebra")));
             host::PostCharacter('Z', TEXT('Z'));
         },
         [&] {
             EXPECT_EQ(Selected(), kItems);
             host::PostCharacter('I', TEXT('i'));
             host::PostCharacter('I', TEXT('i'));
             host::PostCharacter('X', TEXT('x'));
         },
         [&] {
             EXPECT_EQ(Selected(), 1);
             Key(VK_SPACE);
         },
         [&] { EXPECT_TRUE(IsOpen()); }});
}

TEST_F(DialogControls, ProgramsSelectionsNotifyNobody) {
    Run({[&] {
        SendMessageW(Combo(), CB_SETCURSEL, 4, 0);
        SendMessageW(Combo(), CB_DELETESTRING, 4, 0);
        EXPECT_EQ(Selected(), -1);
        EXPECT_TRUE(commands.empty());
        EXPECT_TRUE(host::ChooseItem(Combo(), 2));
        EXPECT_EQ(TakeCommands(), (std::vector<Command>{kDropDown, kTaken, kCloseUp, kChanged}));
        EXPECT_FALSE(host::ChooseItem(Combo(), kItems));
        EXPECT_FALSE(host::ChooseItem(Item(kPush), 0));
        EnableWindow(Combo(), FALSE);
        EXPECT_FALSE(host::ChooseItem(Combo(), 0));
    }});
}

TEST_F(DialogControls, ScrollBarBringsEveryItemIntoView) {
    LONG right = 0;
    LONG bottom = 0;
    const auto first = [&] { return ListObject()->ItemAt({5, 3}); };
    Run({[&] { Tap(Combo()); },
         [&] {
             RECT client{};
             GetClientRect(List(), &client);
             right = client.right - 4;
             bottom = client.bottom - 4;
             Tap(List(), {right, bottom});
         },
         [&] {
             EXPECT_EQ(first(), 1);
             Tap(List(), {right, 4});
         },
         [&] {
             EXPECT_EQ(first(), 0);
             Pen(host::Pen::Down, List(), {right, 25});
             Pen(host::Pen::Move, List(), {right, bottom});
             Pen(host::Pen::Up, List(), {right, bottom});
         },
         [&] {
             EXPECT_EQ(ListObject()->Highlighted(), 1) << "scrolling takes nothing";
             Tap(List(), PointOn(kItems - 1));
         },
         [&] { EXPECT_EQ(Selected(), kItems - 1); }});
}

TEST_F(DialogControls, ParentMayDestroyTheComboInAnyNotification) {
    for (const int code : {CBN_DROPDOWN, CBN_SELENDOK, CBN_CLOSEUP, CBN_SELCHANGE, CBN_SELENDCANCEL}) {
        for (const bool all : {false, true}) {
            onMessage = [&](UINT message, WPARAM wParam, LPARAM lParam, INT_PTR&) {
                if (message == WM_INITDIALOG) FillCombo();
                if (message != WM_COMMAND || HIWORD(wParam) != code) return false;
                DestroyWindow(all ? dialog : reinterpret_cast<HWND>(lParam));
                return true;
            };
            Run({[&] { Tap(Combo()); },
                 [&] {
                     if (List()) Tap(List(), PointOn(0));
                 },
                 [&] {
                     if (IsWindow(Combo())) Tap(Combo());
                 },
                 [&] {
                     if (IsWindow(Combo())) Tap(dialog, {2, 2});
                 }});
            EXPECT_EQ(List(), nullptr) << code;
            EXPECT_EQ(GetCapture(), nullptr) << code;
        }
    }
}

TEST_F(DialogControls, ListThatCannotBeMadeStaysClosed) {
    Run({[&] {
             host::FailCall(host::Call::CreateWindow);
             Tap(Combo());
         },
         [&] {
             EXPECT_FALSE(IsOpen());
             EXPECT_EQ(TakeCommands(), (std::vector<Command>{kDropDown, kCloseUp}));
         }});
}

TEST_F(DialogControls, TextWrapsAtWordsAndInLongWords) {
    const host::FontMetrics metrics(nullptr);
    const int width = metrics.Width(TEXT("two words"));
    using Lines = std::vector<std::u16string_view>;
    EXPECT_EQ(metrics.Wrap(TEXT("two words  more\r\n\nend"), width),
              (Lines{TEXT("two words"), TEXT("more"), TEXT(""), TEXT("end")}));
    EXPECT_EQ(metrics.Wrap(TEXT(""), width), Lines{TEXT("")});
    EXPECT_EQ(metrics.Wrap(TEXT("abc"), 0), (Lines{TEXT("a"), TEXT("b"), TEXT("c")}));
    const std::u16string path = TEXT("a very\\long\\path\\without\\blanks");
    std::u16string joined;
    for (const std::u16string_view line : metrics.Wrap(path, width)) {
        EXPECT_LE(metrics.Width(line), width);
        if (!joined.empty() && joined.size() < 6) joined += TEXT(' ');
        joined += line;
    }
    EXPECT_EQ(joined, path);
}

}  // namespace
