// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <set>
#include <string>

namespace tlk {

// Reports when a file of a set is written or replaced, as many editors do; watches their folders.
class FileWatch {
public:
    // Throws FileError if the system cannot watch more.
    FileWatch();
    ~FileWatch();
    FileWatch(const FileWatch&) = delete;
    FileWatch& operator=(const FileWatch&) = delete;

    // Adds a file to the set; it need not exist yet.
    void Add(const std::string& path);
    // Readable when something has changed in a folder.
    int Descriptor() const { return m_descriptor; }
    // Reads the changes; true if they concern a file of the set.
    [[nodiscard]] bool TakeChange();

private:
    int m_descriptor;
    // Names of files by the watch of their folder.
    std::map<int, std::set<std::string>> m_names;
};

// While it lives, files are added to the watch's set before they are read. Only one at a time.
class ReadsWatched {
public:
    explicit ReadsWatched(FileWatch& watch);
    ~ReadsWatched();
    ReadsWatched(const ReadsWatched&) = delete;
    ReadsWatched& operator=(const ReadsWatched&) = delete;

    // Called before opening or looking for a file.
    static void Note(const std::string& path);
};

}  // namespace tlk
