// SPDX-License-Identifier: MIT
#include "graphics/surface.h"

namespace host {
void ReadWords(const Surface& surface, int x, int y, int count, const DWORD (&bitWords)[2], DWORD* words) {
    if (surface.format == PixelFormat::Rgb32) {
        const DWORD* pixels = surface.Words(x, y);
        for (int i = 0; i < count; ++i)
            words[i] = pixels[i] & kColorBits;
    } else if (surface.format == PixelFormat::Rgb24) {
        const BYTE* bytes = surface.Row(y) + 3 * x;
        for (int i = 0; i < count; ++i, bytes += 3)
            words[i] = bytes[0] | (static_cast<DWORD>(bytes[1]) << 8) | (static_cast<DWORD>(bytes[2]) << 16);
    } else {
        const BYTE* row = surface.Row(y);
        for (int i = 0; i < count; ++i)
            words[i] = bitWords[(row[(x + i) >> 3] >> (7 - ((x + i) & 7))) & 1];
    }
}

void WriteWords(const Surface& surface, int x, int y, int count, const DWORD* words) {
    if (surface.format == PixelFormat::Rgb32) {
        DWORD* pixels = surface.Words(x, y);
        for (int i = 0; i < count; ++i)
            pixels[i] = words[i];
    } else if (surface.format == PixelFormat::Rgb24) {
        BYTE* bytes = surface.Row(y) + 3 * x;
        for (int i = 0; i < count; ++i, bytes += 3) {
            bytes[0] = static_cast<BYTE>(words[i]);
            bytes[1] = static_cast<BYTE>(words[i] >> 8);
            bytes[2] = static_cast<BYTE>(words[i] >> 16);
        }
    } else {
        BYTE* row = surface.Row(y);
        for (int i = 0; i < count; ++i) {
            BYTE& byte = row[(x + i) >> 3];
            const int bit = 0x80 >> ((x + i) & 7);
            byte = static_cast<BYTE>(words[i] != 0 ? byte | bit : byte & ~bit);
        }
    }
}

}  // namespace host
