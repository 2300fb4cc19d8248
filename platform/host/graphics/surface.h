// SPDX-License-Identifier: MIT
// Pixels in memory, and their conversion to and from words (0x00RRGGBB, the screen's format).
#pragma once

#include <windef.h>

#include "graphics/raster_operations.h"

namespace host {

enum class PixelFormat {
    Mono,   // 1 bit without colours: they come from the context that copies it
    Rgb24,  // bytes blue, green, red
    Rgb32,  // words
};
enum class RowOrder { TopDown, BottomUp };

struct Surface {
    int width = 0;
    int height = 0;
    PixelFormat format = PixelFormat::Rgb32;
    BYTE* top = nullptr;        // the uppermost row of the picture
    std::ptrdiff_t stride = 0;  // bytes from a row to the one below it; negative for bottom-up bitmaps
    // The caller can write the memory, so the fourth byte of a word may be anything.
    bool shared = false;

    RECT Bounds() const { return {0, 0, width, height}; }
    bool HasBits() const { return format == PixelFormat::Mono; }
    BYTE* Row(int y) const { return top + y * stride; }
    DWORD* Words(int x, int y) const { return reinterpret_cast<DWORD*>(Row(y)) + x; }
};

constexpr int BitsPerPixel(PixelFormat format) {
    return format == PixelFormat::Rgb32 ? 32 : format == PixelFormat::Rgb24 ? 24 : 1;
}

// Converts between a COLORREF and a word: red and blue change places.
constexpr DWORD SwapRedAndBlue(DWORD color) {
    return ((color & 0xFF) << 16) | (color & 0xFF00) | ((color >> 16) & 0xFF);
}

// Reads pixels as words; for the bits of a 1-bit surface, the two words given.
void ReadWords(const Surface& surface, int x, int y, int count, const DWORD (&bitWords)[2], DWORD* words);
// Writes words; into a 1-bit surface a 1 for every word but 0.
void WriteWords(const Surface& surface, int x, int y, int count, const DWORD* words);

// Is the colour nearer to white than to black?
constexpr bool IsBright(DWORD color) {
    return (color & 0xFF) + ((color >> 8) & 0xFF) + ((color >> 16) & 0xFF) > 3 * 255 / 2;
}

inline constexpr DWORD kBitsAsWords[2] = {0, kColorBits};

}  // namespace host
