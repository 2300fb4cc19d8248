// SPDX-License-Identifier: MIT
#include "palette.h"

#include "name_list.h"

namespace tlk {
namespace {

constexpr Color Rgb(unsigned value) {
    return {static_cast<std::uint8_t>(value >> 16), static_cast<std::uint8_t>(value >> 8),
            static_cast<std::uint8_t>(value)};
}

constexpr Shade Between(unsigned top, unsigned bottom) { return {Rgb(top), Rgb(bottom)}; }

struct NamedPalette {
    std::string_view name;
    Palette palette;
};

constexpr Palette kLight{.background = Rgb(0x66778F),
                         .letter = Between(0xFFFFFF, 0xE2E8F0),
                         .number = Between(0xFFFFFF, 0xE2E8F0),
                         .symbol = Between(0xF6F8FB, 0xD3DBE6),
                         .function = Between(0xCED6DF, 0xAAB6C5),
                         .style = FaceStyle::Bevel,
                         .glyphs = GlyphTone::Dark};

constexpr Palette kDark{.background = Rgb(0x44515F),
                        .letter = Between(0xFFFFFF, 0xDCE6F2),
                        .number = Between(0xFFFFFF, 0xDCE6F2),
                        .symbol = Between(0xD8E2EE, 0xB4C4D6),
                        .function = Between(0x8CC4FF, 0x6CA6E8),
                        .style = FaceStyle::Gradient,
                        .glyphs = GlyphTone::Light};

constexpr Palette kContrast{.background = Rgb(0x000000),
                            .letter = Between(0xFFFFFF, 0xFFFFFF),
                            .number = Between(0xFFFFFF, 0xFFFFFF),
                            .symbol = Between(0xFFFFFF, 0xFFFFFF),
                            .function = Between(0xFFE600, 0xFFE600),
                            .style = FaceStyle::Flat,
                            .glyphs = GlyphTone::Dark};

constexpr NamedPalette kPalettes[] = {{"light", kLight}, {"dark", kDark}, {"contrast", kContrast}};

}  // namespace

std::optional<Palette> FindPalette(std::string_view name) {
    for (const NamedPalette& known : kPalettes)
        if (known.name == name) return known.palette;
    return std::nullopt;
}

std::string PaletteNames() {
    std::string names;
    for (const NamedPalette& known : kPalettes)
        AppendName(names, known.name);
    return names;
}

}  // namespace tlk
