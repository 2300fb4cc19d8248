// SPDX-License-Identifier: MIT
// The shell's dialogs from the driver's side.
#pragma once

// Gives all full-screen dialogs the size of the screen. Call it when that has changed.
void FitFullScreenDialogs();
