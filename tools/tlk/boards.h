// SPDX-License-Identifier: MIT
// The keyboards that a skin has, and the room that a screen leaves them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "grid.h"

namespace tlk {

enum class BoardKind { Portrait, Landscape, Digits };

// As sources, the command line and the remarks name them: "portrait", "landscape", "digits".
[[nodiscard]] std::string_view BoardName(BoardKind board);

// What the SIP gives a keyboard on a screen of this size, in pixels: the full width, and a quarter of an
// upright screen's height or a third of a turned one's. One picture serves the digit keyboard in both
// orientations: it is as wide and as high as the larger of both panels, each of which shows its part.
[[nodiscard]] Size PanelSize(BoardKind board, Size upright);

// "240x320", in pixels; nothing for any other text, and for screens that no device has.
[[nodiscard]] std::optional<Size> ParseScreen(std::string_view text);
// The same way back, of any size.
[[nodiscard]] std::string Text(Size size);

}  // namespace tlk
