// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "module_writer.h"
#include "skin.h"

namespace tlk {

struct CompiledSource {
    Skin skin;
    std::vector<Resource> resources;
};

// Compiles a source file for one of its screens, the first if `screen` is empty; `font` is used unless the
// source names its own. Throws FileError with a line for each fault.
[[nodiscard]] CompiledSource CompileSource(const std::string& path, const std::string& screen,
                                           const std::string& font);

}  // namespace tlk
