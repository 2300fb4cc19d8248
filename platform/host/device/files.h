// SPDX-License-Identifier: MIT
// Paths of the device: from the root of its folder, with "\" or "/", without regard to case.
#pragma once

#include <host_control.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace host {

struct ResolvedPath {
    // ERROR_SUCCESS when the file or folder exists, ERROR_FILE_NOT_FOUND when only the last name is missing,
    // ERROR_PATH_NOT_FOUND when the way to it is missing or leads out of the device.
    DWORD error = ERROR_PATH_NOT_FOUND;
    // Empty with ERROR_PATH_NOT_FOUND.
    std::filesystem::path path;
};

// ".." never leads above the root: there it stays at the root, as on the device. A symbolic link that leads
// out of the device's folder counts as missing.
ResolvedPath ResolvePath(std::u16string_view devicePath);

struct SplitPath {
    std::u16string_view folder;  // may be empty; without the separator
    std::u16string_view name;    // what follows the last separator
};
SplitPath SplitDevicePath(std::u16string_view devicePath);

struct DirectoryEntry {
    std::u16string name;
    bool isFolder;
};
// What a program of the device can see in a folder of the names that `wanted` accepts, in ascending order of
// the names, ignoring case. Left out: names that are no valid UTF-8, that a WIN32_FIND_DATAW cannot hold or
// that contain "\", and links that lead nowhere or out.
std::vector<DirectoryEntry> ListFolder(const std::filesystem::path& folder,
                                       const std::function<bool(std::u16string_view)>& wanted);

// What tells of a file that it is in use, so that it cannot be deleted: a program that runs, for instance.
using FileInUse = bool (*)(const std::filesystem::path& hostPath);
void SetFileInUse(FileInUse isInUse);

void ResetFiles();
void CountFileHandles(LiveHandles& counts);

}  // namespace host
