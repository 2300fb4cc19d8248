// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <set>
#include <string>

namespace tlk {

// The files that are read while it lives, also those that are looked for and not there. One at a time.
class ReadFiles {
public:
    ReadFiles();
    ~ReadFiles();
    ReadFiles(const ReadFiles&) = delete;
    ReadFiles& operator=(const ReadFiles&) = delete;

    const std::set<std::string>& Paths() const { return m_Paths; }
    // Called by whatever opens a file.
    static void Note(const std::string& path);

private:
    std::set<std::string> m_Paths;
};

// Tells when a file of a set is written, or another one is put in its place, as many editors save: folders
// are watched for that.
class FileWatch {
public:
    // Throws FileError when the system can watch no more.
    FileWatch();
    ~FileWatch();
    FileWatch(const FileWatch&) = delete;
    FileWatch& operator=(const FileWatch&) = delete;

    // Adds to what is watched.
    void Add(const std::set<std::string>& paths);
    // Readable when something has happened in a folder.
    int Descriptor() const { return m_Descriptor; }
    // Takes what has happened; true when it concerns a file of the set.
    [[nodiscard]] bool TakeChange();

private:
    int m_Descriptor;
    // Names of files by the watch of their folder.
    std::map<int, std::set<std::string>> m_Names;
};

}  // namespace tlk
