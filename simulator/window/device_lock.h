// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

// Keeps a device's folder for one simulator with a window, or for any number of scripts: two that write the
// registry at their end would lose what the other one changed. The lock ends with the process in any case,
// and leaves nothing in the folder.
class DeviceLock {
public:
    enum class Kind { Script, Window };
    // Makes the folder when it is missing. Throws std::runtime_error when another simulator holds it.
    DeviceLock(const std::filesystem::path& folder, Kind kind);
    ~DeviceLock();
    DeviceLock(const DeviceLock&) = delete;
    DeviceLock& operator=(const DeviceLock&) = delete;

private:
    int m_folder;
};
