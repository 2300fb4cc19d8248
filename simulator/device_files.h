// SPDX-License-Identifier: MIT
// Changes of the device's files from outside: no attribute and no loaded module prevents them.
#pragma once

#include <filesystem>
#include <string>

// Both throw ScriptError. Writing replaces the file in one step and creates a missing folder.
std::string ReadDeviceFile(const std::u16string& devicePath);
void WriteDeviceFile(const std::u16string& devicePath, const std::string& bytes);
[[nodiscard]] bool HasDeviceFile(const std::u16string& devicePath);

// Replaces a device file by a copy of a host file, in one step: a module that is loaded from the old file
// keeps it. Leaves a file with the same bytes alone, and creates a missing folder. Throws ScriptError.
void CopyToDevice(const std::filesystem::path& source, const std::u16string& devicePath);
// Like CopyToDevice, even if the bytes are the same; the folder must exist.
void RenewDeviceFile(const std::u16string& devicePath, const std::filesystem::path& source);

// Return false if there is no such file; throw ScriptError if the host refuses.
[[nodiscard]] bool DeleteDeviceFile(const std::u16string& devicePath);
enum class FileAccess { ReadOnly, Writable };
// Forbids or allows programs of the device to change and delete the file.
[[nodiscard]] bool SetDeviceFileAccess(const std::u16string& devicePath, FileAccess access);
