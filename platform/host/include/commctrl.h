// SPDX-License-Identifier: MIT
// Image lists.
#pragma once

#include <windef.h>

DECLARE_HANDLE(HIMAGELIST);

// 0 for a null or stale list.
int WINAPI ImageList_GetImageCount(HIMAGELIST list);
