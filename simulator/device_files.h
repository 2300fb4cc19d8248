// SPDX-License-Identifier: MIT
// What others than the programs of the device do to its files: no attribute and no loaded module stops them.
#pragma once

#include <filesystem>
#include <string>

// Both throw ScriptError, which says why. A file is replaced as one step; its folder is made when missing.
std::string ReadDeviceFile(const std::u16string& devicePath);
void WriteDeviceFile(const std::u16string& devicePath, const std::string& bytes);
[[nodiscard]] bool HasDeviceFile(const std::u16string& devicePath);

// Puts a copy of a host file in the place of a device file, as one step: a module that is loaded from the old
// one keeps it. A file with the same bytes stays as it is; its folder is made when missing. Throws
// ScriptError.
void CopyToDevice(const std::filesystem::path& source, const std::u16string& devicePath);
// As CopyToDevice, also when the bytes are the same; the folder has to exist.
void RenewDeviceFile(const std::u16string& devicePath, const std::filesystem::path& source);

// False when there is no such file; these throw ScriptError when the host does not let them.
[[nodiscard]] bool DeleteDeviceFile(const std::u16string& devicePath);
enum class FileAccess { ReadOnly, Writable };
// Forbids or allows programs of the device to change and delete the file.
[[nodiscard]] bool SetDeviceFileAccess(const std::u16string& devicePath, FileAccess access);
