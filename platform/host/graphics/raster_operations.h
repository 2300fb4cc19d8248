// SPDX-License-Identifier: MIT
// Raster operations on rows of 0x00RRGGBB words. The bits of a 1-bit surface become the words 0 and
// 0x00FFFFFF.
#pragma once

#include <windef.h>

namespace host {

constexpr DWORD kColorBits = 0x00FFFFFF;

// A ternary raster code whose pattern is one colour. Every function of two bits is
//     constant ^ (s & source) ^ (t & target) ^ (s & t & both)
// so the pattern folds into four words and no code needs special treatment. All four words, and so all
// results, have only colour bits, whatever the fourth byte of a pixel is.
struct Rop {
    DWORD constant;
    DWORD source;
    DWORD target;
    DWORD both;

    // For words and for vectors of words.
    template <typename Word>
    Word Apply(Word s, Word t) const {
        return constant ^ (s & source) ^ (t & target) ^ (s & t & both);
    }
    bool ReadsTarget() const { return (target | both) != 0; }
    bool IsCopy() const { return constant == 0 && source == kColorBits && !ReadsTarget(); }
};

// The code is the index of a raster operation (its bits 16 to 23): bit 4p + 2s + t is the result for pattern
// p, source s and target t.
Rop MakeRop(BYTE code, DWORD pattern);
inline bool NeedsSource(BYTE code) { return (((code >> 2) ^ code) & 0x33) != 0; }

// A rectangle of words to change, and rectangles of the same size to read. Strides are bytes from one row to
// the next and may be negative. Source and target do not overlap.
struct Rows {
    DWORD* target = nullptr;
    std::ptrdiff_t targetStride = 0;
    const DWORD* source = nullptr;
    std::ptrdiff_t sourceStride = 0;
    const BYTE* mask = nullptr;  // the byte with the first pixel's bit; null: no mask
    std::ptrdiff_t maskStride = 0;
    int maskX = 0;  // the bit in that byte, counted from its highest
    int width = 0;
    int height = 0;
};

// Applies the foreground code where the mask is 1, or everywhere without a mask.
void CombineRows(const Rows& rows, const Rop& fore, const Rop& back);
void CopyRows(const Rows& rows);

}  // namespace host
