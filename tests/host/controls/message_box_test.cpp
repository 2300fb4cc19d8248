// SPDX-License-Identifier: MIT
#include <cstdlib>

#include "controls/fixture.h"

namespace {

class MessageBoxes : public test::Dialogs {
protected:
    int Show(HWND owner, UINT type, std::vector<Step> steps, const std::u16string& text = TEXT("Sure?")) {
        Follow(std::move(steps));
        const int result = MessageBoxW(owner, text.c_str(), TEXT("Caption"), type);
        TakeQuit();
        return result;
    }
    void ExpectAllAsBefore() const {
        EXPECT_EQ(GetFocus(), m_edit);
        EXPECT_TRUE(IsWindowEnabled(m_desktop));
    }
};

TEST_F(MessageBoxes, PenAndKeysAnswer) {
    EXPECT_EQ(Show(m_desktop, MB_OKCANCEL, {TapOn(IDOK)}), IDOK);
    EXPECT_EQ(Show(m_desktop, MB_OKCANCEL, {TapOn(IDCANCEL)}), IDCANCEL);
    EXPECT_EQ(Show(m_desktop, MB_OKCANCEL, {Press(VK_RETURN)}), IDOK);
    EXPECT_EQ(Show(m_desktop, MB_OKCANCEL, {Press(VK_ESCAPE)}), IDCANCEL);
    EXPECT_EQ(Show(m_desktop, MB_OKCANCEL, {Press(VK_TAB), Press(VK_RETURN)}), IDCANCEL);
    EXPECT_EQ(Show(m_desktop, MB_OKCANCEL, {Press(VK_RIGHT), Press(VK_SPACE)}), IDCANCEL);
    EXPECT_EQ(Show(nullptr, MB_OK | MB_ICONHAND, {TapOn(IDOK)}), IDOK);
    EXPECT_EQ(Show(m_desktop, MB_OK, {Press(VK_ESCAPE)}), IDOK) << "there is nothing else to answer";
    ExpectAllAsBefore();
}

TEST_F(MessageBoxes, TheDriverIsToldBeforeTheBoxOpens) {
    std::vector<std::u16string> heard;
    host::SetMessageBoxHandler([&](UINT type, const std::u16string& caption, const std::u16string& text) {
        EXPECT_EQ(host::TopmostModalWindow(), nullptr);
        EXPECT_EQ(type, MB_OK | MB_ICONHAND);
        heard = {caption, text};
    });
    Show(nullptr, MB_OK | MB_ICONHAND, {TapOn(IDOK)});
    EXPECT_EQ(heard, (std::vector<std::u16string>{TEXT("Caption"), TEXT("Sure?")}));
}

TEST_F(MessageBoxes, BoxIsAboveThePanelWithItsButtonsOnTheScreen) {
    CreateSip(214);
    const auto look = [&] {
        RECT box{};
        GetWindowRect(Item(0), &box);
        EXPECT_GE(box.left, 0);
        EXPECT_LE(box.right, 240);
        EXPECT_GE(box.top, 0);
        EXPECT_LE(box.bottom, 214);
        EXPECT_LE(std::abs(box.left - (240 - box.right)), 1);
    };
    Show(m_desktop, MB_OKCANCEL, {look, TapOn(IDCANCEL)}, TEXT("Short"));
    Show(m_desktop, MB_OK, {look, TapOn(IDOK)}, TEXT("This skin is not for current resolution"));
    const auto lookAtButton = [&] {
        RECT button{};
        GetWindowRect(Item(IDOK), &button);
        EXPECT_LE(button.bottom, 320);
    };
    EXPECT_EQ(Show(m_desktop, MB_OK, {lookAtButton, Press(VK_RETURN)}, std::u16string(3000, TEXT('x'))),
              IDOK);
}

TEST_F(MessageBoxes, WindowsOfTheBoxBelongToThePlatform) {
    const auto look = [] {
        EXPECT_EQ(host::CountHandles().windows, 2);
        EXPECT_EQ(host::CountHandles().fonts, 0);
    };
    Show(m_desktop, MB_OKCANCEL, {look, TapOn(IDOK)});
}

TEST_F(MessageBoxes, ABoxThatCannotBeShownReturnsZero) {
    EXPECT_EQ(Show(m_desktop, 0x4, {}), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_MSGBOX_STYLE));
    const HWND stale = Create({0, 0, 1, 1});
    DestroyWindow(stale);
    EXPECT_EQ(Show(stale, MB_OK, {}), 0);
    for (const auto call : {host::Call::MessageBox, host::Call::CreateWindow}) {
        host::FailCall(call);
        EXPECT_EQ(Show(m_desktop, MB_OK, {TapOn(IDOK)}), 0);
        ExpectAllAsBefore();
    }
    EXPECT_EQ(Show(m_desktop, MB_OKCANCEL, {}), IDCANCEL) << "a loop that is told to quit";
}

}  // namespace
