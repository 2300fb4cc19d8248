// SPDX-License-Identifier: MIT
// What the doubles need from their platform; tests use test_support.h.
#pragma once

#include <filesystem>

namespace test {

// Does the program under test allocate, and not the platform, whose calls must not be interrupted?
[[nodiscard]] bool IsAskedByProgram();

// Called before a file of the device is written: moves a file that cannot be overwritten out of the way.
void MakeRoomFor(const std::filesystem::path& path);

}  // namespace test
