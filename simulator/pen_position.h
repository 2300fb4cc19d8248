// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

// The place in the client area that a pen message names.
inline POINT PenPosition(LPARAM position) {
    return {static_cast<SHORT>(LOWORD(position)), static_cast<SHORT>(HIWORD(position))};
}
