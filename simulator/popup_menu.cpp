// SPDX-License-Identifier: MIT
#include "popup_menu.h"

#include <sip_layout.h>

#include <algorithm>
#include <utility>

#include "scale.h"

namespace {

constexpr UINT kTextFormat = DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX;
// In pixels, before scaling.
constexpr int kFontHeight = 12;
constexpr int kItemHeight = 19;
constexpr int kLineHeight = 5;
constexpr int kBulletWidth = 16;
constexpr int kRightMargin = 12;

}  // namespace

PopupMenu::PopupMenu(HWND owner) : m_owner(owner) {
    Create(TEXT("SimulatorMenu"), WS_POPUP, {}, owner, WS_EX_TOPMOST);
}

void PopupMenu::Open(std::vector<MenuItem> items, POINT corner, Side side) {
    m_items = std::move(items);
    m_highlighted.reset();
    m_screen = ScreenSize();
    SetFont(Scaled(m_screen, kFontHeight), FW_NORMAL);
    const SIZE size = WantedSize();
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
    if (message == WM_CAPTURECHANGED) return Hide(), 0;
    return BoundWindow::OnMessage(message, wParam, lParam);
}

// Keeps the capture until the pen is lifted, so that the stroke that closed the menu reaches no other window.
void PopupMenu::OnPenDown(POINT point) {
    const RECT area = ClientArea();
    if (!PtInRect(&area, point)) return Hide();
    OnPenMove(point);
}

void PopupMenu::OnPenMove(POINT point) {
    const std::optional<std::size_t> item = ItemAt(point);
    if (item == m_highlighted) return;
    m_highlighted = item;
    Invalidate();
}

// If the pen that opened the menu is lifted on the bar, the menu stays open.
void PopupMenu::OnPenUp(POINT) {
    if (m_open && m_highlighted) {
        PostMessageW(m_owner, WM_COMMAND, m_items[*m_highlighted].id, 0);
        return Close();
    }
    if (!m_open) ReleaseCapture();
}

SIZE PopupMenu::WantedSize() const {
    SIZE size{0, 2};
    for (const MenuItem& item : m_items) {
        size.cx = std::max(size.cx, Measure(item.text).cx);
        size.cy += HeightOf(item);
    }
    size.cx += Scaled(m_screen, kBulletWidth) + Scaled(m_screen, kRightMargin);
    size.cx = std::min(size.cx, m_screen.cx);
    return size;
}

int PopupMenu::HeightOf(const MenuItem& item) const {
    return Scaled(m_screen, item.text.empty() ? kLineHeight : kItemHeight);
}

std::optional<std::size_t> PopupMenu::ItemAt(POINT point) const {
    const RECT area = ClientArea();
    if (!PtInRect(&area, point)) return std::nullopt;
    LONG bottom = 1;
    for (std::size_t i = 0; i < m_items.size(); ++i) {
        bottom += HeightOf(m_items[i]);
        if (point.y >= bottom) continue;
        const bool usable = m_items[i].enabled && m_items[i].id != 0;
        return usable ? std::optional(i) : std::nullopt;
    }
    return std::nullopt;
}

void PopupMenu::Draw(HDC dc) {
    const RECT area = ClientArea();
    FillArea(dc, area, GetSysColor(COLOR_WINDOW));
    DrawFrame(dc, area, GetSysColor(COLOR_WINDOWFRAME));
    LONG top = 1;
    for (std::size_t i = 0; i < m_items.size(); ++i) {
        const RECT place{1, top, area.right - 1, top + HeightOf(m_items[i])};
        DrawItem(dc, m_items[i], place, m_highlighted == i);
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
    RECT bullet{place.left, place.top, place.left + Scaled(m_screen, kBulletWidth), place.bottom};
    if (item.bulleted) DrawTextW(dc, TEXT("\u2022"), 1, &bullet, kTextFormat | DT_CENTER);
    RECT text{bullet.right, place.top, place.right, place.bottom};
    DrawTextW(dc, item.text.c_str(), static_cast<int>(item.text.size()), &text, kTextFormat);
}
