// SPDX-License-Identifier: MIT
#include "controls/box.h"

#include <utility>

#include "controls/painter.h"

namespace host {

int BoxFonts::CaptionHeight() const {
    constexpr int kPadding = 3;
    const FontMetrics metrics(Caption());
    return metrics.LineHeight() + 2 * kPadding * metrics.Unit();
}

void PaintBox(ControlPainter& painter, std::u16string_view title, int captionHeight, int margin) {
    const RECT& area = painter.Client();
    const RECT caption{area.left, area.top, area.right, captionHeight};
    painter.Fill(caption, COLOR_ACTIVECAPTION);
    painter.Line(title, {caption.left + margin, caption.top, caption.right - margin, caption.bottom},
                 DT_LEFT | DT_VCENTER, COLOR_CAPTIONTEXT);
    painter.Frame(area, COLOR_WINDOWFRAME);
}

ControlTemplate MakeControl(WORD id, ATOM atom, std::u16string text, DWORD style, const Placement& place) {
    ControlTemplate control;
    control.style = WS_CHILD | WS_VISIBLE | style;
    control.place = place;
    control.id = id;
    control.classAtom = atom;
    control.text = std::move(text);
    return control;
}

void AddButtons(DialogTemplate& layout, int count, Placement place, int gap) {
    constexpr DWORD kDefault = WS_TABSTOP | WS_GROUP | BS_DEFPUSHBUTTON;
    layout.controls.push_back(MakeControl(IDOK, kButtonAtom, u"OK", kDefault, place));
    place.x += place.width + gap;
    if (count < 2) return;
    layout.controls.push_back(
        MakeControl(IDCANCEL, kButtonAtom, u"Cancel", WS_TABSTOP | BS_PUSHBUTTON, place));
}

}  // namespace host
