// SPDX-License-Identifier: MIT
#include <windows.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "differences.h"
#include "test_ids.h"
#include "test_support.h"

namespace {

using Text = std::basic_string<WCHAR>;

constexpr WCHAR kParentClass[] = TEXT("Dialogs-Test");

struct Command {
    int id;
    int code;
    bool operator==(const Command&) const = default;
};
std::vector<Command> g_commands;

LRESULT CALLBACK RecordCommands(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_COMMAND) g_commands.push_back({LOWORD(wParam), HIWORD(wParam)});
    return DefWindowProcW(window, message, wParam, lParam);
}

Text TextOf(HWND window) {
    Text text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, WCHAR{0});
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

class Controls : public testing::Test {
protected:
    void SetUp() override {
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = RecordCommands;
        windowClass.lpszClassName = kParentClass;
        ASSERT_NE(RegisterClassW(&windowClass), 0);
        m_parent = CreateWindowExW(0, kParentClass, nullptr, WS_POPUP | WS_VISIBLE, 0, 0, 240, 320, nullptr,
                                   nullptr, nullptr, nullptr);
    }

    void TearDown() override {
        DestroyWindow(m_parent);
        UnregisterClassW(kParentClass, nullptr);
        g_commands.clear();
    }

    HWND Create(LPCWSTR className, DWORD style, int height = 20) {
        return CreateWindowExW(0, className, TEXT("text"), WS_CHILD | WS_VISIBLE | style, 10, 30, 100, height,
                               m_parent, reinterpret_cast<HMENU>(static_cast<UINT_PTR>(5)), nullptr, nullptr);
    }

    HWND m_parent = nullptr;
};

TEST_F(Controls, TextIsCutToTheBuffer) {
    const HWND label = Create(TEXT("Static"), SS_LEFT);
    EXPECT_EQ(TextOf(label), TEXT("text"));
    EXPECT_TRUE(SetWindowTextW(label, TEXT("longer text")));
    EXPECT_EQ(GetWindowTextLengthW(label), 11);
    WCHAR few[7];
    EXPECT_EQ(GetWindowTextW(label, few, 7), 6);
    EXPECT_EQ(Text(few), TEXT("longer"));
    EXPECT_TRUE(SetWindowTextW(label, nullptr));
    EXPECT_EQ(GetWindowTextLengthW(label), 0);
    EXPECT_EQ(GetDlgCtrlID(label), 5);
    EXPECT_EQ(GetDlgItem(m_parent, 5), label);
    EXPECT_EQ(GetDlgItem(m_parent, 6), nullptr);
}

class ComboBoxes : public Controls {
protected:
    void SetUp() override {
        Controls::SetUp();
        constexpr DWORD kStyle = CBS_DROPDOWNLIST | CBS_SORT | CBS_NOINTEGRALHEIGHT | WS_VSCROLL;
        m_combo = Create(TEXT("ComboBox"), kStyle, 90);
        for (const WCHAR* text : {TEXT("beta"), TEXT("Gamma"), TEXT("ALPHA"), TEXT("Beta2"), TEXT("delta")})
            Add(text);
    }

    LRESULT Send(UINT message, int index = 0, LPARAM lParam = 0) {
        return SendMessageW(m_combo, message, static_cast<WPARAM>(index), lParam);
    }
    LRESULT Add(const WCHAR* text) { return Send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text)); }

    std::vector<Text> Items() {
        std::vector<Text> items;
        for (int i = 0; i < Send(CB_GETCOUNT); ++i) {
            Text text(static_cast<std::size_t>(Send(CB_GETLBTEXTLEN, i)) + 1, WCHAR{1});
            EXPECT_EQ(Send(CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text.data())),
                      static_cast<LRESULT>(text.size()) - 1);
            EXPECT_EQ(text.back(), WCHAR{0});
            text.pop_back();
            items.push_back(text);
        }
        return items;
    }

    RECT DroppedRect() {
        RECT rectangle{};
        EXPECT_EQ(Send(CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&rectangle)),
                  test::Either(test::Difference::DroppedRectangle, TRUE, FALSE));
        return rectangle;
    }

    HWND m_combo = nullptr;
};

TEST_F(ComboBoxes, ItemsAreSortedIgnoringCase) {
    EXPECT_EQ(Items(),
              (std::vector<Text>{TEXT("ALPHA"), TEXT("beta"), TEXT("Beta2"), TEXT("delta"), TEXT("Gamma")}));
    EXPECT_EQ(Add(TEXT("charlie")), 3);
    Add(TEXT("beta"));
    EXPECT_EQ(Items()[2], TEXT("beta")) << "the same text may be there twice";
}

TEST_F(ComboBoxes, IndicesOutsideTheItemsAreErrors) {
    WCHAR text[20] = {};
    for (const int index : {-1, 5, 0x7FFFFFFF}) {
        EXPECT_EQ(Send(CB_GETLBTEXTLEN, index), CB_ERR);
        EXPECT_EQ(Send(CB_GETLBTEXT, index, reinterpret_cast<LPARAM>(text)), CB_ERR);
        EXPECT_EQ(Send(CB_DELETESTRING, index), CB_ERR);
        EXPECT_EQ(Send(CB_SETCURSEL, index), CB_ERR);
        EXPECT_EQ(Send(CB_GETCURSEL), CB_ERR);
    }
    EXPECT_EQ(Send(CB_GETCOUNT), 5);
}

