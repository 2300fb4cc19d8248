// SPDX-License-Identifier: MIT
#pragma once

#include "grid.h"

namespace tlk {

enum class Icon { Shift, ShiftFilled, Backspace, Delete, Enter, Space, Tab, Left, Up, Right, Down };

// Ink is 1.
[[nodiscard]] Mask DrawIcon(Icon icon);

}  // namespace tlk
