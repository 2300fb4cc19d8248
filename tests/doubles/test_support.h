// SPDX-License-Identifier: MIT
// Every test of an executable that links test_support runs on a fresh device of 240 x 320 in a temporary
// folder of its own, and fails when it leaves a handle open. The folder goes with the test.
#pragma once

#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

namespace test {

// The root of the device's files on the host.
const std::filesystem::path& DeviceFolder();
// The drive of that root, which full paths begin with: empty or "T:".
LPCWSTR DeviceDrive();
// Makes or replaces a file, also one that is loaded, and the folders on the way; the path is relative to the
// root: "Windows/a.tlk".
void WriteDeviceFile(const std::filesystem::path& path, const std::string& bytes);
// Copies a host file to that place, whatever stands there.
void CopyToDevice(const std::filesystem::path& hostFile, const std::filesystem::path& path);
// The same for a library whose code is a file of its own on the host: there both go to the device, elsewhere
// the file of the code, which then holds the resources too.
void CopyLibraryToDevice(const std::filesystem::path& resources, const std::filesystem::path& code,
                         const std::filesystem::path& path);
// The bytes of a file of the device; a test failure when it cannot be read.
std::string ReadDeviceFile(const std::filesystem::path& path);
// Forbids programs of the device to change and delete the file.
void MakeReadOnly(const std::filesystem::path& path);

// Gives the device another screen; false where that cannot be done.
[[nodiscard]] bool SetScreenSize(LONG width, LONG height);
// Stops the device and starts it again on the same folder, as a reset of the handheld does.
void RestartDevice();
// A test that has COM activate a class begins with this: until then the registry's classes are this process'
// own on a Windows, and COM does not see them.
void LetComSeeClasses();
// Has COM let go of every library that it loaded and that can be unloaded.
void UnloadUnusedLibraries();
// What the device reported since the last call. A test that leaves a report unread fails.
std::vector<std::string> TakeReports();

}  // namespace test
