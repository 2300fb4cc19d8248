// SPDX-License-Identifier: MIT
// The common part of the layer's own dialogs, the message box and the open-file dialog: fonts, a caption bar
// and buttons.
#pragma once

#include <string>

#include "controls/dialog.h"

namespace host {

class ControlPainter;

// In units of the font's thin line.
inline constexpr int kButtonWidth = 62;
inline constexpr int kButtonHeight = 24;

class BoxFonts {
public:
    HFONT Text() const { return m_text.Get(); }
    HFONT Caption() const { return m_caption.Get(); }
    int CaptionHeight() const;  // of the bar, in pixels

private:
    static constexpr int kPoints = 8;

    PointFont m_text{kPoints, u"System", FW_NORMAL};
    PointFont m_caption{kPoints, u"System", FW_BOLD};
};

// Paints the caption bar and the frame around the dialog. The painter has the caption's font; sizes are in
// pixels.
void PaintBox(ControlPainter& painter, std::u16string_view title, int captionHeight, int margin);

ControlTemplate MakeControl(WORD id, ATOM atom, std::u16string text, DWORD style, const Placement& place);
// "OK" at this place, the default button, and for a count of 2 "Cancel" after the gap.
void AddButtons(DialogTemplate& layout, int count, Placement place, int gap);

}  // namespace host
