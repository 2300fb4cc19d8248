// SPDX-License-Identifier: MIT
// The shell's dialogs from the driver's side.
#pragma once

// Gives every full-screen dialog the size of the present screen. Called when that has changed.
void FitFullScreenDialogs();
