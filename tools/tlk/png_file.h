// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "grid.h"

namespace tlk {

// Throws FileError.
void WritePng(const Picture& picture, const std::string& path);

}  // namespace tlk
