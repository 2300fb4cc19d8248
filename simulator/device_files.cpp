// SPDX-License-Identifier: MIT
#include "device_files.h"

#include <host_control.h>

#include <cerrno>
#include <fstream>
#include <iterator>

#include "script.h"
#include "text.h"

namespace fs = std::filesystem;

namespace {

// The end of a message.
std::string Reason(const std::error_code& error) { return error ? ": " + error.message() : ""; }

std::string ReadFile(const fs::path& path) {
    std::error_code error;
    std::ifstream file(path, std::ios::binary);
    if (!file || fs::is_directory(path, error)) {
        throw ScriptError("cannot read " + path.string() +
                          (file ? ": it is a folder" : Reason({errno, std::generic_category()})));
    }
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

bool IsFile(const fs::path& path) {
    std::error_code error;
    return fs::is_regular_file(path, error);
}

bool Holds(const fs::path& path, const std::string& bytes) {
    std::error_code error;
    if (!IsFile(path) || fs::file_size(path, error) != bytes.size()) return false;
    return ReadFile(path) == bytes;
}

// Writes the new file under another name first, so that the device never sees half of it.
void ReplaceFile(const fs::path& path, const std::string& bytes) {
    fs::path draft = path;
    draft += ".new";
    errno = 0;
    std::ofstream file(draft, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    std::error_code error(file ? 0 : errno, std::generic_category());
    if (file) fs::rename(draft, path, error);
    if (!file || error) {
        std::error_code ignored;
        fs::remove(draft, ignored);
        throw ScriptError("cannot write " + path.string() + Reason(error));
    }
}

// The host path of the file, which may not exist yet. Throws if its folder does not exist.
fs::path Locate(const std::u16string& devicePath) {
    fs::path path = host::HostPath(devicePath);
    if (path.empty()) throw ScriptError("the device has no folder for " + Escaped(devicePath));
    return path;
}

void MakeFolderOf(const std::u16string& devicePath) {
    const std::u16string folder = devicePath.substr(0, devicePath.find_last_of(u'\\'));
    if (folder.empty()) return;
    const fs::path path = Locate(folder);
    std::error_code error;
    fs::create_directories(path, error);
    if (error) throw ScriptError("cannot make the folder " + path.string() + Reason(error));
}

}  // namespace

std::string ReadDeviceFile(const std::u16string& devicePath) { return ReadFile(Locate(devicePath)); }

void WriteDeviceFile(const std::u16string& devicePath, const std::string& bytes) {
    MakeFolderOf(devicePath);
    ReplaceFile(Locate(devicePath), bytes);
}

bool HasDeviceFile(const std::u16string& devicePath) {
    std::error_code error;
    return fs::exists(host::HostPath(devicePath), error);
}

void CopyToDevice(const fs::path& source, const std::u16string& devicePath) {
    const std::string bytes = ReadFile(source);
    MakeFolderOf(devicePath);
    const fs::path path = Locate(devicePath);
    if (!Holds(path, bytes)) ReplaceFile(path, bytes);
}

void RenewDeviceFile(const std::u16string& devicePath, const fs::path& source) {
    ReplaceFile(Locate(devicePath), ReadFile(source));
}

bool DeleteDeviceFile(const std::u16string& devicePath) {
    const fs::path path = host::HostPath(devicePath);
    if (!IsFile(path)) return false;
    std::error_code error;
    if (!fs::remove(path, error)) throw ScriptError("cannot delete " + path.string() + Reason(error));
    return true;
}

bool SetDeviceFileAccess(const std::u16string& devicePath, FileAccess access) {
    const fs::path path = host::HostPath(devicePath);
    if (!IsFile(path)) return false;
    constexpr fs::perms write = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    std::error_code error;
    if (access == FileAccess::ReadOnly)
        fs::permissions(path, write, fs::perm_options::remove, error);
    else
        fs::permissions(path, fs::perms::owner_write, fs::perm_options::add, error);
    if (error) throw ScriptError("cannot change the attributes of " + path.string() + Reason(error));
    return true;
}
