// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

// Reserves a device's folder for one simulator with a window, or for any number of scripts; two that write
// the registry would overwrite each other's changes. The lock ends with the process and leaves nothing in the
// folder.
class DeviceLock {
public:
    enum class Kind { Script, Window };
    // Creates the folder if it is missing. Throws std::runtime_error if another simulator uses it.
    DeviceLock(const std::filesystem::path& folder, Kind kind);
    ~DeviceLock();
    DeviceLock(const DeviceLock&) = delete;
    DeviceLock& operator=(const DeviceLock&) = delete;

private:
    int m_folder;
};
