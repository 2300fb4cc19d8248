// SPDX-License-Identifier: MIT
// Drawing that other graphics files share.
#pragma once

#include "graphics/contexts.h"

namespace host {

// The word that a colour becomes on the surface: itself, or the nearer of a 1-bit surface's two bits.
DWORD WordFor(const Surface& surface, COLORREF color);
// Fills an area of surface pixels, clipped.
void FillArea(const Context& context, const RECT& area, COLORREF color);

}  // namespace host
