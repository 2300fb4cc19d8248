// SPDX-License-Identifier: MIT
#pragma once

#include <host_control.h>

#include <filesystem>

// Writes a rectangle of the picture as a 24-bit PNG. Pixels of the rectangle that lie outside `visible` are
// black; both are in the picture's coordinates. Throws ScriptError when the file cannot be written.
void WritePng(const std::filesystem::path& file, const host::ScreenView& picture, const RECT& rectangle,
              const RECT& visible);
// Writes the picture as a PNG with alpha. Throws ScriptError as well.
void WritePng(const std::filesystem::path& file, const host::Picture& picture);
