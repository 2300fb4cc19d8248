// SPDX-License-Identifier: MIT
#include "device/files.h"

#include "device/device.h"
#include "device/strings.h"

#include <unicode.h>

#include <algorithm>
#include <memory>
#include <utility>

#include <dirent.h>

namespace host {
namespace {

namespace fs = std::filesystem;

constexpr std::u16string_view kSeparators = u"\\/";

// The names from the root on; "." and ".." are resolved.
std::vector<std::u16string_view> SplitNames(std::u16string_view path) {
    std::vector<std::u16string_view> names;
    for (const std::u16string_view name : Split(path, kSeparators)) {
        if (name != u".." && name != u".") names.push_back(name);
        if (name == u".." && !names.empty()) names.pop_back();
    }
    return names;
}

// Is this existing file or folder inside the device, after following links?
bool IsInDevice(const fs::path& path) {
    std::error_code error;
    const fs::path target = fs::canonical(path, error);
    if (error) return false;
    const fs::path& root = Options().folder;
    return std::mismatch(root.begin(), root.end(), target.begin(), target.end()).first == root.end();
}

struct FolderCloser {
    void operator()(DIR* folder) const { closedir(folder); }
};

// Calls visit(name, type) for each entry, for none if the folder cannot be read. Uses readdir, which returns
// the type with the name, so that searching a folder of many skins is quick.
template <typename Visitor>
void ForEachEntry(const fs::path& folder, Visitor visit) {
    const std::unique_ptr<DIR, FolderCloser> stream(opendir(folder.c_str()));
    while (const dirent* entry = stream ? readdir(stream.get()) : nullptr) {
        const std::string_view name = entry->d_name;
        if (name == "." || name == "..") continue;
        visit(name, entry->d_type);
    }
}

// The entry of this name; an exact match wins over one that differs in case. Empty if there is none.
fs::path FindEntry(const fs::path& folder, std::u16string_view name) {
    const fs::path exact = folder / unicode::ToUtf8(name);
    std::error_code error;
    if (fs::exists(fs::symlink_status(exact, error))) return exact;
    // If several differ only in case, the first in byte order, so that the choice is always the same.
    std::string best;
    ForEachEntry(folder, [&](std::string_view entry, unsigned char) {
        const std::optional<std::u16string> entryName = unicode::FromUtf8(entry);
        if (!entryName || !EqualIgnoringCase(*entryName, name)) return;
        if (best.empty() || entry < best) best = entry;
    });
    return best.empty() ? fs::path() : folder / best;
}

}  // namespace

SplitPath SplitDevicePath(std::u16string_view devicePath) {
    const std::size_t last = devicePath.find_last_of(kSeparators);
    if (last == std::u16string_view::npos) return {{}, devicePath};
    return {devicePath.substr(0, last), devicePath.substr(last + 1)};
}

ResolvedPath ResolvePath(std::u16string_view devicePath) {
    fs::path path = Options().folder;
    if (path.empty()) return {};
    const std::vector<std::u16string_view> names = SplitNames(devicePath);
    for (std::size_t i = 0; i < names.size(); ++i) {
        // No host file can have such a name.
        if (!unicode::IsWellFormed(names[i])) return {};
        const fs::path entry = FindEntry(path, names[i]);
        if (entry.empty()) {
            std::error_code error;
            if (i + 1 < names.size() || !fs::is_directory(path, error)) return {};
            return {ERROR_FILE_NOT_FOUND, path / unicode::ToUtf8(names[i])};
        }
        // Checked at each step: nothing is looked up behind a link that leads out.
        std::error_code error;
        if (fs::is_symlink(entry, error) && !IsInDevice(entry)) return {};
        path = entry;
    }
    return {ERROR_SUCCESS, path};
}

fs::path HostPath(const std::u16string& devicePath) { return ResolvePath(devicePath).path; }

std::vector<DirectoryEntry> ListFolder(const fs::path& folder,
                                       const std::function<bool(std::u16string_view)>& wanted) {
    struct Sortable {
        std::u16string key;
        DirectoryEntry entry;
    };
    std::vector<std::unique_ptr<Sortable>> found;
    ForEachEntry(folder, [&](std::string_view hostName, unsigned char type) {
        std::optional<std::u16string> name = unicode::FromUtf8(hostName);
        if (!name || name->size() >= MAX_PATH || name->find(u'\\') != std::u16string::npos) return;
        if (!wanted(*name)) return;
        bool isFolder = type == DT_DIR;
        if (type == DT_LNK || type == DT_UNKNOWN) {
            const fs::path path = folder / hostName;
            std::error_code error;
            if (fs::is_symlink(path, error) && !IsInDevice(path)) return;
            isFolder = fs::is_directory(path, error);
        }
        std::u16string key = FoldCase(*name);
        found.push_back(std::make_unique<Sortable>(Sortable{std::move(key), {std::move(*name), isFolder}}));
    });
    std::sort(found.begin(), found.end(), [](const auto& a, const auto& b) {
        const int order = a->key.compare(b->key);
        return order != 0 ? order < 0 : a->entry.name < b->entry.name;
    });
    std::vector<DirectoryEntry> entries;
    entries.reserve(found.size());
    for (const auto& sortable : found)
        entries.push_back(std::move(sortable->entry));
    return entries;
}

}  // namespace host
