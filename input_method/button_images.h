// SPDX-License-Identifier: MIT
// The pictures of the SIP's button for this input method.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include "framework/handles.h"

// A list of 16 x 16 images with the narrow picture, its glyph in the present colour of captions, and a list
// of 32 x 16 images with the wide picture. Silver is transparent in both. Null when the list cannot be
// created, empty when its picture cannot. Nobody destroys these lists: the SIP may use them longer than their
// creator lives.
HIMAGELIST CreateNarrowImages();
HIMAGELIST CreateWideImages();

// A 24-bit copy of the bitmap in which all pixels but those of the key colour have the colour of caption
// text. The key colour is that of the first pixel in memory, the bottom left one of a bottom-up bitmap. Null
// on failure. No device context may hold the bitmap; the caller keeps it.
[[nodiscard]] CBitmapOwner ColorizeBitmap(HBITMAP bitmap);
