// SPDX-License-Identifier: MIT
// The file calls: find and delete.
#include "device/files.h"

#include "device/faults.h"
#include "device/handles.h"
#include "device/strings.h"

#include <unicode.h>

#include <cerrno>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

namespace host {
namespace {

// A search collects its results when it begins, as the folder may change afterwards.
struct Search {
    std::vector<DirectoryEntry> entries;
    std::size_t next = 0;
};
HandleTable<Search, HandleKind::Find> g_searches;
FileInUse g_isInUse = [](const std::filesystem::path&) { return false; };

// "*" matches any number of characters, "?" exactly one. Backtracks only to the last "*", so the time is at
// most the product of the lengths.
bool MatchesPattern(std::u16string_view name, std::u16string_view pattern) {
    std::size_t n = 0;
    std::size_t p = 0;
    std::size_t afterStar = std::u16string_view::npos;
    std::size_t starEnd = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == u'*') {
            afterStar = ++p;
            starEnd = n;
        } else if (p < pattern.size() && (pattern[p] == u'?' || FoldCase(pattern[p]) == FoldCase(name[n]))) {
            ++p;
            ++n;
        } else if (afterStar != std::u16string_view::npos) {
            p = afterStar;
            n = ++starEnd;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(u'*', p) == std::u16string_view::npos;
}

// Looks at the permission bits, not at whether this process could write: it may run as root.
bool IsReadOnly(const struct stat& status) { return (status.st_mode & S_IWUSR) == 0; }

// Takes the next entry; false if there is none.
bool TakeNext(Search& search, WIN32_FIND_DATAW& data) {
    if (search.next >= search.entries.size()) return false;
    const DirectoryEntry& entry = search.entries[search.next++];
    data.dwFileAttributes = entry.isFolder ? FILE_ATTRIBUTE_DIRECTORY : 0;
    data.cFileName[entry.name.copy(data.cFileName, MAX_PATH - 1)] = 0;
    return true;
}

std::vector<DirectoryEntry> FindMatches(const std::filesystem::path& folder, std::u16string_view pattern) {
    // "*.*" traditionally matches all names, even without a dot.
    if (pattern == u"*.*") pattern = u"*";
    return ListFolder(folder, [pattern](std::u16string_view name) { return MatchesPattern(name, pattern); });
}

// Without wildcards the name is resolved like any path, so an exact match wins here too.
std::vector<DirectoryEntry> FindOne(const std::filesystem::path& file) {
    std::optional<std::u16string> name = unicode::FromUtf8(file.filename().string());
    if (!name || name->size() >= MAX_PATH) return {};
    std::error_code error;
    return {{std::move(*name), std::filesystem::is_directory(file, error)}};
}

DWORD Find(std::u16string_view pattern, Search& search) {
    const SplitPath split = SplitDevicePath(pattern);
    const ResolvedPath folder = ResolvePath(split.folder);
    std::error_code error;
    if (pattern.empty() || folder.error != ERROR_SUCCESS ||
        !std::filesystem::is_directory(folder.path, error))
        return ERROR_PATH_NOT_FOUND;
    // "\folder\", "." and ".." are no entries of a folder.
    if (split.name.empty() || split.name == u"." || split.name == u"..") return ERROR_FILE_NOT_FOUND;
    if (split.name.find_first_of(u"*?") != std::u16string_view::npos)
        search.entries = FindMatches(folder.path, split.name);
    else if (const ResolvedPath file = ResolvePath(pattern); file.error == ERROR_SUCCESS)
        search.entries = FindOne(file.path);
    return ERROR_SUCCESS;
}

DWORD Delete(std::u16string_view devicePath) {
    const ResolvedPath file = ResolvePath(devicePath);
    if (file.error != ERROR_SUCCESS) return file.error;
    struct stat status;
    if (stat(file.path.c_str(), &status) != 0) return ERROR_FILE_NOT_FOUND;
    if (S_ISDIR(status.st_mode) || IsReadOnly(status) || g_isInUse(file.path)) return ERROR_ACCESS_DENIED;
    if (unlink(file.path.c_str()) == 0) return ERROR_SUCCESS;
    return errno == ENOENT ? ERROR_FILE_NOT_FOUND : ERROR_ACCESS_DENIED;
}

}  // namespace

void SetFileInUse(FileInUse isInUse) { g_isInUse = isInUse; }

void ResetFiles() { g_searches.CloseAll(); }

void CountFileHandles(LiveHandles& counts) { counts.finds = g_searches.Count(); }

}  // namespace host

using namespace host;

HANDLE WINAPI FindFirstFileW(LPCWSTR pattern, WIN32_FIND_DATAW* data) {
    if (CallFails(Call::FindFile, ERROR_FILE_NOT_FOUND)) return INVALID_HANDLE_VALUE;
    if (!pattern || !data) return Fail(ERROR_INVALID_PARAMETER, INVALID_HANDLE_VALUE);
    auto search = std::make_unique<Search>();
    DWORD error = Find(pattern, *search);
    if (error == ERROR_SUCCESS && !TakeNext(*search, *data)) error = ERROR_FILE_NOT_FOUND;
    if (error != ERROR_SUCCESS) return Fail(error, INVALID_HANDLE_VALUE);
    const std::uint32_t handle = g_searches.Open(std::move(search));
    return handle ? ToHandle<HANDLE>(handle) : INVALID_HANDLE_VALUE;
}

BOOL WINAPI FindNextFileW(HANDLE find, WIN32_FIND_DATAW* data) {
    Search* search = g_searches.Find(find);
    if (!search || !data) return Fail(search ? ERROR_INVALID_PARAMETER : ERROR_INVALID_HANDLE, FALSE);
    if (TakeNext(*search, *data)) return TRUE;
    return Fail(ERROR_NO_MORE_FILES, FALSE);
}

BOOL WINAPI FindClose(HANDLE find) {
    if (g_searches.Close(find)) return TRUE;
    return Fail(ERROR_INVALID_HANDLE, FALSE);
}

BOOL WINAPI DeleteFileW(LPCWSTR path) {
    if (CallFails(Call::DeleteFile, ERROR_ACCESS_DENIED)) return FALSE;
    const DWORD error = path ? Delete(path) : ERROR_INVALID_PARAMETER;
    if (error == ERROR_SUCCESS) return TRUE;
    return Fail(error, FALSE);
}
