// SPDX-License-Identifier: MIT
// Pen, keys, capture and focus, for the rest of the window manager.
#pragma once

#include "windows/window.h"

namespace host {

// Takes capture and focus from the window and its descendants, with the usual messages.
void ReleaseInput(HWND window);
// The same for this window only, without messages, as it is about to be removed.
void ForgetInput(HWND window);
// Updates GetKeyState; called when a key message of the device leaves the queue.
void NoteKey(UINT message, WPARAM virtualKey);
// The last position of the pen, in screen coordinates.
POINT PenPosition();
void ResetInput();

}  // namespace host
