// SPDX-License-Identifier: MIT
// A skin as the engine draws it.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "font.h"
#include "grid.h"
#include "skin_module.h"

namespace tlk {

struct View {
    // The keys of what is latched look pressed.
    Latches latches = 0;
    bool isLandscape = false;
    std::vector<std::uint16_t> pressed;
};

// The board that the engine shows then.
[[nodiscard]] BoardKind ShownBoard(const SkinModule& skin, const View& view);

// The key of this name, or of this index; a digit that is both is a name. Throws FileError, which lists the
// board's keys.
[[nodiscard]] std::uint16_t FindKey(const SkinModule& skin, BoardKind board, std::string_view name);

// Throws FileError when the skin lacks what the view needs.
[[nodiscard]] Picture Paint(const SkinModule& skin, const View& view);

// What is latched on a keyboard that is running, known by how it looks: it tells nobody. Of states that look
// alike, the one with the fewest latches; nothing when the picture is none of this skin, as while a key is
// pressed. `panel` may be larger than the keyboard or cut it off.
[[nodiscard]] std::optional<View> FindView(const SkinModule& skin, const Picture& panel);

// Every pixel becomes a square of `zoom` pixels.
[[nodiscard]] Picture Enlarge(const Picture& picture, int zoom);

// Outlines every rectangle of the board on its enlarged picture and writes the key's name into it.
void DrawHitAreas(Picture& enlarged, int zoom, const SkinModule& skin, BoardKind board, const Font& font);

}  // namespace tlk
