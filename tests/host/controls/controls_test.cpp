// SPDX-License-Identifier: MIT
#include "controls/drop_down_list.h"
#include "controls/fixture.h"
#include "controls/painter.h"

namespace {

using host::Pen;
using test::Commands;

constexpr int kDialog = 0;
constexpr int kCombo = 20;
constexpr int kCheck = 21;
constexpr int kPush = 22;
constexpr int kList = 23;  // the open list, a window of its own
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
        onDialog = [this](UINT message, WPARAM, LPARAM, INT_PTR&) {
            if (message == WM_INITDIALOG) FillCombo();
            return false;
        };
    }

    // Adds "item a", "item b" and so on; selects the second.
    void FillCombo() {
        for (int i = kItems; i-- > 0;) {
            const std::u16string text = std::u16string(TEXT("item ")) + static_cast<char16_t>(TEXT('a') + i);
            Send(kCombo, CB_ADDSTRING, 0, text.c_str());
        }
        Send(kCombo, CB_SETCURSEL, 1);
    }

    HWND Item(int id) const override {
        if (id != kList) return Dialogs::Item(id);
        for (const host::Window* window : host::TopLevelWindows())
            if (window->windowClass->name == TEXT("ComboLBox")) return window->handle;
        return nullptr;
    }
    LRESULT Send(int id, UINT message, WPARAM wParam = 0, const WCHAR* text = nullptr) const {
        return SendMessageW(GetDlgItem(dialog, id), message, wParam, reinterpret_cast<LPARAM>(text));
    }
    LRESULT Selected() const { return Send(kCombo, CB_GETCURSEL); }
    bool IsOpen() const { return Send(kCombo, CB_GETDROPPEDSTATE) != 0; }
    bool IsChecked() const { return Send(kCheck, BM_GETCHECK) == BST_CHECKED; }
    RECT ListClient() const {
        RECT client{};
        GetClientRect(Item(kList), &client);
        return client;
    }
    int ItemAt(LONG y) const {
        return host::FindSystemWindow<host::DropDownList>(Item(kList))->ItemAt({5, y});
    }

    // A pen event on an item of the list, which must be visible; does nothing if there is no list.
    void PenOnItem(host::Pen event, int item) const {
        for (LONG y = 0; y < ListClient().bottom; ++y)
            if (ItemAt(y) == item) return Pen(event, Item(kList), {5, y});
        if (Item(kList)) ADD_FAILURE() << "item " << item << " is not in view";
    }
    Step TapOnItem(int item) const {
        return [this, item] {
            PenOnItem(Pen::Down, item);
            PenOnItem(Pen::Up, item);
        };
    }

    static constexpr test::Command kDropDown{kCombo, CBN_DROPDOWN};
    static constexpr test::Command kCloseUp{kCombo, CBN_CLOSEUP};
    static constexpr test::Command kTaken{kCombo, CBN_SELENDOK};
    static constexpr test::Command kCancelled{kCombo, CBN_SELENDCANCEL};
    static constexpr test::Command kChanged{kCombo, CBN_SELCHANGE};
    static constexpr test::Command kClicked{kCheck, BN_CLICKED};
};

TEST_F(DialogControls, PenPressesAButtonOnlyWhereItWentDown) {
    Run({TapOn(kPush),
         [&] {
             EXPECT_EQ(TakeCommands(), (Commands{{kPush, BN_CLICKED}}));
             EXPECT_EQ(FocusedId(), kPush);
         },
         PenOn(Pen::Down, kPush, {5, 5}), PenOn(Pen::Move, kPush, {5, 50}), PenOn(Pen::Up, kPush, {5, 50}),
         [] { EXPECT_EQ(GetCapture(), nullptr); }, PenOn(Pen::Down, kDialog, {5, 5}),
         PenOn(Pen::Up, kPush, {5, 5}),
         [&] {
             EnableWindow(Item(kPush), FALSE);
             Send(kPush, BM_CLICK);
         },
         TapOn(kPush)});
    EXPECT_TRUE(commands.empty());
}

TEST_F(DialogControls, CheckBoxFollowsPenSpaceBarAndProgram) {
    Run({TapOn(kCheck), [&] { EXPECT_TRUE(IsChecked()); }, Press(VK_SPACE),
         [&] {
             EXPECT_FALSE(IsChecked());
             EXPECT_EQ(TakeCommands(), (Commands{kClicked, kClicked}));
             Send(kCheck, BM_SETCHECK, 7);
             EXPECT_TRUE(IsChecked());
             // A space bar pressed elsewhere does not click here when it is released.
             host::PostKey(VK_SPACE, false);
         },
         [&] {
             EXPECT_TRUE(commands.empty());
             Send(kPush, BM_SETCHECK, BST_CHECKED);
             EXPECT_EQ(Send(kPush, BM_GETCHECK), BST_UNCHECKED);
         }});
}

TEST_F(DialogControls, PenOpensTheListAndChoosesAnItem) {
    Run({TapOn(kCombo),
         [&] {
             EXPECT_TRUE(IsOpen());
             EXPECT_EQ(FocusedId(), kCombo);
             EXPECT_EQ(TakeCommands(), Commands{kDropDown});
         },
         TapOnItem(3),
         [&] {
             EXPECT_FALSE(IsOpen());
             EXPECT_EQ(Item(kList), nullptr);
             EXPECT_EQ(Selected(), 3);
             EXPECT_EQ(TakeCommands(), (Commands{kTaken, kCloseUp, kChanged}));
             WCHAR text[20];
             GetWindowTextW(Item(kCombo), text, 20);
             EXPECT_EQ(std::u16string(text), TEXT("item d"));
         }});
    EXPECT_EQ(host::CountHandles().windows, 2);
}

