// SPDX-License-Identifier: MIT
#include "input_method/button_images.h"

#include <algorithm>
#include <cstddef>

#include "framework/module.h"
#include "resources/resource.h"

namespace {

constexpr int kNarrowWidth = 16;
constexpr int kWideWidth = 32;
constexpr int kHeight = 16;
constexpr COLORREF kSilver = RGB(0xC0, 0xC0, 0xC0);

constexpr WORD kBitsPerPixel = 24;
constexpr int kPixelBytes = 3;
constexpr LONG kPixelsPerMetre = 3780;  // 96 dots per inch

constexpr LONG RowBytes(LONG width) { return (kPixelBytes * width + 3) / 4 * 4; }

// Rows of 24-bit pixels in the order of memory, which the bitmap owns.
struct Pixels {
    BYTE* bits = nullptr;
    LONG width = 0;
    LONG height = 0;
    LONG rowBytes = 0;

    BYTE* At(LONG x, LONG y) const {
        return bits + static_cast<std::ptrdiff_t>(y) * rowBytes +
               static_cast<std::ptrdiff_t>(x) * kPixelBytes;
    }
};

struct Section {
    CBitmapOwner bitmap;  // null when it could not be made
    Pixels pixels;
};

// Bottom-up: the height is positive.
BITMAPINFO SectionInfo(LONG width, LONG height) {
    BITMAPINFO info{};
    BITMAPINFOHEADER& header = info.bmiHeader;
    header.biSize = sizeof header;
    header.biWidth = width;
    header.biHeight = height;
    header.biPlanes = 1;
    header.biBitCount = kBitsPerPixel;
    header.biCompression = BI_RGB;
    header.biSizeImage = static_cast<DWORD>(RowBytes(width) * height);
    header.biXPelsPerMeter = kPixelsPerMetre;
    header.biYPelsPerMeter = kPixelsPerMetre;
    return info;
}

Section CreateSection(LONG width, LONG height) {
    const BITMAPINFO info = SectionInfo(width, height);
    void* bits = nullptr;
    CBitmapOwner bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    return {std::move(bitmap), {static_cast<BYTE*>(bits), width, height, RowBytes(width)}};
}

// Each context gets its own bitmap back before it is deleted.
bool CopyBitmap(HBITMAP target, HBITMAP source, LONG width, LONG height) {
    const CMemoryDC targetDC(CreateCompatibleDC(nullptr));
    const CMemoryDC sourceDC(CreateCompatibleDC(nullptr));
    if (!targetDC || !sourceDC) return false;
    const CSelection targetSelection(targetDC.Get(), target);
    const CSelection sourceSelection(sourceDC.Get(), source);
    return targetSelection && sourceSelection &&
           BitBlt(targetDC.Get(), 0, 0, width, height, sourceDC.Get(), 0, 0, SRCCOPY);
}

// The pixels of the bitmap itself if it is a section of this depth, else those of a copy, which `copy` then
// owns. Null bits on failure.
Pixels ReadPixels(HBITMAP bitmap, Section& copy) {
    DIBSECTION section{};
    const int size = GetObjectW(bitmap, sizeof section, &section);
    if (size == 0) return {};
    const BITMAP& shape = section.dsBm;
    if (size == sizeof section && shape.bmBitsPixel == kBitsPerPixel)
        return {static_cast<BYTE*>(shape.bmBits), shape.bmWidth, shape.bmHeight, shape.bmWidthBytes};
    copy = CreateSection(shape.bmWidth, shape.bmHeight);
    if (!copy.bitmap || !CopyBitmap(copy.bitmap.Get(), bitmap, shape.bmWidth, shape.bmHeight)) return {};
    return copy.pixels;
}

void Colorize(const Pixels& source, const Pixels& result, COLORREF paint) {
    const BYTE paintBytes[kPixelBytes] = {static_cast<BYTE>(paint >> 16), static_cast<BYTE>(paint >> 8),
                                          static_cast<BYTE>(paint)};
    const BYTE* key = source.At(0, 0);
    for (LONG y = 0; y < source.height; ++y) {
        for (LONG x = 0; x < source.width; ++x) {
            const bool isKey = std::equal(key, key + kPixelBytes, source.At(x, y));
            std::copy_n(isKey ? key : paintBytes, kPixelBytes, result.At(x, y));
        }
    }
}

CBitmapOwner LoadPicture(WORD id) {
    return CBitmapOwner(LoadBitmapW(_Module.GetModuleInstance(), MAKEINTRESOURCEW(id)));
}

HIMAGELIST CreateImages(int width) { return ImageList_Create(width, kHeight, ILC_MASK, 1, 1); }

}  // namespace

HIMAGELIST CreateNarrowImages() {
    const HIMAGELIST list = CreateImages(kNarrowWidth);
    if (!list) return nullptr;
    const CBitmapOwner picture = LoadPicture(IDB_BUTTON_NARROW);
    if (!picture) return list;
    const CBitmapOwner colorized = ColorizeBitmap(picture.Get());
    if (colorized) ImageList_AddMasked(list, colorized.Get(), kSilver);
    return list;
}

HIMAGELIST CreateWideImages() {
    const HIMAGELIST list = CreateImages(kWideWidth);
    if (!list) return nullptr;
    const CBitmapOwner picture = LoadPicture(IDB_BUTTON_WIDE);
    if (picture) ImageList_AddMasked(list, picture.Get(), kSilver);
    return list;
}

CBitmapOwner ColorizeBitmap(HBITMAP bitmap) {
    Section copy;
    const Pixels source = ReadPixels(bitmap, copy);
    if (!source.bits) return {};
    Section result = CreateSection(source.width, source.height);
    if (result.bitmap) Colorize(source, result.pixels, GetSysColor(COLOR_CAPTIONTEXT));
    return std::move(result.bitmap);
}
