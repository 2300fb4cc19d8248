// SPDX-License-Identifier: MIT
#include "device/faults.h"
#include "device/strings.h"
#include "registry/handles.h"
#include "registry/keys.h"

#include <algorithm>
#include <cstring>

namespace host {
namespace {

// Copies at most as much as the buffer holds; always returns the needed size.
LSTATUS CopyData(const std::vector<BYTE>& stored, LPBYTE data, DWORD& size) {
    const DWORD capacity = size;
    size = static_cast<DWORD>(stored.size());
    if (!data) return ERROR_SUCCESS;
    if (capacity < stored.size()) return ERROR_MORE_DATA;
    std::copy(stored.begin(), stored.end(), data);
    return ERROR_SUCCESS;
}

void Store(LPDWORD target, std::size_t value) {
    if (target) *target = static_cast<DWORD>(value);
}

}  // namespace

std::u16string ReadRegistryText(RegistryRoot root, std::u16string_view key, std::u16string_view name) {
    const std::shared_ptr<RegistryKey> found = FindKey(Registry().Root(root), key);
    const RegistryValue* value = found ? FindValue(*found, name) : nullptr;
    if (!value || (value->type != REG_SZ && value->type != REG_EXPAND_SZ)) return {};
    std::u16string text(value->data.size() / sizeof(WCHAR), u'\0');
    std::memcpy(text.data(), value->data.data(), text.size() * sizeof(WCHAR));
    return text.substr(0, text.find(u'\0'));
}

bool WriteRegistryText(RegistryRoot root, std::u16string_view key, std::u16string_view name,
                       std::u16string_view text) {
    bool created = false;
    const std::shared_ptr<RegistryKey> made = MakeKey(Registry().Root(root), key, created);
    if (!made) return false;
    const bool changed = SetValue(*made, {std::u16string(name), REG_SZ, TextBytes(std::u16string(text))});
    if (created || changed) MarkRegistryChanged();
    return true;
}

}  // namespace host

using namespace host;

LSTATUS WINAPI RegQueryValueExW(HKEY handle, LPCWSTR name, LPDWORD, LPDWORD type, LPBYTE data, LPDWORD size) {
    if (CallFails(Call::RegQueryValue)) return ERROR_NOT_ENOUGH_MEMORY;
    OpenKey opened;
    if (const LSTATUS error = UseKey(handle, KEY_QUERY_VALUE, opened)) return error;
    if (data && !size) return ERROR_INVALID_PARAMETER;
    const RegistryValue* value = FindValue(*opened.key, View(name));
    if (!value) return ERROR_FILE_NOT_FOUND;
    if (type) *type = value->type;
    return size ? CopyData(value->data, data, *size) : ERROR_SUCCESS;
}

LSTATUS WINAPI RegSetValueExW(HKEY handle, LPCWSTR name, DWORD, DWORD type, const BYTE* data, DWORD size) {
    if (CallFails(Call::RegSetValue)) return ERROR_NOT_ENOUGH_MEMORY;
    OpenKey opened;
    if (const LSTATUS error = UseKey(handle, KEY_SET_VALUE, opened)) return error;
    if ((!data && size > 0) || !IsValueName(View(name))) return ERROR_INVALID_PARAMETER;
    RegistryValue value{std::u16string(View(name)), type, {}};
    if (size > 0) value.data.assign(data, data + size);
    if (SetValue(*opened.key, std::move(value))) MarkRegistryChanged();
    return ERROR_SUCCESS;
}

LSTATUS WINAPI RegDeleteValueW(HKEY handle, LPCWSTR name) {
    if (CallFails(Call::RegDelete)) return ERROR_ACCESS_DENIED;
    OpenKey opened;
    if (const LSTATUS error = UseKey(handle, KEY_SET_VALUE, opened)) return error;
    if (opened.key->values.erase(FoldCase(View(name))) == 0) return ERROR_FILE_NOT_FOUND;
    MarkRegistryChanged();
    return ERROR_SUCCESS;
}

// Returns only the numbers of subkeys and values, refuses all else.
LSTATUS WINAPI RegQueryInfoKeyW(HKEY handle, LPWSTR keyClass, LPDWORD classCharacters, LPDWORD,
                                LPDWORD subkeys, LPDWORD longestSubkey, LPDWORD longestClass, LPDWORD values,
                                LPDWORD longestName, LPDWORD longestValue, LPDWORD securityDescriptor,
                                FILETIME* lastWrite) {
    if (CallFails(Call::RegQueryInfo)) return ERROR_NOT_ENOUGH_MEMORY;
    OpenKey opened;
    if (const LSTATUS error = UseKey(handle, KEY_QUERY_VALUE, opened)) return error;
    if (keyClass || classCharacters || longestSubkey || longestClass || longestName || longestValue ||
        securityDescriptor || lastWrite)
        return ERROR_CALL_NOT_IMPLEMENTED;
    Store(subkeys, opened.key->subkeys.size());
    Store(values, opened.key->values.size());
    return ERROR_SUCCESS;
}
