// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "errors.h"
#include "skin.h"

namespace tlk {

// Reads a skin's TOML text for one of the screens that it lists; an empty screen is the first of them.
// `path` is the text's own, for messages and for the files that it names. Throws SourceError.
[[nodiscard]] Skin ReadSource(std::string_view text, const std::string& path = {},
                              std::string_view screen = {});

// The same, with what is wrong added to the list. The skin then lacks it; it can be drawn as long as its
// portrait keyboard has rows.
[[nodiscard]] Skin ReadSource(std::string_view text, const std::string& path, std::string_view screen,
                              FaultList& faults);

}  // namespace tlk
