// SPDX-License-Identifier: MIT
#include "drawing.h"

#include <cstddef>

namespace {

// The words of a picture are 0xAARRGGBB, a colour is 0x00BBGGRR.
COLORREF Blend(DWORD pixel, COLORREF background) {
    const DWORD alpha = pixel >> 24;
    const auto mix = [alpha](DWORD above, DWORD below) {
        return ((above & 0xFF) * alpha + (below & 0xFF) * (255 - alpha)) / 255;
    };
    return RGB(mix(pixel >> 16, background), mix(pixel >> 8, background >> 8), mix(pixel, background >> 16));
}

}  // namespace

CFontOwner MakeFont(int height, int weight) {
    LOGFONTW description{};
    description.lfHeight = -height;
    description.lfWeight = weight;
    const host::PlatformScope scope;
    return CFontOwner(CreateFontIndirectW(&description));
}

void FillArea(HDC dc, const RECT& area, COLORREF color) {
    const host::PlatformScope scope;
    const CBrushOwner brush(CreateSolidBrush(color));
    FillRect(dc, &area, brush.Get());
}

void DrawFrame(HDC dc, const RECT& area, COLORREF color) {
    FillArea(dc, {area.left, area.top, area.right, area.top + 1}, color);
    FillArea(dc, {area.left, area.bottom - 1, area.right, area.bottom}, color);
    FillArea(dc, {area.left, area.top, area.left + 1, area.bottom}, color);
    FillArea(dc, {area.right - 1, area.top, area.right, area.bottom}, color);
}

// Square by square, which is fast enough for the few pixels of a button.
void DrawPicture(HDC dc, POINT corner, const host::Picture& picture, int scale, COLORREF background) {
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const DWORD pixel = picture.pixels.data()[static_cast<std::ptrdiff_t>(y) * picture.width + x];
            const LONG left = corner.x + x * scale;
            const LONG top = corner.y + y * scale;
            if (pixel >> 24 != 0)
                FillArea(dc, {left, top, left + scale, top + scale}, Blend(pixel, background));
        }
    }
}