TEST_F(ComboBoxes, TheSelectionFollowsItsItem) {
    EXPECT_EQ(Send(CB_GETCURSEL), CB_ERR);
    EXPECT_EQ(Send(CB_SETCURSEL, 3), 3);
    EXPECT_EQ(TextOf(m_combo), TEXT("delta"));
    EXPECT_EQ(Send(CB_DELETESTRING, 0), 4);
    EXPECT_EQ(Send(CB_GETCURSEL), 2);
    EXPECT_EQ(TextOf(m_combo), TEXT("delta"));
    EXPECT_EQ(Send(CB_DELETESTRING, 2), 3);
    EXPECT_EQ(Send(CB_GETCURSEL), CB_ERR);
    EXPECT_EQ(TextOf(m_combo), TEXT(""));
    EXPECT_TRUE(g_commands.empty());
}

TEST_F(ComboBoxes, TheGivenHeightIncludesTheList) {
    RECT closed{};
    GetWindowRect(m_combo, &closed);
    const LONG field = closed.bottom - closed.top;
    EXPECT_LT(field, 40);
    const RECT dropped = DroppedRect();
    EXPECT_EQ(dropped.top, closed.top);
    const LONG missing = test::Either(test::Difference::DroppedRectangle, LONG{0}, field);
    EXPECT_EQ(dropped.bottom - dropped.top, 90 - missing);
    MoveWindow(m_combo, 10, 30, 120, 150, TRUE);
    EXPECT_EQ(DroppedRect().bottom - DroppedRect().top, 150 - missing);
    GetWindowRect(m_combo, &closed);
    EXPECT_EQ(closed.bottom - closed.top, field);
    EXPECT_EQ(closed.right - closed.left, 120);
}

class DialogBoxes : public Controls {
protected:
    using Handler = std::function<INT_PTR(HWND, WPARAM, LPARAM)>;

    void SetUp() override {
        Controls::SetUp();
        test::CopyToDevice(TEST_RESOURCES, "resources.dll");
        m_module = LoadLibraryW(TEXT("\\resources.dll"));
        ASSERT_NE(m_module, nullptr);
    }
    void TearDown() override {
        FreeLibrary(m_module);
        Controls::TearDown();
    }

    // Opens the dialog; the handler gets WM_INITDIALOG and must end it.
    INT_PTR Open(int id, const Handler& handler, HWND owner) {
        m_initialise = handler;
        return DialogBoxParamW(m_module, MAKEINTRESOURCEW(id), owner, HandleMessage, 42);
    }

    HMODULE m_module = nullptr;

private:
    static INT_PTR CALLBACK HandleMessage(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
        return message == WM_INITDIALOG ? m_initialise(dialog, wParam, lParam) : FALSE;
    }

    inline static Handler m_initialise;
};

TEST_F(DialogBoxes, ControlsLieInTheOrderOfTheTemplate) {
    std::vector<int> order;
    std::vector<Text> classes;
    const INT_PTR result = Open(
        ID_DIALOG,
        [&](HWND dialog, WPARAM wParam, LPARAM parameter) -> INT_PTR {
            EXPECT_EQ(parameter, 42);
            EXPECT_EQ(TextOf(dialog), TEXT("A dialog"));
            EXPECT_FALSE(IsWindowEnabled(m_parent));
            EXPECT_EQ(GetDlgCtrlID(reinterpret_cast<HWND>(wParam)), 32) << "the first with WS_TABSTOP";
            for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
                order.push_back(GetDlgCtrlID(child));
                WCHAR name[20];
                GetClassNameW(child, name, 20);
                classes.push_back(name);
                EXPECT_EQ(SendMessageW(child, WM_GETFONT, 0, 0), SendMessageW(dialog, WM_GETFONT, 0, 0));
            }
            SetWindowLongPtrW(dialog, DWLP_USER, 7);
            EXPECT_EQ(GetWindowLongPtrW(dialog, DWLP_USER), 7);
            return EndDialog(dialog, 99);
        },
        m_parent);
    EXPECT_EQ(result, 99);
    EXPECT_EQ(order, (std::vector<int>{31, 32, 33, 34}));
    EXPECT_EQ(classes, (std::vector<Text>{TEXT("Static"), TEXT("ComboBox"), TEXT("Button"), TEXT("Button")}));
    EXPECT_TRUE(IsWindowEnabled(m_parent));
}

TEST_F(DialogBoxes, WhatCannotBeOpenedIsAnError) {
    const auto never = [](HWND dialog, WPARAM, LPARAM) -> INT_PTR {
        ADD_FAILURE();
        return EndDialog(dialog, 1);
    };
    EXPECT_EQ(Open(ID_ABSENT_DIALOG, never, m_parent), -1);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_RESOURCE_NAME_NOT_FOUND));
    EXPECT_TRUE(IsWindowEnabled(m_parent));
    const HWND stale = Create(TEXT("Static"), SS_LEFT);
    DestroyWindow(stale);
    EXPECT_EQ(Open(ID_DIALOG, never, stale), 0);
    EXPECT_FALSE(EndDialog(stale, 0));
}

}  // namespace
