// SPDX-License-Identifier: MIT
// Drawing functions that other graphics files share.
#pragma once

#include "graphics/contexts.h"

namespace host {

// The word for a colour on the surface: the colour itself, or the nearer of the two bits of a 1-bit surface.
DWORD WordFor(const Surface& surface, COLORREF color);
// Fills an area of surface pixels, clipped.
void FillArea(const Context& context, const RECT& area, COLORREF color);

}  // namespace host
