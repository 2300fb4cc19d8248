// SPDX-License-Identifier: MIT
#include "file.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

#include "file_watch.h"
#include "name_list.h"

namespace tlk {
namespace {

namespace fs = std::filesystem;

// Far larger than any source or skin.
constexpr std::uintmax_t kLargestFile = 64 << 20;

// The length of the signature that all skins, or all pictures, begin with.
constexpr std::size_t kMarkSize = 2;

[[noreturn]] void FailToWrite(const std::string& path, const std::string& reason) {
    throw FileError(path + ": cannot be written (" + reason +
                    "): name another file, or check the folder, its rights and free space");
}

// Protects the author's sources from a slip on the command line: replaces only a file of the same kind.
void RequireReplaceable(const std::string& path, const fs::path& target, const Bytes& bytes) {
    if ((fs::status(target).permissions() & fs::perms::owner_write) == fs::perms::none)
        FailToWrite(path, "it is write-protected");
    std::ifstream old(target, std::ios::binary);
    char mark[kMarkSize]{};
    old.read(mark, kMarkSize);
    if (old.gcount() != 0 && AsText(bytes).substr(0, kMarkSize) != std::string_view(mark, kMarkSize))
        FailToWrite(path, "it is a file of another kind");
}

std::error_code Write(const fs::path& target, const Bytes& bytes) {
    errno = 0;
    std::ofstream file(target, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (file) return {};
    return {errno == 0 ? EIO : errno, std::generic_category()};
}

std::error_code Replace(const fs::path& target, const Bytes& bytes) {
    fs::path part = target;
    part += ".part";
    std::error_code error = Write(part, bytes);
    if (!error) fs::rename(part, target, error);
    std::error_code ignored;
    if (error) fs::remove(part, ignored);
    return error;
}

}  // namespace

Bytes ReadFile(const std::string& path) {
    ReadsWatched::Note(path);
    std::error_code error;
    const std::uintmax_t size = fs::file_size(path, error);
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
    std::error_code error;
    // Replaces the target of a link, not the link.
    fs::path target = fs::canonical(path, error);
    if (error) target = path;
    const fs::file_type type = fs::status(target, error).type();
    if (type == fs::file_type::regular) RequireReplaceable(path, target, bytes);
    // Writes to devices and pipes instead of replacing them.
    const bool isFile = type == fs::file_type::regular || type == fs::file_type::not_found;
    error = isFile ? Replace(target, bytes) : Write(target, bytes);
    if (error) FailToWrite(path, error.message());
}

TemporaryFolder::TemporaryFolder() {
    std::string name = (fs::temp_directory_path() / "tlk-XXXXXX").string();
    if (!mkdtemp(name.data())) throw FileError(name + ": no folder can be made there");
    m_path = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

void FailAt(const SourceError& error, const std::string& source) {
    std::string lines;
    for (const SourceFault& fault : error.Faults()) {
        const auto& [file, line] = fault.place;
        AppendName(lines,
                   (file.empty() ? source : file) + (line == 0 ? "" : ":" + std::to_string(line)) + ": " +
                       fault.text,
                   "\n");
    }
    throw FileError(lines);
}

}  // namespace tlk
