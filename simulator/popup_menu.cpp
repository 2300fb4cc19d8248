// SPDX-License-Identifier: MIT
#include "popup_menu.h"

#include <sip_layout.h>

#include <algorithm>
#include <utility>

#include "pen_position.h"
#include "scale.h"

namespace {

constexpr UINT textFormat = DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX;
// Before scaling, in pixels.
constexpr int fontHeight = 12;
constexpr int itemHeight = 19;
constexpr int lineHeight = 5;
constexpr int bulletWidth = 16;
constexpr int rightMargin = 12;

bool Contains(const RECT& area, POINT point) {
    return point.x >= area.left && point.x < area.right && point.y >= area.top && point.y < area.bottom;
}

}  // namespace

PopupMenu::PopupMenu(HWND owner) : m_owner(owner) {
    Create(TEXT("SimulatorMenu"), WS_POPUP, {}, owner, WS_EX_TOPMOST);
}

void PopupMenu::Open(std::vector<MenuItem> items, POINT corner, Side side) {
    m_items = std::move(items);
    m_highlighted.reset();
    m_screen = ScreenSize();
    m_font.Create(Scaled(m_screen, fontHeight), FW_NORMAL);
    const SIZE size = Measure();
    const LONG left =
        std::clamp<LONG>(side == Side::Left ? corner.x : corner.x - size.cx, 0, m_screen.cx - 1);
    MoveTo({left, corner.y - size.cy, left + size.cx, corner.y});
    m_open = true;
    BringWindowToTop(Handle());
    ShowWindow(Handle(), SW_SHOWNOACTIVATE);
    Invalidate();
    SetCapture(Handle());
}

void PopupMenu::Close() {
    Hide();
    if (GetCapture() == Handle()) ReleaseCapture();
}

void PopupMenu::Hide() {
    if (!m_open) return;
    m_open = false;
    ShowWindow(Handle(), SW_HIDE);
    PostMessageW(m_owner, WM_COMMAND, 0, 0);
}

LRESULT PopupMenu::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            return OnPen(PenPosition(lParam), true), 0;
        case WM_MOUSEMOVE:
            return OnPen(PenPosition(lParam), false), 0;
        case WM_LBUTTONUP:
            return OnPenUp(), 0;
        case WM_CAPTURECHANGED:
            return Hide(), 0;
        case WM_PAINT:
            return OnPaint(), 0;
        case WM_ERASEBKGND:
            return 1;
        default:
            return DefWindowProcW(Handle(), message, wParam, lParam);
    }
}

// The capture stays until the pen is lifted, so that the stroke which closed the menu reaches nobody else.
void PopupMenu::OnPen(POINT point, bool down) {
    if (down && !Contains(ClientArea(), point)) return Hide();
    const std::optional<std::size_t> item = ItemAt(point);
    if (item == m_highlighted) return;
    m_highlighted = item;
    Invalidate();
}

// The pen that opened the menu and is lifted on the bar leaves it open.
void PopupMenu::OnPenUp() {
    if (m_open && m_highlighted) {
        PostMessageW(m_owner, WM_COMMAND, m_items[*m_highlighted].id, 0);
        return Close();
    }
    if (!m_open) ReleaseCapture();
}

SIZE PopupMenu::Measure() {
    const WindowContext context(Handle());
    const Selection selection(context.Get(), m_font.Get());
    SIZE size{0, 2};
    for (const MenuItem& item : m_items) {
        SIZE text{};
        GetTextExtentPoint32W(context.Get(), item.text.c_str(), static_cast<int>(item.text.size()), &text);
        size.cx = std::max(size.cx, text.cx);
        size.cy += HeightOf(item);
    }
    size.cx += Scaled(m_screen, bulletWidth) + Scaled(m_screen, rightMargin);
    size.cx = std::min(size.cx, m_screen.cx);
    return size;
}

int PopupMenu::HeightOf(const MenuItem& item) const {
    return Scaled(m_screen, item.text.empty() ? lineHeight : itemHeight);
}

std::optional<std::size_t> PopupMenu::ItemAt(POINT point) const {
    const RECT area = ClientArea();
    if (!Contains(area, point)) return std::nullopt;
    LONG bottom = 1;
    for (std::size_t i = 0; i < m_items.size(); ++i) {
        bottom += HeightOf(m_items[i]);
        if (point.y >= bottom) continue;
        const bool usable = m_items[i].enabled && m_items[i].id != 0;
        return usable ? std::optional(i) : std::nullopt;
    }
    return std::nullopt;
}

void PopupMenu::OnPaint() {
    const PaintCycle paint(Handle());
    if (!paint.Get()) return;
    const RECT area = ClientArea();
    FillArea(paint.Get(), area, GetSysColor(COLOR_WINDOW));
    DrawFrame(paint.Get(), area, GetSysColor(COLOR_WINDOWFRAME));
    const Selection selection(paint.Get(), m_font.Get());
    SetBkMode(paint.Get(), TRANSPARENT);
    LONG top = 1;
    for (std::size_t i = 0; i < m_items.size(); ++i) {
        const RECT place{1, top, area.right - 1, top + HeightOf(m_items[i])};
        DrawItem(paint.Get(), m_items[i], place, m_highlighted == i);
        top = place.bottom;
    }
}

void PopupMenu::DrawItem(HDC dc, const MenuItem& item, const RECT& place, bool highlighted) {
    if (item.text.empty()) {
        const LONG middle = (place.top + place.bottom) / 2;
        FillArea(dc, {place.left, middle, place.right, middle + 1}, GetSysColor(COLOR_GRAYTEXT));
        return;
    }
    if (highlighted) FillArea(dc, place, GetSysColor(COLOR_HIGHLIGHT));
    const int color = !item.enabled ? COLOR_GRAYTEXT : highlighted ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT;
    SetTextColor(dc, GetSysColor(color));
    RECT bullet{place.left, place.top, place.left + Scaled(m_screen, bulletWidth), place.bottom};
    if (item.bulleted) DrawTextW(dc, TEXT("\u2022"), 1, &bullet, textFormat | DT_CENTER);
    RECT text{bullet.right, place.top, place.right, place.bottom};
    DrawTextW(dc, item.text.c_str(), static_cast<int>(item.text.size()), &text, textFormat);
}
