// SPDX-License-Identifier: MIT
#pragma once

#include "controls/control.h"
#include "controls/scroll.h"

namespace host {

class ComboBox;
class FontMetrics;

// The list of a combo box: a window above the dialog, which may extend beyond it. It shows the combo box's
// items and reports the one that the pen chooses; the focus stays with the combo box.
class DropDownList final : public SystemWindow {
public:
    // The creation parameter.
    struct Setup {
        HWND combo = nullptr;
        HFONT font = nullptr;
        int highlight = -1;
    };

    using SystemWindow::SystemWindow;
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    static int ItemHeight(const FontMetrics& metrics);
    int Highlighted() const { return m_highlight; }
    // Scrolls the item into view and redraws the list; -1 for none.
    void Highlight(int item);
    // -1 if there is no item or it is not visible.
    int ItemAt(POINT clientPoint) const;

private:
    enum class Tracking { None, Items, Thumb };

    void Paint();
    void OnPenDown(POINT point);
    void OnPenMove(POINT point);
    void OnPenUp(POINT point);
    void ScrollTo(int firstItem);
    int ItemCount() const;
    ItemRows Rows() const;

    Setup m_setup;
    int m_itemHeight = 1;
    int m_frame = 1;
    int m_first = 0;  // topmost item shown
    int m_highlight = -1;
    Tracking m_tracking = Tracking::None;
    LONG m_grip = 0;  // from the thumb's top to the pen
};

}  // namespace host
