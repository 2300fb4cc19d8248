// SPDX-License-Identifier: MIT
// Pen, keys, capture and focus as the rest of the window manager needs them.
#pragma once

#include "windows/window.h"

namespace host {

// Takes capture and focus from the window and everything inside it, with the messages that go with it.
void ReleaseInput(HWND window);
// The same for this window alone and without messages: it is about to be no more.
void ForgetInput(HWND window);
// Keeps GetKeyState: called when a key message of the device's own leaves the queue.
void NoteKey(UINT message, WPARAM virtualKey);
// Where the pen was last, in screen coordinates.
POINT PenPosition();
void ResetInput();

}  // namespace host
