// SPDX-License-Identifier: MIT
// Every test of a program that links test_support runs on a new device of 240 x 320 in its own temporary
// folder, and fails if it leaves a handle open. The folder is deleted after the test.
#pragma once

#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

namespace test {

// The root of the device's files on the host.
const std::filesystem::path& DeviceFolder();
// The drive at the beginning of full paths: empty or "T:".
LPCWSTR DeviceDrive();
// Creates a file and its folders, or replaces a file, even a loaded one; the path is relative to the root:
// "Windows/a.tlk".
void WriteDeviceFile(const std::filesystem::path& path, const std::string& bytes);
// Copies a host file to this path, replacing any file.
void CopyToDevice(const std::filesystem::path& hostFile, const std::filesystem::path& path);
// The same for a library, whose code is a separate file on the host: copies both there, elsewhere the file of
// the code, which includes the resources.
void CopyLibraryToDevice(const std::filesystem::path& resources, const std::filesystem::path& code,
                         const std::filesystem::path& path);
// The bytes of a file of the device; a test failure if it cannot be read.
std::string ReadDeviceFile(const std::filesystem::path& path);
// Forbids programs of the device to change and delete the file.
void MakeReadOnly(const std::filesystem::path& path);

void SetScreenSize(LONG width, LONG height);
// Changes a system colour for the rest of the test.
void ChangeSystemColor(int index, COLORREF color);
// Stops the device and starts it again on the same folder, like a reset of the handheld.
void RestartDevice();
// A test in which COM activates a class must call this first: until then, on a Windows, the registry's
// classes are redirected for this process and COM does not see them.
void LetComSeeClasses();
// Makes COM unload all libraries that allow it.
void UnloadUnusedLibraries();
// The device's reports since the last call. A test that leaves one unread fails.
std::vector<std::string> TakeReports();

}  // namespace test
