// SPDX-License-Identifier: MIT
#include "lettering.h"

#include "retouch.h"

namespace tlk {
namespace {

// An accent on a tall letter, or a descender, must not make a whole keyboard smaller.
constexpr double kLowest = 0.84;

}  // namespace

const Glyph* Lettering::Fit(std::u16string_view text, int pixels, Size room, double narrowest) {
    for (int height = pixels; height >= pixels * kLowest; --height) {
        for (int width = pixels; width >= pixels * narrowest; --width) {
            const Glyph& glyph = Draw(text, {height, width});
            const Size ink = glyph.ink.GetSize();
            if (ink.height > room.height) break;
            if (ink.width <= room.width) return &glyph;
        }
    }
    return nullptr;
}

const Glyph& Lettering::Draw(std::u16string_view text, const Em& em) {
    const auto [known, isNew] = m_drawn.try_emplace({std::u16string(text), em.height, em.width});
    if (isNew) {
        auto retouched = text.size() == 1 ? DrawRetouched(m_font, text[0], em) : std::nullopt;
        known->second = retouched ? std::move(*retouched) : m_font.Draw(text, em);
    }
    return known->second;
}

}  // namespace tlk
