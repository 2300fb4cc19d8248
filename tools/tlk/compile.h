// SPDX-License-Identifier: MIT
#pragma once

#include "font.h"
#include "module_writer.h"
#include "skin.h"

namespace tlk {

// Lays the skin out and draws it; the results have the names that the engine looks up. Throws SourceError.
[[nodiscard]] std::vector<Resource> CompileSkin(const Skin& skin, const Font& font);

}  // namespace tlk
