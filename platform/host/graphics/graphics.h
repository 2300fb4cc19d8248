// SPDX-License-Identifier: MIT
// What the window manager and the resource loader need of graphics beyond the SDK's calls.
#pragma once

#include <host_control.h>

#include "graphics/region.h"

namespace host {

// Gives the screen this size, black. Its pixels are shared by every window's device context.
void ResizeScreen(SIZE size);
// What is this many pixels on the smallest screen. Handhelds keep their text at one size for the eye: a
// screen of twice the pixels has twice the resolution.
LONG ScaleToScreen(LONG pixels);

// A device context that draws on the screen: its origin is the given screen point, and nothing outside the
// clip (screen coordinates, copied) is touched. Null when no context can be made. Closed with
// CloseScreenDC; DeleteDC refuses it. Contexts are pooled, so that painting does not allocate.
HDC OpenScreenDC(POINT origin, const Region& clip);
// False when it is none that OpenScreenDC gave and that is still open.
bool CloseScreenDC(HDC dc);

// Deletes every graphics object, stock objects apart. Part of stopping the device.
void ResetGraphics();
// Adds the product's live bitmaps, contexts, fonts and brushes.
void CountGraphicsHandles(LiveHandles& counts);

void ResetImageLists();
void CountImageLists(LiveHandles& counts);

// Makes a bitmap from a device-independent one in memory (header, colours, rows): in the screen's format, or
// 1-bit when it has one bit per pixel and the palette black, white. Null when the header or the size lies.
HBITMAP CreateBitmapFromDib(const BYTE* bytes, std::size_t size);

}  // namespace host
