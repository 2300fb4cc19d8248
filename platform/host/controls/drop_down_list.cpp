// SPDX-License-Identifier: MIT
#include "controls/drop_down_list.h"

#include "controls/combo_box.h"
#include "controls/painter.h"

namespace host {

int DropDownList::Count() const {
    const auto combo = FindSystemWindow<ComboBox>(m_combo);
    return combo ? static_cast<int>(combo->Items().size()) : 0;
}

void DropDownList::Touch(int item) {
    if (item >= 0) Mark(item);
}

void DropDownList::Take(int item) {
    const auto combo = FindSystemWindow<ComboBox>(m_combo);
    if (combo) combo->Take(item);
}

void DropDownList::PaintItem(ControlPainter& painter, int item, const RECT& line) const {
    const int unit = painter.Metrics().Unit();
    const int padding = kLook.padding * unit;
    const RECT text{line.left + 2 * padding - kLook.frame * unit, line.top + padding, line.right,
                    line.bottom};
    painter.Line(FindSystemWindow<ComboBox>(m_combo)->Items()[static_cast<std::size_t>(item)], text, DT_LEFT,
                 item == Marked() ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT);
}

}  // namespace host
