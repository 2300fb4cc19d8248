// SPDX-License-Identifier: MIT
// Where the platform places the SIP on a screen.
//
//     +----------------+
//     | title bar      |  BarHeight
//     |                |
//     | application    |
//     |                |
//     +----------------+
//     | SIP            |  full width
//     +----------------+
//     | menu bar       |  BarHeight
//     +----------------+
#pragma once

#include <windows.h>

// All in pixels; divisions truncate.
int BarHeight(SIZE screen);
// The initial height of the SIP: a third of a landscape screen, a quarter of any other.
int FirstSipHeight(SIZE screen);
RECT SipRectangle(SIZE screen, int height);
SIZE ScreenSize();
