// SPDX-License-Identifier: MIT
// A skin as drawn by the engine.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "font.h"
#include "grid.h"
#include "skin_module.h"

namespace tlk {

struct View {
    // The keys of latched statuses look pressed.
    Latches latches = 0;
    bool isLandscape = false;
    std::vector<std::uint16_t> pressed;
};

// The board that the engine shows in this view.
[[nodiscard]] BoardKind ShownBoard(const SkinModule& skin, const View& view);

// The key with this name or index; a digit is a name. Throws FileError, which lists the board's keys.
[[nodiscard]] std::uint16_t FindKey(const SkinModule& skin, BoardKind board, std::string_view name);

// Throws FileError if the skin lacks a part of the view.
[[nodiscard]] Picture Paint(const SkinModule& skin, const View& view);

// Finds out what is latched on a running keyboard by its picture. Of views that look alike, the one with the
// fewest latches; nothing if the picture is none of this skin, for instance while a key is pressed. `panel`
// may be larger than the keyboard or cut it off.
[[nodiscard]] std::optional<View> FindView(const SkinModule& skin, const Picture& panel);

// Every pixel becomes a square of `zoom` pixels.
[[nodiscard]] Picture Enlarge(const Picture& picture, int zoom);

// Outlines each rectangle of the board on its enlarged picture and labels it with the key's name.
void DrawHitAreas(Picture& enlarged, int zoom, const SkinModule& skin, BoardKind board, const Font& font);

}  // namespace tlk
