// SPDX-License-Identifier: MIT
// Suggestions for misspelt names. Lists of names are separated by commas.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tlk {

// The most similar name; nothing if none is similar.
[[nodiscard]] std::optional<std::string> FindNearest(std::string_view name, std::string_view known);

// The end of a message: "did you mean 'size'?" or, if nothing is similar, "use file, size, words".
[[nodiscard]] std::string Advise(std::string_view name, std::string_view known);

}  // namespace tlk
