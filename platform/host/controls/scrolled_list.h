// SPDX-License-Identifier: MIT
#pragma once

#include "controls/control.h"
#include "controls/scroll.h"

namespace host {

class FontMetrics;

// A list of lines of equal height with a scroll bar if they need one: its look and the pen. Derived classes
// define the lines, and the effect of choosing one.
class ScrolledList : public Control {
public:
    using Control::Control;
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    int Marked() const { return m_marked; }  // -1: none
    // Scrolls the item into view and redraws the list; -1 for none.
    void Mark(int item);
    // -1 if there is no item or it is not visible.
    int ItemAt(POINT clientPoint) const { return Rows().ItemAt(clientPoint); }

protected:
    // In units of the font's thin line: around the text of a line, and around all lines.
    struct Look {
        int padding;
        int frame;
    };
    static int ItemHeight(const FontMetrics& metrics, Look look);

    virtual Look GetLook() const = 0;
    virtual int Count() const = 0;
    virtual void PaintItem(ControlPainter& painter, int item, const RECT& line) const = 0;
    // Does a dragged pen touch the items that it passes?
    virtual bool FollowsPen() const { return true; }
    // The pen went down on this item, or was dragged to it; -1 for none.
    virtual void Touch(int item) = 0;
    // The pen was lifted over this item after a stroke that began over an item.
    virtual void Take(int item) = 0;

    void Paint(ControlPainter& painter) override;
    ItemRows Rows() const;
    // Shows the beginning of the list without a marked item, and ends a stroke of the pen.
    void Reset();

private:
    enum class Tracking { None, Items, Thumb };

    void OnPenDown(POINT point);
    void OnPenMove(POINT point);
    void OnPenUp(POINT point);
    void ScrollTo(int firstItem);

    int m_marked = -1;
    int m_first = 0;  // topmost item shown
    Tracking m_tracking = Tracking::None;
    LONG m_grip = 0;  // from the thumb's top to the pen
};

}  // namespace host
