// SPDX-License-Identifier: MIT
#pragma once

#include <host_control.h>

// The keys of the window and the strokes of the keyboard as a picture of this size, its letters for a screen
// enlarged by `scale`. Empty when it cannot be drawn.
host::Picture DrawHelpPage(SIZE size, int scale);
