// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "skin.h"

namespace tlk {

// Reads a skin's TOML text. Throws SourceError.
[[nodiscard]] Skin ReadSource(std::string_view text);

}  // namespace tlk
