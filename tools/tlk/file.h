// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "bytes.h"
#include "errors.h"
#include "module_reader.h"

namespace tlk {

// Throws FileError, which names the file.
[[nodiscard]] Bytes ReadFile(const std::string& path);

// A library file by its path. Throws FileError, which names the file.
[[nodiscard]] Module OpenModule(const std::string& path);

// A file that could not be written whole is not left behind, and an older one not lost; one that is
// write-protected or begins in another way, which is no file of this kind, is not replaced. Throws FileError.
void WriteFile(const std::string& path, const Bytes& bytes);

// Throws the faults of a source as a FileError, a line for each with its file and line in front; `source` is
// the file when a fault names none.
[[noreturn]] void FailAt(const SourceError& error, const std::string& source);

}  // namespace tlk
