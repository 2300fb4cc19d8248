// SPDX-License-Identifier: MIT
// Describes a skin file as text, so that two skins can be compared line by line.
#pragma once

#include <string>

#include "module_reader.h"

namespace tlk {

[[nodiscard]] std::string Dump(const Module& module);

}  // namespace tlk
