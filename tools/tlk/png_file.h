// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "grid.h"

namespace tlk {

// Every pixel becomes a square of `zoom` pixels. Throws FileError.
void WritePng(const Picture& picture, int zoom, const std::string& path);

}  // namespace tlk
