// SPDX-License-Identifier: MIT
// The screen and the pen in the units of the window manager: pixels.
#pragma once

#include <windows.h>

inline SIZE GetScreenSize() { return {GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)}; }

// The position of a pen message in client coordinates; negative left of and above a window with the capture.
inline POINT GetPenPoint(LPARAM position) {
    return {static_cast<SHORT>(LOWORD(position)), static_cast<SHORT>(HIWORD(position))};
}
