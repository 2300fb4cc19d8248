// SPDX-License-Identifier: MIT
// The device's one message queue.
#pragma once

#include <windows.h>

namespace host {

// Only key messages that the device itself posts change what GetKeyState reports.
enum class Origin { Program, Device };
// False when the queue is full.
bool Enqueue(HWND window, UINT message, WPARAM wParam, LPARAM lParam, Origin origin);
// Forgets what waits for a window; its keys count as pressed or released all the same.
void DropMessages(HWND window);
// Forgets every message, a wanted quit and the idle handler.
void ResetMessages();

}  // namespace host
