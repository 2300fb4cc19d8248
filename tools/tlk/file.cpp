// SPDX-License-Identifier: MIT
#include "file.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace tlk {
namespace {

// Far more than any source or skin has.
constexpr std::uintmax_t kLargestFile = 64 << 20;

}  // namespace

Bytes ReadFile(const std::string& path) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (error) throw FileError(path + ": cannot be read (" + error.message() + ")");
    if (size > kLargestFile) throw FileError(path + ": too large");
    std::ifstream file(path, std::ios::binary);
    Bytes bytes{std::istreambuf_iterator<char>(file), {}};
    if (!file) throw FileError(path + ": cannot be read");
    return bytes;
}

Module OpenModule(const std::string& path) {
    Bytes file = ReadFile(path);
    try {
        return Module::Parse(std::move(file));
    } catch (const FileError& error) {
        throw FileError(path + ": " + error.what());
    }
}

void WriteFile(const std::string& path, const Bytes& bytes) {
    const std::string part = path + ".part";
    std::ofstream file(part, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    file.close();
    std::error_code error;
    if (file) std::filesystem::rename(part, path, error);
    if (!file || error) {
        std::filesystem::remove(part, error);
        throw FileError(path + ": cannot be written; is the folder there and writable?");
    }
}

void FailAt(const SourceError& error, const std::string& source) {
    const std::string& file = error.Place().file;
    const std::string line = error.Line() == 0 ? "" : ":" + std::to_string(error.Line());
    throw FileError((file.empty() ? source : file) + line + ": " + error.what());
}

}  // namespace tlk
