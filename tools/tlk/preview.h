// SPDX-License-Identifier: MIT
// A skin as the engine draws it.
#pragma once

#include <string>
#include <vector>

#include "grid.h"
#include "module_reader.h"

namespace tlk {

// `plane` is a mask's name without "_MASK", in any case: "lang1_small", "uml2_large_ls", "digit".
// The keys of `pressed` are drawn pressed. Throws FileError.
[[nodiscard]] Picture ShowPlane(const Module& skin, std::string_view plane, const std::vector<int>& pressed);

}  // namespace tlk
