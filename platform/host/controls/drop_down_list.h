// SPDX-License-Identifier: MIT
#pragma once

#include "controls/scrolled_list.h"

namespace host {

// The list of a combo box: a window above the dialog, which may extend beyond it. It shows the combo box's
// items and reports the one that the pen chooses; the focus stays with the combo box. A pen lifted outside
// the items selects nothing, and the list stays open.
class DropDownList final : public ScrolledList {
public:
    using ScrolledList::ScrolledList;

    static int ItemHeight(const FontMetrics& metrics) { return ScrolledList::ItemHeight(metrics, kLook); }
    // Set it before the list is shown.
    void SetCombo(HWND combo) { m_combo = combo; }

private:
    static constexpr Look kLook{.padding = 2, .frame = 1};  // enough for a pen

    Look GetLook() const override { return kLook; }
    int Count() const override;
    void PaintItem(ControlPainter& painter, int item, const RECT& line) const override;
    void Touch(int item) override;
    void Take(int item) override;

    HWND m_combo = nullptr;
};

}  // namespace host