TEST_F(DialogControls, PenChoosesAnItemInOneStroke) {
    Run({PenOn(Pen::Down, kCombo, {190, 5}), [&] { PenOnItem(Pen::Move, 2); }, [&] { PenOnItem(Pen::Up, 2); },
         [&] {
             EXPECT_EQ(Selected(), 2);
             EXPECT_FALSE(IsOpen());
         }});
}

TEST_F(DialogControls, LeavingTheListClosesItWithoutASelection) {
    const Step ways[] = {TapOn(kDialog, {2, 2}),
                         TapOn(kCombo),
                         TapOn(kPush, {150, 20}),
                         Press(VK_ESCAPE),
                         [&] { SetFocus(Item(kCheck)); },
                         [&] { EnableWindow(Item(kCombo), FALSE); },
                         [&] { Send(kCombo, CB_SHOWDROPDOWN, FALSE); }};
    for (const Step& leave : ways) {
        Run({[&] { Send(kCombo, CB_SHOWDROPDOWN, TRUE); },
             [&] {
                 MoveWindow(Item(kPush), 20, 290, 200, 24, TRUE);
                 SetFocus(Item(kCombo));
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
                 commands.resize(2);
                 EXPECT_EQ(TakeCommands(), (Commands{kCancelled, kCloseUp}));
             }});
    }
}

TEST_F(DialogControls, PanelKeysMoveInTheOpenList) {
    const HWND panel = CreateSip(200);
    Run({TapOn(kCombo),
         [&] {
             RECT place{};
             GetWindowRect(Item(kList), &place);
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
             EXPECT_EQ(TakeCommands(), (Commands{kTaken, kCloseUp, kChanged}));
         }});
}

TEST_F(DialogControls, KeysSelectInTheClosedCombo) {
    Run({Press(VK_DOWN),
         [&] {
             EXPECT_EQ(Selected(), 2);
             EXPECT_EQ(TakeCommands(), (Commands{kTaken, kChanged}));
             for (int i = 0; i < 20; ++i)
                 Key(VK_UP);
         },
         [&] {
             EXPECT_EQ(Selected(), 0);
             EXPECT_EQ(TakeCommands().size(), 4u) << "the end of the list is no change";
             Send(kCombo, CB_ADDSTRING, 0, TEXT("zebra"));
             host::PostCharacter('Z', TEXT('Z'));
         },
         [&] {
             EXPECT_EQ(Selected(), kItems);
             for (const WCHAR character : {TEXT('i'), TEXT('i'), TEXT('x')})
                 host::PostCharacter('I', character);
         },
         [&] { EXPECT_EQ(Selected(), 1); }, Press(VK_SPACE), [&] { EXPECT_TRUE(IsOpen()); }});
}

TEST_F(DialogControls, TheDriverChoosesLikeTheUser) {
    Run({[&] {
        EXPECT_TRUE(host::ChooseItem(Item(kCombo), 2));
        EXPECT_EQ(TakeCommands(), (Commands{kDropDown, kTaken, kCloseUp, kChanged}));
        EXPECT_FALSE(host::ChooseItem(Item(kCombo), kItems));
        EXPECT_FALSE(host::ChooseItem(Item(kPush), 0));
        EnableWindow(Item(kCombo), FALSE);
        EXPECT_FALSE(host::ChooseItem(Item(kCombo), 0));
    }});
}

TEST_F(DialogControls, ScrollBarBringsEveryItemIntoView) {
    // A pen event on the scroll bar, at this distance from the top, or from the bottom if negative.
    const auto bar = [&](host::Pen event, LONG y) {
        return [=, this] {
            const RECT client = ListClient();
            Pen(event, Item(kList), {client.right - 4, y < 0 ? client.bottom + y : y});
        };
    };
    const auto topIs = [&](int item) { return [=, this] { EXPECT_EQ(ItemAt(3), item); }; };
    Run({TapOn(kCombo), bar(Pen::Down, -4), bar(Pen::Up, -4), topIs(1), bar(Pen::Down, 4), bar(Pen::Up, 4),
         topIs(0), bar(Pen::Down, 25), bar(Pen::Move, -4), bar(Pen::Up, -4),
         [&] {
             EXPECT_EQ(host::FindSystemWindow<host::DropDownList>(Item(kList))->Marked(), 1)
                 << "scrolling takes nothing";
         },
         TapOnItem(kItems - 1), [&] { EXPECT_EQ(Selected(), kItems - 1); }});
}

TEST_F(DialogControls, ParentMayDestroyTheComboInAnyNotification) {
    for (const int code : {CBN_DROPDOWN, CBN_SELENDOK, CBN_CLOSEUP, CBN_SELCHANGE, CBN_SELENDCANCEL}) {
        for (const bool all : {false, true}) {
            onDialog = [&](UINT message, WPARAM wParam, LPARAM lParam, INT_PTR&) {
                if (message == WM_INITDIALOG) FillCombo();
                if (message != WM_COMMAND || HIWORD(wParam) != code) return false;
                DestroyWindow(all ? dialog : reinterpret_cast<HWND>(lParam));
                return true;
            };
            Run({TapOn(kCombo), TapOnItem(0), TapOn(kCombo), TapOn(kDialog, {2, 2})});
            EXPECT_EQ(Item(kList), nullptr) << code;
            EXPECT_EQ(GetCapture(), nullptr) << code;
        }
    }
}

TEST_F(DialogControls, AListThatCannotBeCreatedStaysClosed) {
    Run({[&] {
             host::FailCall(host::Call::CreateWindow);
             Tap(Item(kCombo));
         },
         [&] {
             EXPECT_FALSE(IsOpen());
             EXPECT_EQ(TakeCommands(), (Commands{kDropDown, kCloseUp}));
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
