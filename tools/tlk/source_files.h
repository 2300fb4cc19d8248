// SPDX-License-Identifier: MIT
// A source and those that it is based on, as one table. For the source readers only.
#pragma once

#include "source_section.h"

namespace tlk {

// Every table of `text` overrides the same table of the sources that it names as `based_on`, value by value,
// and so on; its [[key]] entries come after those. `path` tells where relative paths start. All nodes know
// the file and the line that they come from. Throws SourceError for what cannot be read at all; other faults
// join the list.
[[nodiscard]] toml::table ReadSourceFiles(std::string_view text, const std::string& path, FaultList& faults);

// Lays what [screen.WxH] says for this screen over the rest.
void ApplyScreen(toml::table& root, std::string_view screen);

// A palette's file, which holds what [colors] holds. `node` names it.
[[nodiscard]] toml::table ReadPaletteFile(const toml::node& node, std::string_view path);

}  // namespace tlk
