// SPDX-License-Identifier: MIT
#pragma once

#include <host_control.h>
#include <windows.h>

#include "framework/handles.h"

// A font of the platform. The height is in pixels per em, the weight FW_NORMAL or FW_BOLD.
CFontOwner MakeFont(int height, int weight);

void FillArea(HDC dc, const RECT& area, COLORREF color);
// One pixel wide, inside the area.
void DrawFrame(HDC dc, const RECT& area, COLORREF color);
// Each pixel enlarged to a square of `scale` pixels; what is transparent shows the background.
void DrawPicture(HDC dc, POINT corner, const host::Picture& picture, int scale, COLORREF background);
