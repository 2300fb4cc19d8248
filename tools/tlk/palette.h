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

// The engine paints black wherever a mask is 0. Dark glyphs are the zeros of the mask on faces of any colour;
// light glyphs are its ones on black faces, and the colours of the faces are then those of the glyphs.
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

// Nothing when there is none of this name.
[[nodiscard]] std::optional<Palette> FindPalette(std::string_view name);
[[nodiscard]] std::string PaletteNames();

[[nodiscard]] inline Palette DefaultPalette() { return *FindPalette("light"); }

}  // namespace tlk
