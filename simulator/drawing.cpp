// SPDX-License-Identifier: MIT
#include "drawing.h"

#include <host_control.h>

void Font::Create(int height, int weight) {
    LOGFONTW description{};
    description.lfHeight = -height;
    description.lfWeight = weight;
    const host::PlatformScope scope;
    Reset(CreateFontIndirectW(&description));
}

void FillArea(HDC dc, const RECT& area, COLORREF color) {
    const host::PlatformScope scope;
    const HBRUSH brush = CreateSolidBrush(color);
    FillRect(dc, &area, brush);
    DeleteObject(brush);
}
