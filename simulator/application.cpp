// SPDX-License-Identifier: MIT
#include "application.h"

#include <sip_layout.h>

#include "scale.h"

namespace {

enum Command : UINT {
    CommandMenuClosed = 0,
    CommandNew = 1,
    CommandEditMenu,
    CommandKeyboard,
    CommandKeyboardMenu,
    FirstEditCommand = 100,
};

// The time stands still while a script runs, so that its pictures are the same in every run.
constexpr char16_t kTimeOfScripts[] = u"12:00";

}  // namespace

Application::Application(KeyboardSwitch& keyboard) : m_keyboard(keyboard), m_time(kTimeOfScripts) {
    const SIZE screen = ScreenSize();
    Create(TEXT("SimulatorApplication"), WS_POPUP | WS_CLIPCHILDREN, {0, 0, screen.cx, screen.cy}, nullptr);
    m_edit = std::make_unique<EditField>(Handle(), RECT{});
    const std::vector<MenuBar::Word> words = {{CommandNew, u"New", MenuBar::Kind::Button},
                                              {CommandEditMenu, u"Edit", MenuBar::Kind::Menu}};
    m_bar = std::make_unique<MenuBar>(Handle(), words, CommandKeyboard, CommandKeyboardMenu);
    m_menu = std::make_unique<PopupMenu>(Handle());
    LayOut({0, BarHeight(screen), screen.cx, screen.cy - BarHeight(screen)});
    ShowWindow(Handle(), SW_SHOW);
    SetFocus(m_edit->Handle());
}

void Application::LayOut(const RECT& visibleDesktop) {
    const SIZE screen = ScreenSize();
    const bool sameScreen = IsSameSize(screen, m_screen);
    if (sameScreen && EqualRect(&visibleDesktop, &m_visibleDesktop)) return;
    m_screen = screen;
    m_visibleDesktop = visibleDesktop;
    if (!sameScreen) {
        m_menu->Close();
        MoveTo({0, 0, screen.cx, screen.cy});
        SetFont(Scaled(screen, 13), FW_BOLD);
        m_edit->SetFontHeight(Scaled(screen, 12));
        m_bar->MoveTo({0, screen.cy - BarHeight(screen), screen.cx, screen.cy});
        m_bar->LayOut(screen);
        Invalidate();
    }
    m_edit->MoveTo(visibleDesktop);
}

std::u16string Application::FocusedText() const {
    return GetFocus() == m_edit->Handle() ? m_edit->Text() : std::u16string();
}

void Application::SetTime(const std::u16string& time) {
    m_time = time;
    const RECT title = TitleBar();
    InvalidateRect(Handle(), &title, FALSE);
}

LRESULT Application::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_COMMAND:
            return OnCommand(LOWORD(wParam)), 0;
        case WM_ENABLE:
            if (!wParam) m_menu->Close();
            return 0;
        default:
            return BoundWindow::OnMessage(message, wParam, lParam);
    }
}

void Application::OnCommand(UINT id) {
    switch (id) {
        case CommandMenuClosed:
            return m_bar->ShowOpenMenu(0);
        case CommandNew:
            return m_edit->Perform(EditCommand::Clear);
        case CommandEditMenu:
            return OpenMenu(id, EditMenu(), PopupMenu::Side::Left);
        case CommandKeyboard:
            return m_keyboard.ToggleKeyboard();
        case CommandKeyboardMenu:
            return OpenMenu(id, m_keyboard.MenuItems(), PopupMenu::Side::Right);
        default:
            if (id >= kFirstKeyboardCommand) return m_keyboard.ChooseKeyboardItem(id);
            m_edit->Perform(static_cast<EditCommand>(id - FirstEditCommand));
    }
}

void Application::OpenMenu(UINT id, std::vector<MenuItem> items, PopupMenu::Side side) {
    const RECT word = m_bar->PlaceOf(id);
    POINT corner{side == PopupMenu::Side::Left ? word.left : word.right, word.top};
    ClientToScreen(m_bar->Handle(), &corner);
    m_menu->Open(std::move(items), corner, side);
    m_bar->ShowOpenMenu(id);
}

std::vector<MenuItem> Application::EditMenu() const {
    const auto item = [this](EditCommand command, const char16_t* text) {
        return MenuItem{FirstEditCommand + static_cast<UINT>(command), text, m_edit->CanPerform(command)};
    };
    return {item(EditCommand::Undo, u"Undo"),
            {},
            item(EditCommand::Cut, u"Cut"),
            item(EditCommand::Copy, u"Copy"),
            item(EditCommand::Paste, u"Paste"),
            {},
            item(EditCommand::SelectAll, u"Select all")};
}

RECT Application::TitleBar() const { return {0, 0, m_screen.cx, BarHeight(m_screen)}; }

void Application::Draw(HDC dc) {
    const RECT title = TitleBar();
    FillArea(dc, ClientArea(), GetSysColor(COLOR_WINDOW));
    FillArea(dc, title, GetSysColor(COLOR_ACTIVECAPTION));
    SetTextColor(dc, GetSysColor(COLOR_CAPTIONTEXT));
    RECT place{Scaled(m_screen, 8), title.top, title.right - Scaled(m_screen, 8), title.bottom};
    constexpr UINT format = DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX;
    DrawTextW(dc, TEXT("Notes"), -1, &place, format | DT_LEFT);
    DrawTextW(dc, m_time.c_str(), -1, &place, format | DT_RIGHT);
}
