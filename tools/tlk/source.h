// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "errors.h"
#include "skin.h"

namespace tlk {

// Reads a skin's TOML text for one of its screens; an empty screen means the first. `path` is that of the
// text, for messages and relative paths. Throws SourceError.
[[nodiscard]] Skin ReadSource(std::string_view text, const std::string& path = {},
                              std::string_view screen = {});

// The same, but adds faults to the list. The skin then lacks the faulty parts; it can be drawn if its
// portrait keyboard has rows.
[[nodiscard]] Skin ReadSource(std::string_view text, const std::string& path, std::string_view screen,
                              FaultList& faults);

}  // namespace tlk
