// SPDX-License-Identifier: MIT
#include "dialogs_fixture.h"

namespace {

class MessageBoxes : public test::Dialogs {
protected:
    int Show(HWND owner, UINT type, std::vector<Step> steps, const WCHAR* text = TEXT("Sure?")) {
        Follow(std::move(steps));
        const int result = MessageBoxW(owner, text, TEXT("Caption"), type);
        TakeQuit();
        return result;
    }
    Step TapOn(int id) {
        return [this, id] { Tap(Item(id)); };
    }
    static Step Press(UINT virtualKey) {
        return [virtualKey] { Key(virtualKey); };
    }
};

TEST_F(MessageBoxes, PenAndKeysAnswer) {
    EXPECT_EQ(Show(m_owner, MB_OKCANCEL, {TapOn(IDOK)}), IDOK);
    EXPECT_EQ(Show(m_owner, MB_OKCANCEL, {TapOn(IDCANCEL)}), IDCANCEL);
    EXPECT_EQ(Show(m_owner, MB_OKCANCEL, {Press(VK_RETURN)}), IDOK);
    EXPECT_EQ(Show(m_owner, MB_OKCANCEL, {Press(VK_ESCAPE)}), IDCANCEL);
    EXPECT_EQ(Show(m_owner, MB_OKCANCEL, {Press(VK_TAB), Press(VK_RETURN)}), IDCANCEL);
    EXPECT_EQ(Show(m_owner, MB_OKCANCEL, {Press(VK_RIGHT), Press(VK_SPACE)}), IDCANCEL);
    EXPECT_EQ(Show(nullptr, MB_OK | MB_ICONHAND, {TapOn(IDOK)}), IDOK);
    EXPECT_EQ(Show(m_owner, MB_OK, {Press(VK_ESCAPE)}), IDOK) << "there is nothing else to answer";
    EXPECT_EQ(GetFocus(), m_edit);
    EXPECT_TRUE(IsWindowEnabled(m_owner));
}

TEST_F(MessageBoxes, DriverHearsOfTheCallBeforeTheBoxOpens) {
    std::vector<std::u16string> heard;
    host::SetMessageBoxHandler([&](UINT type, const std::u16string& caption, const std::u16string& text) {
        EXPECT_EQ(host::TopmostModalWindow(), nullptr);
        EXPECT_EQ(type, MB_OK | MB_ICONHAND);
        heard = {caption, text};
    });
    Show(nullptr, MB_OK | MB_ICONHAND, {TapOn(IDOK)});
    EXPECT_EQ(heard, (std::vector<std::u16string>{TEXT("Caption"), TEXT("Sure?")}));
}

TEST_F(MessageBoxes, BoxLiesAbovePanelWithItsButtonsOnTheScreen) {
    const HWND panel = CreateWindowExW(WS_EX_TOPMOST, TEXT("Application"), nullptr, WS_POPUP | WS_VISIBLE, 0,
                                       214, 240, 80, nullptr, nullptr, nullptr, nullptr);
    const auto look = [&] {
        RECT box{};
        GetWindowRect(host::TopmostModalWindow(), &box);
        EXPECT_GE(box.left, 0);
        EXPECT_LE(box.right, 240);
        EXPECT_GE(box.top, 0);
        EXPECT_LE(box.bottom, 214);
        EXPECT_LE(std::abs(box.left - (240 - box.right)), 1);
    };
    Show(m_owner, MB_OKCANCEL, {look, TapOn(IDCANCEL)}, TEXT("Short"));
    Show(m_owner, MB_OK | MB_ICONHAND, {look, TapOn(IDOK)}, TEXT("This skin is not for current resolution"));
    const std::u16string endless(3000, TEXT('x'));
    EXPECT_EQ(Show(m_owner, MB_OK,
                   {[&] {
                        RECT button{};
                        GetWindowRect(Item(IDOK), &button);
                        EXPECT_LE(button.bottom, 320);
                    },
                    Press(VK_RETURN)},
                   endless.c_str()),
              IDOK);
    DestroyWindow(panel);
}

TEST_F(MessageBoxes, WindowsOfTheBoxAreThePlatforms) {
    Show(m_owner, MB_OKCANCEL,
         {[] {
              EXPECT_EQ(host::CountHandles().windows, 2);
              EXPECT_EQ(host::CountHandles().fonts, 0);
          },
          TapOn(IDOK)});
}

TEST_F(MessageBoxes, WhatCannotBeShownReturnsZero) {
    EXPECT_EQ(Show(m_owner, 0x4, {}), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_MSGBOX_STYLE));
    const HWND stale = CreateWindowExW(0, TEXT("Application"), nullptr, WS_POPUP, 0, 0, 1, 1, nullptr,
                                       nullptr, nullptr, nullptr);
    DestroyWindow(stale);
    EXPECT_EQ(Show(stale, MB_OK, {}), 0);
    for (const auto call : {host::Call::MessageBox, host::Call::CreateWindow}) {
        host::FailCall(call);
        EXPECT_EQ(Show(m_owner, MB_OK, {TapOn(IDOK)}), 0);
        EXPECT_TRUE(IsWindowEnabled(m_owner));
        EXPECT_EQ(GetFocus(), m_edit);
    }
    EXPECT_EQ(Show(m_owner, MB_OKCANCEL, {}), IDCANCEL) << "a loop that is told to quit";
}

}  // namespace
