// SPDX-License-Identifier: MIT
#include "menu_bar.h"

#include <algorithm>
#include <utility>

#include "scale.h"

namespace {

// In pixels, before scaling.
constexpr int kFontHeight = 12;
constexpr int kWordMargin = 8;
constexpr int kArrowWidth = 15;
constexpr int kPictureSize = 16;
constexpr int kPictureMargin = 4;

}  // namespace

MenuBar::MenuBar(HWND parent, std::vector<Word> words, UINT keyboardButton, UINT keyboardArrow) {
    for (Word& word : words)
        m_parts.push_back({word.id, word.kind, Look::Word, std::move(word.text), {}});
    m_parts.push_back({keyboardButton, Kind::Button, Look::Picture, {}, {}});
    m_parts.push_back({keyboardArrow, Kind::Menu, Look::Arrow, {}, {}});
    Create(TEXT("SimulatorMenuBar"), WS_CHILD | WS_VISIBLE, {}, parent);
}

void MenuBar::LayOut(SIZE screen) {
    m_screen = screen;
    SetFont(Scaled(screen, kFontHeight), FW_NORMAL);
    const RECT area = ClientArea();
    const LONG arrowLeft = area.right - Scaled(screen, kArrowWidth);
    const LONG pictureLeft =
        arrowLeft - kPictureSize * PictureScale(screen) - 2 * Scaled(screen, kPictureMargin);
    LONG left = 0;
    for (Part& part : m_parts) {
        if (part.look == Look::Picture) {
            part.place = {pictureLeft, 1, arrowLeft, area.bottom};
        } else if (part.look == Look::Arrow) {
            part.place = {arrowLeft, 1, area.right, area.bottom};
        } else {
            const LONG width = Measure(part.text).cx + 2 * Scaled(screen, kWordMargin);
            part.place = {left, 1, left + width, area.bottom};
            left = part.place.right;
        }
    }
    Invalidate();
}

void MenuBar::SetPicture(host::Picture picture) {
    m_picture = std::move(picture);
    Invalidate();
}

void MenuBar::ShowOpenMenu(UINT id) {
    if (m_openMenu == id) return;
    m_openMenu = id;
    Invalidate();
}

RECT MenuBar::PlaceOf(UINT id) const {
    const auto part =
        std::find_if(m_parts.begin(), m_parts.end(), [id](const Part& one) { return one.id == id; });
    return part == m_parts.end() ? RECT{} : part->place;
}

const MenuBar::Part* MenuBar::PartAt(POINT point) const {
    const auto part = std::find_if(m_parts.begin(), m_parts.end(),
                                   [point](const Part& one) { return PtInRect(&one.place, point); });
    return part == m_parts.end() ? nullptr : &*part;
}

LRESULT MenuBar::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_CAPTURECHANGED) return BoundWindow::OnMessage(message, wParam, lParam);
    m_held = m_pressed = 0;
    Invalidate();
    return 0;
}

void MenuBar::OnPenDown(POINT point) {
    const Part* part = PartAt(point);
    if (!part) return;
    if (part->kind == Kind::Menu) {
        SendMessageW(GetParent(Handle()), WM_COMMAND, part->id, 0);
        return;
    }
    m_held = m_pressed = part->id;
    SetCapture(Handle());
    Invalidate();
}

void MenuBar::OnPenMove(POINT point) {
    if (m_held == 0) return;
    const Part* part = PartAt(point);
    const UINT pressed = part && part->id == m_held ? m_held : 0;
    if (pressed == m_pressed) return;
    m_pressed = pressed;
    Invalidate();
}

void MenuBar::OnPenUp(POINT point) {
    OnPenMove(point);
    const UINT chosen = m_pressed;
    if (m_held != 0) ReleaseCapture();
    if (chosen != 0) PostMessageW(GetParent(Handle()), WM_COMMAND, chosen, 0);
}

void MenuBar::Draw(HDC dc) {
    const RECT area = ClientArea();
    FillArea(dc, area, GetSysColor(COLOR_BTNFACE));
    FillArea(dc, {0, 0, area.right, 1}, GetSysColor(COLOR_GRAYTEXT));
    for (const Part& part : m_parts)
        DrawPart(dc, part);
}

void MenuBar::DrawPart(HDC dc, const Part& part) {
    const bool pressed = part.id == m_pressed || part.id == m_openMenu;
    switch (part.look) {
        case Look::Word:
            return DrawWord(dc, part, pressed);
        case Look::Picture:
            return DrawKeyboard(dc, part, pressed);
        case Look::Arrow:
            return DrawArrow(dc, part, pressed);
    }
}

void MenuBar::DrawWord(HDC dc, const Part& part, bool pressed) {
    if (pressed) FillArea(dc, part.place, GetSysColor(COLOR_HIGHLIGHT));
    SetTextColor(dc, GetSysColor(pressed ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
    RECT place = part.place;
    DrawTextW(dc, part.text.c_str(), static_cast<int>(part.text.size()), &place,
              DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
}

// Input methods draw their picture in the colour of caption text, so it needs the caption's background.
void MenuBar::DrawKeyboard(HDC dc, const Part& part, bool pressed) {
    const COLORREF background = GetSysColor(pressed ? COLOR_WINDOWFRAME : COLOR_ACTIVECAPTION);
    FillArea(dc, part.place, background);
    const int scale = PictureScale(m_screen);
    const POINT corner{(part.place.left + part.place.right - m_picture.width * scale) / 2,
                       (part.place.top + part.place.bottom - m_picture.height * scale) / 2};
    DrawPicture(dc, corner, m_picture, scale, background);
}

// A triangle that points towards the menu.
void MenuBar::DrawArrow(HDC dc, const Part& part, bool pressed) {
    if (pressed) FillArea(dc, part.place, GetSysColor(COLOR_HIGHLIGHT));
    const COLORREF color = GetSysColor(pressed ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT);
    const LONG middle = (part.place.left + part.place.right) / 2;
    const LONG height = Scaled(m_screen, 4);
    const LONG top = (part.place.top + part.place.bottom - height) / 2;
    for (LONG row = 0; row < height; ++row)
        FillArea(dc, {middle - row, top + row, middle + row + 1, top + row + 1}, color);
}
