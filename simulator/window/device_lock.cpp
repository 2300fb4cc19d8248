// SPDX-License-Identifier: MIT
#include "device_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <stdexcept>

// A file system without locks is used without one.
DeviceLock::DeviceLock(const std::filesystem::path& folder, Kind kind) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) {
        throw std::runtime_error("cannot make the device's folder " + folder.string() + ": " +
                                 error.message());
    }
    m_folder = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (m_folder < 0) return;
    const int mode = kind == Kind::Window ? LOCK_EX : LOCK_SH;
    if (flock(m_folder, mode | LOCK_NB) == 0 || errno != EWOULDBLOCK) return;
    close(m_folder);
    throw std::runtime_error("another simulator is using the device " + folder.string() +
                             ": close it, or name another folder with --device");
}

DeviceLock::~DeviceLock() {
    if (m_folder >= 0) close(m_folder);
}
