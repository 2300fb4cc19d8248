// SPDX-License-Identifier: MIT
// Reads a source and its bases into one table. For the source readers only.
#pragma once

#include "source_section.h"

namespace tlk {

// Each table of `text` overrides the same table of its `based_on` sources, value by value, recursively; its
// [[key]] entries follow theirs. Relative paths start at `path`. All nodes have their file and line. Throws
// SourceError for a file that cannot be read at all; adds other faults to the list.
[[nodiscard]] toml::table ReadSourceFiles(std::string_view text, const std::string& path, FaultList& faults);

// Applies the settings of [screen.WxH] for this screen.
void ApplyScreen(toml::table& root, std::string_view screen);

// Reads a palette's file, which has the settings of [colors]. `node` names it.
[[nodiscard]] toml::table ReadPaletteFile(const toml::node& node, std::string_view path);

}  // namespace tlk
