// SPDX-License-Identifier: MIT
#pragma once

#include "controls/control.h"

namespace host {

// A push button, or a check box that toggles itself. The pen, the space bar and BM_CLICK press it.
class Button final : public Control {
public:
    using Control::Control;
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool IsPushButton() const override { return !IsCheckBox(); }
    bool IsDefault() const;

private:
    void Paint(ControlPainter& painter) override;
    void PaintPushButton(ControlPainter& painter) const;
    void PaintCheckBox(ControlPainter& painter) const;
    bool IsCheckBox() const;
    void OnPenDown(POINT point);
    void OnPenUp(POINT point);
    void Press(bool pressed);
    // Toggles a check box and notifies the parent. The button may be gone afterwards.
    void Click();
    void SetCheck(bool checked);

    bool m_checked = false;
    bool m_pressed = false;   // drawn pressed
    bool m_tracking = false;  // the pen went down here
};

}  // namespace host
