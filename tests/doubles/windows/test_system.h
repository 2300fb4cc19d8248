// SPDX-License-Identifier: MIT
// What a test may change of the Windows that it runs on, and what puts it back.
#pragma once

#include <windows.h>

namespace test {

// The drive whose root is the device's: "\windows" is a folder of the current drive. scripts/test-windows
// gives the prefix such a drive, on an empty folder of the build.
inline constexpr WCHAR kDeviceDrive[] = L"T:\\";

// Prepares the registry of this process' own; false when that fails.
bool PrepareRegistry();
// From then on the three roots are empty keys of this process' own.
void EmptyRegistry();

void RestoreSystemColors();

// From then on this module is told the screen of SetScreenSize.
void RedirectScreenSize(HMODULE module);

}  // namespace test
