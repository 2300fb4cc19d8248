// SPDX-License-Identifier: MIT
#include "modules/modules.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace host {
namespace {

constexpr off_t kMaxFileSize = 64 << 20;

class FileDescriptor {
public:
    explicit FileDescriptor(int descriptor) : m_descriptor(descriptor) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() {
        if (m_descriptor >= 0) close(m_descriptor);
    }
    int Get() const { return m_descriptor; }

private:
    int m_descriptor;
};

// False if the file ends earlier, because another program has truncated it.
bool ReadFully(int descriptor, BYTE* target, std::size_t size) {
    while (size > 0) {
        const ssize_t count = read(descriptor, target, size);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        target += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

}  // namespace

std::optional<FileImage> FileImage::Read(const std::filesystem::path& path) {
    // Non-blocking: a pipe with this name must not stop the device.
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status;
    if (file.Get() < 0 || fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode) ||
        status.st_size <= 0 || status.st_size > kMaxFileSize)
        return std::nullopt;
    const auto size = static_cast<std::size_t>(status.st_size);
    void* memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) return std::nullopt;
    auto* bytes = static_cast<BYTE*>(memory);
    FileImage image({bytes, size});
    if (!ReadFully(file.Get(), bytes, size) || mprotect(memory, size, PROT_READ) != 0) return std::nullopt;
    return image;
}

FileImage::~FileImage() {
    if (!m_bytes.empty()) munmap(const_cast<BYTE*>(m_bytes.data()), m_bytes.size());
}

}  // namespace host
