// SPDX-License-Identifier: MIT
#include "file_watch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string>

#include "errors.h"

namespace tlk {
namespace {

FileWatch* g_pWatch = nullptr;

}  // namespace

ReadsWatched::ReadsWatched(FileWatch& watch) { g_pWatch = &watch; }
ReadsWatched::~ReadsWatched() { g_pWatch = nullptr; }

void ReadsWatched::Note(const std::string& path) {
    if (g_pWatch) g_pWatch->Add(path);
}

FileWatch::FileWatch() : m_descriptor(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    if (m_descriptor < 0)
        throw FileError(std::string("files cannot be watched (") + std::strerror(errno) +
                        "): end other programs that watch files");
}

FileWatch::~FileWatch() { close(m_descriptor); }

void FileWatch::Add(const std::string& path) {
    const std::filesystem::path file = std::filesystem::absolute(path);
    const int folder =
        inotify_add_watch(m_descriptor, file.parent_path().c_str(), IN_CLOSE_WRITE | IN_MOVED_TO);
    if (folder >= 0) m_names[folder].insert(file.filename().string());
}

bool FileWatch::TakeChange() {
    bool concerns = false;
    alignas(inotify_event) char events[4096];
    for (ssize_t size; (size = read(m_descriptor, events, sizeof events)) > 0;)
        for (ssize_t at = 0; at < size;) {
            inotify_event event;
            std::memcpy(&event, events + at, sizeof event);
            const char* const name = events + at + sizeof event;
            if (event.mask & IN_Q_OVERFLOW) concerns = true;
            if (event.len > 0 && m_names[event.wd].contains(name)) concerns = true;
            at += static_cast<ssize_t>(sizeof event + event.len);
        }
    return concerns;
}

}  // namespace tlk
