// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "grid.h"

namespace tlk {

// The ink of a character or a word: 1 is ink. `ascent` is the number of rows from the top of the ink to the
// baseline.
struct Glyph {
    Mask ink;
    int ascent = 0;
};

// Pixels per em.
struct Em {
    int height = 0;
    int width = height;
};

// A font file, drawn with one bit per pixel and its own hints. Throws FileError.
class Font {
public:
    explicit Font(const std::string& path);
    ~Font();
    Font(Font&&) noexcept;
    Font& operator=(Font&&) noexcept;

    bool Has(char16_t character) const;
    // The glyph is cropped to its ink.
    [[nodiscard]] Glyph Draw(std::u16string_view word, const Em& em) const;
    // The height of flat capitals.
    [[nodiscard]] int CapHeight(int pixels) const;

private:
    struct Face;

    std::string m_path;
    std::unique_ptr<Face> m_face;
};

}  // namespace tlk
