// SPDX-License-Identifier: MIT
// All of a skin file in words, the same for the same file: two skins can be compared line by line.
#pragma once

#include <string>

#include "module_reader.h"

namespace tlk {

[[nodiscard]] std::string Dump(const Module& module);

}  // namespace tlk
