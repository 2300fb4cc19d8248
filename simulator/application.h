// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "bound_window.h"
#include "edit_field.h"
#include "menu_bar.h"
#include "popup_menu.h"

// What the keyboard button of the menu bar stands for.
class KeyboardSwitch {
public:
    virtual ~KeyboardSwitch() = default;
    // The button was tapped.
    virtual void ToggleKeyboard() = 0;
    // The menu of the arrow beside it; identifiers from firstKeyboardCommand on.
    virtual std::vector<MenuItem> MenuItems() = 0;
    virtual void ChooseKeyboardItem(UINT id) = 0;
};
constexpr UINT firstKeyboardCommand = 1000;

// The application that the keys go to: a full-screen window with a title bar, an edit field and a menu bar.
class Application final : public BoundWindow {
public:
    // The switch outlives the application.
    explicit Application(KeyboardSwitch& keyboard);
    ~Application() override;

    // Takes the whole of the present screen; the edit field takes what the SIP leaves of it.
    void LayOut(const RECT& visibleDesktop);
    // What the focused edit field holds; empty when the focus is elsewhere.
    std::u16string FocusedText() const;
    // Of the edit field, wherever the focus is.
    const std::u16string& Text() const { return m_edit->Text(); }
    void SetText(std::u16string text) { m_edit->SetText(std::move(text)); }
    // The time of day in the title bar.
    void SetTime(const std::u16string& time);
    void SetKeyboardPicture(host::Picture picture) { m_bar->SetPicture(std::move(picture)); }
    // The pen falls through a menu bar that is not enabled.
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
