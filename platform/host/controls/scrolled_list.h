// SPDX-License-Identifier: MIT
#pragma once

#include "controls/control.h"
#include "controls/scroll.h"

namespace host {

class FontMetrics;

// A list of equally high lines with a scroll bar where they need one: how it looks, and what the pen does
// with it. What the lines are, and what becomes of the one that the pen takes, is the derived class's matter.
class ScrolledList : public Control {
public:
    using Control::Control;
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    int Marked() const { return m_marked; }  // -1: none
    // Scrolls the item into view and draws the list anew. -1: none.
    void Mark(int item);
    // -1 where there is none, or where it cannot be seen.
    int ItemAt(POINT clientPoint) const { return Rows().ItemAt(clientPoint); }

protected:
    // In units of the font's thin line: around a line's text, around all lines.
    struct Look {
        int padding;
        int frame;
    };
    static int ItemHeight(const FontMetrics& metrics, Look look);

    virtual Look GetLook() const = 0;
    virtual int Count() const = 0;
    virtual void PaintItem(ControlPainter& painter, int item, const RECT& line) const = 0;
    // Does a stroke that goes on touch what it is dragged to?
    virtual bool FollowsPen() const { return true; }
    // The pen went down on this item, -1 for none, or was dragged to it.
    virtual void Touch(int item) = 0;
    // The pen was lifted over this item, where its stroke began over items too.
    virtual void Take(int item) = 0;

    void Paint(ControlPainter& painter) override;
    ItemRows Rows() const;
    // As Mark for an empty list that shows its beginning; a stroke of the pen ends.
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
