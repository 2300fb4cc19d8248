// SPDX-License-Identifier: MIT
// Changes of the Windows that a test runs on, and their restoration.
#pragma once

#include <windows.h>

namespace test {

// The drive whose root is the device's, as "\windows" is on the current drive. scripts/test-windows maps it
// to an empty folder of the build.
inline constexpr WCHAR kDeviceDrive[] = L"T:\\";

// Prepares the registry of this process; false on failure.
bool PrepareRegistry();
// Redirects the three roots to empty keys of this process.
void EmptyRegistry();

void RestoreSystemColors();

// Makes this module see the screen of SetScreenSize.
void RedirectScreenSize(HMODULE module);

}  // namespace test
