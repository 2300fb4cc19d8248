// SPDX-License-Identifier: MIT
// What the doubles need of the side that they run on; tests use test_support.h.
#pragma once

#include <filesystem>

namespace test {

// Does the program under test ask for memory, and not the platform, whose calls may not be stopped half-way?
[[nodiscard]] bool IsAskedByProgram();

// Called before a file of the device is written: takes what may not be written to out of the way.
void MakeRoomFor(const std::filesystem::path& path);

}  // namespace test
