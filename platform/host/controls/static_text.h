// SPDX-License-Identifier: MIT
#pragma once

#include "controls/control.h"

namespace host {

// Text wrapped at the control's width, or a line or frame (WS_BORDER). Passes the pen on to the parent.
class StaticText final : public Control {
public:
    using Control::Control;
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool TakesFocus() const override { return false; }

private:
    void Paint(ControlPainter& painter) override;
    LRESULT PassPenOn(UINT message, WPARAM wParam, LPARAM lParam) const;
};

}  // namespace host
