// SPDX-License-Identifier: MIT
// A skin as the engine draws it.
#pragma once

#include <string_view>
#include <vector>

#include "font.h"
#include "grid.h"
#include "skin_module.h"

namespace tlk {

struct View {
    std::size_t plane = 0;
    bool isLandscape = false;
    // With caps lock on, in portrait: the CAPS rectangle shows the other plane of the pair.
    bool hasCapsLock = false;
    std::vector<std::uint16_t> pressed;

    BoardKind Board() const;
};

// The key of this name, or of this index; a digit that is both is a name. Throws FileError, which lists the
// board's keys.
[[nodiscard]] std::uint16_t FindKey(const SkinModule& skin, BoardKind board, std::string_view name);

// Throws FileError when the skin lacks what the view needs.
[[nodiscard]] Picture Compose(const SkinModule& skin, const View& view);

// Every pixel becomes a square of `zoom` pixels.
[[nodiscard]] Picture Enlarge(const Picture& picture, int zoom);

// Outlines every rectangle of the board on its enlarged picture and writes the key's name into it.
void DrawHitAreas(Picture& enlarged, int zoom, const SkinModule& skin, BoardKind board, const Font& font);

}  // namespace tlk
