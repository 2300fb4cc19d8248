// SPDX-License-Identifier: MIT
// Image lists.
#pragma once

#include <windef.h>

DECLARE_HANDLE(HIMAGELIST);

#define ILC_MASK 0x00000001
#define ILD_NORMAL 0x0000
#define ILD_TRANSPARENT 0x0001

// An empty list of images of this size in pixels. With ILC_MASK images can have transparent pixels. The list
// grows as needed; the two counts are ignored. Destroy it with ImageList_Destroy.
HIMAGELIST WINAPI ImageList_Create(int width, int height, UINT flags, int initial, int grow);
BOOL WINAPI ImageList_Destroy(HIMAGELIST list);
// Adds a copy of the bitmap, which no device context may hold: one image for each full width, from the left;
// missing rows are transparent. Pixels of the colour become transparent. Returns the index of the first
// image, -1 on failure.
int WINAPI ImageList_AddMasked(HIMAGELIST list, HBITMAP bitmap, COLORREF transparent);
// 0 for a null or stale list.
int WINAPI ImageList_GetImageCount(HIMAGELIST list);
// Transparent pixels leave the target unchanged. Lists have no background colour, so both styles do the same.
BOOL WINAPI ImageList_Draw(HIMAGELIST list, int index, HDC dc, int x, int y, UINT style);
