// SPDX-License-Identifier: MIT
#pragma once

#include <host_control.h>

#include <filesystem>

// Writes a rectangle of the picture as a 24-bit PNG, with black pixels outside `visible`; both are in the
// picture's coordinates. Throws ScriptError if the file cannot be written.
void WritePng(const std::filesystem::path& file, const host::ScreenView& picture, const RECT& rectangle,
              const RECT& visible);
// Writes the picture as a PNG with alpha. Throws ScriptError.
void WritePng(const std::filesystem::path& file, const host::Picture& picture);
