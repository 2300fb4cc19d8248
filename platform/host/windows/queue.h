// SPDX-License-Identifier: MIT
// The device's one message queue.
#pragma once

#include <windows.h>

namespace host {

// Only key messages that the device itself posts change what GetKeyState reports.
enum class Origin { Program, Device };
// False when the queue is full.
bool Enqueue(HWND window, UINT message, WPARAM wParam, LPARAM lParam, Origin origin);
// Drops the messages for a window; GetKeyState still counts its key messages.
void DropMessages(HWND window);
// Drops all messages, a requested WM_QUIT and the idle handler.
void ResetMessages();

}  // namespace host
