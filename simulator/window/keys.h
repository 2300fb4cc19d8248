// SPDX-License-Identifier: MIT
// The window's keys on the PC. They do not type: the handheld has no keyboard.
#pragma once

#include <span>

enum class WindowAction { ShowHelp, Rotate, NextSize, NextSkin, TakeScreenshot, Quit };

struct WindowKey {
    int code;  // of SDL
    const char* name;
    const char* purpose;
    WindowAction action;
};

std::span<const WindowKey> WindowKeys();
