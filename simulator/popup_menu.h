// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "bound_window.h"

struct MenuItem {
    UINT id = 0;          // sent to the owner; 0 for a line between groups
    std::u16string text;  // empty for a line
    bool enabled = true;
    bool bulleted = false;  // the current one of several
};

// A menu that opens upwards from the menu bar, above all windows, even the SIP. It captures the pen while it
// is open: tapping an item, or dragging the pen to it from the bar, posts WM_COMMAND with its identifier to
// the owner; a pen-down elsewhere only closes the menu.
class PopupMenu final : public BoundWindow {
public:
    explicit PopupMenu(HWND owner);

    enum class Side { Left, Right };
    // The bottom corner on this side is at the point. The pen that opens the menu is still down.
    void Open(std::vector<MenuItem> items, POINT corner, Side side);
    void Close();
    bool IsOpen() const { return m_open; }

private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnPenDown(POINT point) override;
    void OnPenMove(POINT point) override;
    void OnPenUp(POINT point) override;
    void Draw(HDC dc) override;
    void DrawItem(HDC dc, const MenuItem& item, const RECT& place, bool highlighted);
    void Hide();
    SIZE WantedSize() const;
    int HeightOf(const MenuItem& item) const;
    // The enabled item at this point of the client area.
    std::optional<std::size_t> ItemAt(POINT point) const;

    HWND m_owner;
    SIZE m_screen{};
    std::vector<MenuItem> m_items;
    std::optional<std::size_t> m_highlighted;
    bool m_open = false;
};
