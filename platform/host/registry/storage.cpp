// SPDX-License-Identifier: MIT
// The registry's file. It is replaced as a whole, so there is a good file whatever happens during the write.
// A file that cannot be parsed is renamed, never overwritten.
#include "device/device.h"
#include "device/faults.h"
#include "registry/file.h"
#include "registry/keys.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <sstream>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace host {
namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t kMaxFileSize = 64 << 20;

RegistryTree g_tree;
bool g_changed = false;
// Set if there is a file that could neither be read nor renamed; it must not be replaced.
bool g_fileLocked = false;

fs::path File() { return Options().folder / "device.reg"; }

// Renames the file to an unused name; empty on failure.
fs::path PutAside(const fs::path& file) {
    for (int n = 1; n < 1000; ++n) {
        const fs::path aside = file.string() + ".damaged" + (n == 1 ? "" : "-" + std::to_string(n));
        std::error_code error;
        if (fs::exists(fs::symlink_status(aside, error))) continue;
        fs::rename(file, aside, error);
        return error ? fs::path() : aside;
    }
    return {};
}

// `where` is the file, with a line number if there is one.
void Reject(const std::string& where, const std::string& what) {
    const fs::path aside = PutAside(File());
    g_fileLocked = aside.empty();
    const std::string fate =
        g_fileLocked ? "it could not be renamed, so no change will be saved" : "kept as " + aside.string();
    Report(where + ": " + what + "; " + fate + ", the registry starts empty");
}

std::optional<std::string> ReadWhole(const fs::path& file) {
    std::error_code error;
    if (!fs::is_regular_file(file, error) || fs::file_size(file, error) > kMaxFileSize || error)
        return std::nullopt;
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    // For an empty file this sets an error on the target, not on the source.
    text << stream.rdbuf();
    if (!stream.is_open() || stream.bad()) return std::nullopt;
    return text.str();
}

bool WriteAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = write(descriptor, text.data(), text.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return false;
        text.remove_prefix(static_cast<std::size_t>(count));
    }
    return !Options().durable || fsync(descriptor) == 0;
}

// False and errno on failure.
bool WriteFile(const fs::path& file, std::string_view text) {
    const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (descriptor < 0) return false;
    const bool written = WriteAll(descriptor, text);
    const int writeError = errno;
    const bool closed = close(descriptor) == 0;
    if (!written) errno = writeError;
    return written && closed;
}

// Makes the new name durable. If that fails, the file itself is complete all the same.
void SyncFolder(const fs::path& folder) {
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    fsync(descriptor);
    close(descriptor);
}

bool ReplaceFile(std::string_view text) {
    if (CallFails(Call::WriteRegistryFile)) {
        errno = ENOSPC;
        return false;
    }
    const fs::path temporary = File().string() + ".new";
    if (WriteFile(temporary, text) && rename(temporary.c_str(), File().c_str()) == 0) {
        if (Options().durable) SyncFolder(Options().folder);
        return true;
    }
    const int error = errno;
    unlink(temporary.c_str());
    errno = error;
    return false;
}

}  // namespace

const RegistryTree& Registry() { return g_tree; }

void ForgetRegistry() {
    g_tree = RegistryTree();
    g_changed = false;
    g_fileLocked = false;
}

void MarkRegistryChanged() { g_changed = true; }

void StartRegistry() {
    ForgetRegistry();
    std::error_code error;
    if (!fs::exists(fs::symlink_status(File(), error))) return;
    const std::optional<std::string> text = ReadWhole(File());
    if (!text) return Reject(File().string(), "cannot be read");
    std::variant<RegistryTree, RegistryFileError> parsed = ParseRegistryFile(*text);
    if (const auto* damage = std::get_if<RegistryFileError>(&parsed))
        return Reject(File().string() + ":" + std::to_string(damage->line), damage->what);
    g_tree = std::move(std::get<RegistryTree>(parsed));
}

bool FlushRegistry() {
    if (!g_changed) return true;
    if (g_fileLocked) return false;
    if (ReplaceFile(FormatRegistryFile(g_tree))) {
        g_changed = false;
        return true;
    }
    Report(File().string() + ": cannot be written: " + std::strerror(errno) +
           "; the old file stays, and the next change is saved together with this one");
    return false;
}

}  // namespace host
