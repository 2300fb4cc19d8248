// SPDX-License-Identifier: MIT
#pragma once

#include <host_control.h>

// A picture of this size with the window's keys and the keyboard's strokes; empty if it cannot be drawn.
host::Picture DrawHelpPage(SIZE size);
