// SPDX-License-Identifier: MIT
// Pictures and masks drawn by the author, as PNG files.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "skin.h"

namespace tlk {

// The resource that an entry of [art] replaces: "portrait", "lang1_small", "uml2_large_ls", "digit", ...
// Empty if there is no such entry.
[[nodiscard]] std::string FindArtResource(std::string_view name);
[[nodiscard]] std::vector<std::string> AllArtNames();
[[nodiscard]] std::string ArtNames();

// Throw SourceError if the file cannot be read, has another size, or pixels that are not opaque.
[[nodiscard]] Picture ReadArtPicture(const ArtFile& file, Size size);
// Black and white only.
[[nodiscard]] Mask ReadArtMask(const ArtFile& file, Size size);

}  // namespace tlk
