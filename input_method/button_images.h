// SPDX-License-Identifier: MIT
// The pictures of the SIP's button for this input method.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include "framework/handles.h"

// A list of 16 x 16 images with the narrow picture, its glyph in the colour that captions have now, and one
// of 32 x 16 images with the wide picture. Silver is transparent in both. Null when the list cannot be made,
// empty when its picture cannot. Nobody destroys these lists: the SIP may use them after the object that made
// them.
HIMAGELIST CreateNarrowImages();
HIMAGELIST CreateWideImages();

// A new 24-bit section of the bitmap's size: pixels of the key colour, which is that of the first pixel in
// memory (of a bottom-up bitmap the bottom left one), keep it and all others take the colour of caption text.
// Null on failure. No device context may hold the bitmap; it stays the caller's.
[[nodiscard]] CBitmapOwner ColorizeBitmap(HBITMAP bitmap);
