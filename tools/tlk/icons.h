// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "grid.h"

namespace tlk {

enum class Icon { Shift, Caps, CapsFilled, Backspace, Delete, Enter, Space, Tab, Left, Up, Right, Down };

// Ink is 1. The size matches characters with capitals of this height.
[[nodiscard]] Mask DrawIcon(Icon icon, int capHeight);

// Nothing if there is no such icon.
[[nodiscard]] std::optional<Icon> FindIcon(std::string_view name);
[[nodiscard]] std::string IconNames();

}  // namespace tlk
