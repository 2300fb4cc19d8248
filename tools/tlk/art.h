// SPDX-License-Identifier: MIT
// Pictures and masks that an author has drawn himself, as PNG files.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "skin.h"

namespace tlk {

// The resource that an entry of [art] replaces: "portrait", "lang1_small", "uml2_large_ls", "digit", ...
// Empty when there is none of this name.
[[nodiscard]] std::string FindArtResource(std::string_view name);
[[nodiscard]] std::vector<std::string> AllArtNames();
[[nodiscard]] std::string ArtNames();

// Throw SourceError for a file that cannot be read, has another size, or pixels that are not opaque.
[[nodiscard]] Picture ReadArtPicture(const ArtFile& file, Size size);
// Black and white only.
[[nodiscard]] Mask ReadArtMask(const ArtFile& file, Size size);

}  // namespace tlk
