// SPDX-License-Identifier: MIT
#include <sip_layout.h>

#include <algorithm>

int BarHeight(SIZE screen) { return static_cast<int>(std::max(screen.cx, screen.cy) * 26 / 320); }

int FirstSipHeight(SIZE screen) {
    return static_cast<int>(screen.cx > screen.cy ? screen.cy / 3 : screen.cy / 4);
}

RECT SipRectangle(SIZE screen, int height) {
    const LONG bottom = screen.cy - BarHeight(screen);
    return {0, bottom - height, screen.cx, bottom};
}

SIZE ScreenSize() { return {GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)}; }
