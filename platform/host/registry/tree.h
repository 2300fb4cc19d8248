// SPDX-License-Identifier: MIT
// The registry's content, without handles: keys within keys, each with its values.
#pragma once

#include <windows.h>

#include <array>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace host {

struct RegistryValue {
    std::u16string name;  // as first written; empty for the default value
    DWORD type = REG_NONE;
    std::vector<BYTE> data;

    bool operator==(const RegistryValue&) const = default;
};
// The stored form of a string, with its null.
std::vector<BYTE> TextBytes(const std::u16string& text);

struct RegistryKey {
    std::u16string name;
    std::size_t depth = 0;  // below the root
    // By name in upper case: names that differ only in case are equal, and the order ignores case.
    std::map<std::u16string, std::shared_ptr<RegistryKey>> subkeys;
    std::map<std::u16string, RegistryValue> values;
    // A handle may outlive its key.
    bool deleted = false;
};

enum class RegistryRoot { ClassesRoot, CurrentUser, LocalMachine };
inline constexpr std::array<std::u16string_view, 3> kRegistryRootNames = {
    u"HKEY_CLASSES_ROOT", u"HKEY_CURRENT_USER", u"HKEY_LOCAL_MACHINE"};

// Limits, so that walking the tree is bounded and a file of lines can hold it.
inline constexpr std::size_t kMaxKeyNameLength = 255;
inline constexpr std::size_t kMaxValueNameLength = 16383;
inline constexpr std::size_t kMaxKeyDepth = 512;

// No control characters, no lone surrogates, not too long, and no "\" in a key's name.
bool IsKeyName(std::u16string_view name);
bool IsValueName(std::u16string_view name);

// The names of a path; empty ones between or around separators do not count.
std::vector<std::u16string_view> SplitKeyPath(std::u16string_view path);

class RegistryTree {
public:
    RegistryTree();
    const std::shared_ptr<RegistryKey>& Root(RegistryRoot root) const {
        return m_roots[static_cast<std::size_t>(root)];
    }

private:
    std::array<std::shared_ptr<RegistryKey>, kRegistryRootNames.size()> m_roots;
};

// Null if a name in the path is missing.
std::shared_ptr<RegistryKey> FindKey(const std::shared_ptr<RegistryKey>& key, std::u16string_view path);
// Creates missing keys. Null, without creating any, if a name is invalid or the path is too deep.
std::shared_ptr<RegistryKey> MakeKey(const std::shared_ptr<RegistryKey>& key, std::u16string_view path,
                                     bool& created);
// Deletes the key with all its subkeys and marks each as deleted; false if there is none, or the path is
// empty.
bool DeleteKey(RegistryKey& key, std::u16string_view path);

const RegistryValue* FindValue(const RegistryKey& key, std::u16string_view name);
// False if the value was the same already. An existing value keeps the spelling of its name.
bool SetValue(RegistryKey& key, RegistryValue value);

}  // namespace host
