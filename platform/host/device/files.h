// SPDX-License-Identifier: MIT
// Device paths: relative to the root of the device's folder, with "\" or "/", ignoring case.
#pragma once

#include <host_control.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace host {

struct ResolvedPath {
    // ERROR_SUCCESS if the file or folder exists, ERROR_FILE_NOT_FOUND if only the last name is missing,
    // ERROR_PATH_NOT_FOUND if a folder is missing or the path leads out of the device.
    DWORD error = ERROR_PATH_NOT_FOUND;
    // Empty with ERROR_PATH_NOT_FOUND.
    std::filesystem::path path;
};

// ".." stays at the root, as on the device. A symbolic link that leads out of the device's folder counts as
// missing.
ResolvedPath ResolvePath(std::u16string_view devicePath);

struct SplitPath {
    std::u16string_view folder;  // may be empty; without a separator at its end
    std::u16string_view name;    // after the last separator
};
SplitPath SplitDevicePath(std::u16string_view devicePath);

struct DirectoryEntry {
    std::u16string name;
    bool isFolder;
};
// The entries of a folder that `wanted` accepts and programs of the device can see, in ascending order of
// their names, ignoring case. Omits names that are not valid UTF-8, do not fit into WIN32_FIND_DATAW or
// contain "\", and links that are broken or lead out.
std::vector<DirectoryEntry> ListFolder(const std::filesystem::path& folder,
                                       const std::function<bool(std::u16string_view)>& wanted);

// Tells whether a file is in use, for instance as a loaded module, and cannot be deleted.
using FileInUse = bool (*)(const std::filesystem::path& hostPath);
void SetFileInUse(FileInUse isInUse);

void ResetFiles();
void CountFileHandles(LiveHandles& counts);

}  // namespace host
