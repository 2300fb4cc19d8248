// SPDX-License-Identifier: MIT
// The keyboards of a skin, and their size on a screen.
#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

#include "grid.h"

namespace tlk {

enum class BoardKind { Portrait, Landscape, Digits };
inline constexpr BoardKind kBoards[] = {BoardKind::Portrait, BoardKind::Landscape, BoardKind::Digits};

// The name in sources, on the command line and in remarks: "portrait", "landscape", "digits".
[[nodiscard]] std::string_view BoardName(BoardKind board);

// The size in pixels of a keyboard on this screen, as the SIP gives it: the full width, and a quarter of an
// upright screen's height or a third of a turned one's. The digit keyboard has one picture for both
// orientations, as wide and as high as the larger panel; each panel shows a part of it.
[[nodiscard]] Size PanelSize(BoardKind board, Size upright);

// The intersection of both sizes.
[[nodiscard]] inline Size Clip(Size a, Size b) {
    return {std::min(a.width, b.width), std::min(a.height, b.height)};
}

// Parses "240x320", in pixels; nothing for any other text, and for screens that no device has.
[[nodiscard]] std::optional<Size> ParseScreen(std::string_view text);
// The reverse, for any size.
[[nodiscard]] std::string Text(Size size);

}  // namespace tlk
