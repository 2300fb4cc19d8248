// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "grid.h"

namespace tlk {

// Top and bottom colour of a key's face.
struct Shade {
    Color top;
    Color bottom;
};

enum class FaceStyle { Bevel, Gradient, Flat };

// The engine paints black where a mask is 0. Dark glyphs are the zeros of the mask, on faces of any colour.
// Light glyphs are its ones, on black faces, and the colours of the faces then colour the glyphs.
enum class GlyphTone { Dark, Light };

struct Palette {
    Color background;
    Shade letter;
    Shade number;
    Shade symbol;
    Shade function;
    FaceStyle style = FaceStyle::Bevel;
    GlyphTone glyphs = GlyphTone::Dark;
};

// Nothing if there is no such palette.
[[nodiscard]] std::optional<Palette> FindPalette(std::string_view name);
[[nodiscard]] std::string PaletteNames();

[[nodiscard]] inline Palette DefaultPalette() { return *FindPalette("light"); }

}  // namespace tlk
