// SPDX-License-Identifier: MIT
// Graphics beyond the SDK's calls, for the window manager and the resource loader.
#pragma once

#include <host_control.h>

#include "graphics/region.h"

namespace host {

// Gives the screen this size and makes it black. The device contexts of all windows share its pixels.
void ResizeScreen(SIZE size);
// Scales a length from the smallest screen to the present one. Text looks equally large on all handhelds: a
// screen with twice the pixels has twice the resolution.
LONG ScaleToScreen(LONG pixels);

// A device context of the screen, with its origin at the given screen point, which draws only inside the clip
// (screen coordinates, copied). Null on failure. Close it with CloseScreenDC; DeleteDC refuses it. Contexts
// are pooled, so that painting does not allocate.
HDC OpenScreenDC(POINT origin, const Region& clip);
// False if it is not an open context from OpenScreenDC.
bool CloseScreenDC(HDC dc);

// Deletes all graphics objects except stock objects. Part of stopping the device.
void ResetGraphics();
// Adds the product's live bitmaps, contexts, fonts and brushes.
void CountGraphicsHandles(LiveHandles& counts);

void ResetImageLists();
void CountImageLists(LiveHandles& counts);

// Makes a bitmap from a device-independent one in memory (header, colours, rows): in the screen's format, or
// 1-bit if it has one bit per pixel and the palette black, white. Null if the header or the size is wrong.
HBITMAP CreateBitmapFromDib(const BYTE* bytes, std::size_t size);

}  // namespace host
