// SPDX-License-Identifier: MIT
#pragma once

#include <host_control.h>

// The keys of the window and the strokes of the keyboard as a picture of this size. Empty when it cannot be
// drawn.
host::Picture DrawHelpPage(SIZE size);
