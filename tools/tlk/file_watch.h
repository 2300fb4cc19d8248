// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <set>
#include <string>

namespace tlk {

// Tells when a file of a set is written, or another one is put in its place, as many editors save: folders
// are watched for that.
class FileWatch {
public:
    // Throws FileError when the system can watch no more.
    FileWatch();
    ~FileWatch();
    FileWatch(const FileWatch&) = delete;
    FileWatch& operator=(const FileWatch&) = delete;

    // Adds to the set a file, which need not be there yet.
    void Add(const std::string& path);
    // Readable when something has happened in a folder.
    int Descriptor() const { return m_Descriptor; }
    // Takes what has happened; true when it concerns a file of the set.
    [[nodiscard]] bool TakeChange();

private:
    int m_Descriptor;
    // Names of files by the watch of their folder.
    std::map<int, std::set<std::string>> m_Names;
};

// While it lives, files come into the watch's set before they are read. One at a time.
class ReadsWatched {
public:
    explicit ReadsWatched(FileWatch& watch);
    ~ReadsWatched();
    ReadsWatched(const ReadsWatched&) = delete;
    ReadsWatched& operator=(const ReadsWatched&) = delete;

    // Called by whatever opens a file or looks for one.
    static void Note(const std::string& path);
};

}  // namespace tlk
