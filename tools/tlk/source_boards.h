// SPDX-License-Identifier: MIT
// The keyboards of a source. For the source readers only.
#pragma once

#include "skin.h"
#include "source_section.h"

namespace tlk {

// Reads [portrait], [landscape], [digits] and [[key]] into the skin, whose arrangement, characters and
// palette have been read. Pictures without a size get theirs from its screen. Throws SourceError.
void ReadBoards(const Section& file, Skin& skin);

// {icon = "..."} or a word.
[[nodiscard]] Label ReadLabel(const toml::node& node, const std::string& what);
[[nodiscard]] Shade ReadFace(const toml::node& node, const std::string& what, const Palette& palette);

}  // namespace tlk
