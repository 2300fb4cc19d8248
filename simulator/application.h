// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "bound_window.h"
#include "edit_field.h"
#include "menu_bar.h"
#include "popup_menu.h"

// The actions of the menu bar's keyboard button.
class KeyboardSwitch {
public:
    virtual ~KeyboardSwitch() = default;
    // Called when the button is tapped.
    virtual void ToggleKeyboard() = 0;
    // The menu of the arrow beside it; its identifiers begin at kFirstKeyboardCommand.
    virtual std::vector<MenuItem> MenuItems() = 0;
    virtual void ChooseKeyboardItem(UINT id) = 0;
};
constexpr UINT kFirstKeyboardCommand = 1000;

// The application that receives the keys: a full-screen window with a title bar, an edit field and a menu
// bar.
class Application final : public BoundWindow {
public:
    // `keyboard` must outlive the application.
    explicit Application(KeyboardSwitch& keyboard);

    // Fills the present screen; the edit field gets the part that the SIP leaves free.
    void LayOut(const RECT& visibleDesktop);
    // The text of the edit field if it has the focus, else empty.
    std::u16string FocusedText() const;
    // The text of the edit field, whether it has the focus or not.
    const std::u16string& Text() const { return m_edit->Text(); }
    void SetText(std::u16string text) { m_edit->SetText(std::move(text)); }
    // Sets the time of day in the title bar.
    void SetTime(const std::u16string& time);
    void SetKeyboardPicture(host::Picture picture) { m_bar->SetPicture(std::move(picture)); }
    // A disabled menu bar passes the pen on to the window below.
    void EnableBar(BOOL enable) { EnableWindow(m_bar->Handle(), enable); }

private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnCommand(UINT id);
    void Draw(HDC dc) override;
    void OpenMenu(UINT id, std::vector<MenuItem> items, PopupMenu::Side side);
    std::vector<MenuItem> EditMenu() const;
    RECT TitleBar() const;

    KeyboardSwitch& m_keyboard;
    SIZE m_screen{};
    RECT m_visibleDesktop{};
    std::u16string m_time;
    std::unique_ptr<EditField> m_edit;
    std::unique_ptr<MenuBar> m_bar;
    std::unique_ptr<PopupMenu> m_menu;
};
