// SPDX-License-Identifier: MIT
// What somebody probably meant who misspelt a name. Lists of names have commas between them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tlk {

// Of names that are near, the nearest; nothing when none is.
[[nodiscard]] std::optional<std::string> FindNearest(std::string_view name, std::string_view known);

// The end of a message: "did you mean 'size'?" or, when nothing is near, "use file, size, words".
[[nodiscard]] std::string Advise(std::string_view name, std::string_view known);

}  // namespace tlk
