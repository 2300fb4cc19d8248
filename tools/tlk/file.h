// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>

#include "bytes.h"
#include "errors.h"
#include "module_reader.h"

namespace tlk {

// Throws FileError, which names the file.
[[nodiscard]] Bytes ReadFile(const std::string& path);

// Opens a library file. Throws FileError, which names the file.
[[nodiscard]] Module OpenModule(const std::string& path);

// Writes the file completely or not at all, which keeps an older one. Does not replace a write-protected
// file, or one that begins differently and so is of another kind. Throws FileError.
void WriteFile(const std::string& path, const Bytes& bytes);

// A temporary folder, deleted with the object. Throws FileError.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string Path(const std::string& name) const { return (m_path / name).string(); }

private:
    std::filesystem::path m_path;
};

// Throws the faults of a source as a FileError, a line for each, which begins with its file and line;
// `source` is the file of faults that name none.
[[noreturn]] void FailAt(const SourceError& error, const std::string& source);

}  // namespace tlk
