// SPDX-License-Identifier: MIT
#pragma once

#include "font.h"
#include "module_writer.h"
#include "skin.h"

namespace tlk {

// Lays the skin out, draws it, and names the results as the engine looks them up. Throws SourceError.
[[nodiscard]] std::vector<Resource> CompileSkin(const Skin& skin, const Font& font);

}  // namespace tlk
