// SPDX-License-Identifier: MIT
// Registry calls for keys; those for values are in values.cpp.
#include "registry/keys.h"

#include "device/device.h"
#include "device/faults.h"
#include "device/strings.h"
#include "registry/handles.h"

#include <algorithm>
#include <iterator>

namespace host {
namespace {

HandleTable<OpenKey, HandleKind::Key> g_keys;

std::optional<RegistryRoot> PredefinedRoot(HKEY key) {
    if (key == HKEY_CLASSES_ROOT) return RegistryRoot::ClassesRoot;
    if (key == HKEY_CURRENT_USER) return RegistryRoot::CurrentUser;
    if (key == HKEY_LOCAL_MACHINE) return RegistryRoot::LocalMachine;
    return std::nullopt;
}

LSTATUS NewHandle(std::shared_ptr<RegistryKey> key, REGSAM access, HKEY* result) {
    *result = ToHandle<HKEY>(g_keys.Open(std::make_unique<OpenKey>(OpenKey{std::move(key), access})));
    return *result ? ERROR_SUCCESS : ERROR_NOT_ENOUGH_MEMORY;
}

bool HasOverlongName(std::u16string_view path) {
    return std::ranges::any_of(
        SplitKeyPath(path), [](std::u16string_view name) { return name.size() > kMaxKeyNameLength; });
}

LSTATUS Open(HKEY handle, std::u16string_view subkey, REGSAM access, HKEY* result) {
    OpenKey parent;
    if (const LSTATUS error = UseKey(handle, 0, parent)) return error;
    if (HasOverlongName(subkey)) return ERROR_INVALID_PARAMETER;
    std::shared_ptr<RegistryKey> key = FindKey(parent.key, subkey);
    return key ? NewHandle(std::move(key), access, result) : ERROR_FILE_NOT_FOUND;
}

// Whether a subkey may be created depends on the key, which always allows it here, and not on the handle's
// access.
LSTATUS Create(HKEY handle, std::u16string_view subkey, REGSAM access, HKEY* result, LPDWORD disposition) {
    OpenKey parent;
    if (const LSTATUS error = UseKey(handle, 0, parent)) return error;
    std::shared_ptr<RegistryKey> key = FindKey(parent.key, subkey);
    bool created = false;
    if (!key) {
        key = MakeKey(parent.key, subkey, created);
        if (!key) return ERROR_INVALID_PARAMETER;
        MarkRegistryChanged();
    }
    if (disposition) *disposition = created ? REG_CREATED_NEW_KEY : REG_OPENED_EXISTING_KEY;
    return NewHandle(std::move(key), access, result);
}

}  // namespace

LSTATUS UseKey(HKEY handle, REGSAM access, OpenKey& key) {
    if (const std::optional<RegistryRoot> root = PredefinedRoot(handle)) {
        if (Options().folder.empty()) return ERROR_INVALID_HANDLE;
        key = {Registry().Root(*root), KEY_ALL_ACCESS};
        return ERROR_SUCCESS;
    }
    const OpenKey* found = g_keys.Find(handle);
    if (!found) return ERROR_INVALID_HANDLE;
    if (found->key->deleted) return ERROR_KEY_DELETED;
    if ((found->access & access) != access) return ERROR_ACCESS_DENIED;
    key = *found;
    return ERROR_SUCCESS;
}

void ResetRegistry() {
    FlushRegistry();
    g_keys.CloseAll();
    ForgetRegistry();
}

void CountRegistryHandles(LiveHandles& counts) { counts.keys = g_keys.Count(); }

}  // namespace host

using namespace host;

LSTATUS WINAPI RegOpenKeyExW(HKEY key, LPCWSTR subkey, DWORD, REGSAM access, HKEY* result) {
    if (!result) return ERROR_INVALID_PARAMETER;
    *result = nullptr;
    if (CallFails(Call::RegOpenKey)) return ERROR_ACCESS_DENIED;
    return Open(key, View(subkey), access, result);
}

LSTATUS WINAPI RegCreateKeyExW(HKEY key, LPCWSTR subkey, DWORD, LPWSTR, DWORD, REGSAM access,
                               SECURITY_ATTRIBUTES*, HKEY* result, LPDWORD disposition) {
    if (!result) return ERROR_INVALID_PARAMETER;
    *result = nullptr;
    if (CallFails(Call::RegCreateKey)) return ERROR_ACCESS_DENIED;
    return Create(key, View(subkey), access, result, disposition);
}

// Writes changes to the file. If that fails, the key is closed all the same, the change is kept, and the next
// close or stop tries again; so a caller never has to close twice.
LSTATUS WINAPI RegCloseKey(HKEY key) {
    const bool fails = CallFails(Call::RegClose);
    if (!PredefinedRoot(key) && !g_keys.Close(key)) return ERROR_INVALID_HANDLE;
    if (fails) return ERROR_WRITE_FAULT;
    FlushRegistry();
    return ERROR_SUCCESS;
}

// The handle's access does not matter, as on the desktop, where the key to be deleted decides.
LSTATUS WINAPI RegDeleteKeyW(HKEY handle, LPCWSTR subkey) {
    if (CallFails(Call::RegDelete)) return ERROR_ACCESS_DENIED;
    OpenKey parent;
    if (const LSTATUS error = UseKey(handle, 0, parent)) return error;
    if (!subkey || SplitKeyPath(subkey).empty()) return ERROR_INVALID_PARAMETER;
    if (!DeleteKey(*parent.key, subkey)) return ERROR_FILE_NOT_FOUND;
    MarkRegistryChanged();
    return ERROR_SUCCESS;
}

// Keys have no class and no time of their last change here; refuses to return them.
LSTATUS WINAPI RegEnumKeyExW(HKEY handle, DWORD index, LPWSTR name, LPDWORD characters, LPDWORD,
                             LPWSTR keyClass, LPDWORD classCharacters, FILETIME* lastWrite) {
    if (CallFails(Call::RegEnumKey)) return ERROR_NOT_ENOUGH_MEMORY;
    OpenKey opened;
    if (const LSTATUS error = UseKey(handle, KEY_ENUMERATE_SUB_KEYS, opened)) return error;
    if (!name || !characters) return ERROR_INVALID_PARAMETER;
    if (keyClass || classCharacters || lastWrite) return ERROR_CALL_NOT_IMPLEMENTED;
    const auto& subkeys = opened.key->subkeys;
    if (index >= subkeys.size()) return ERROR_NO_MORE_ITEMS;
    const std::u16string& found =
        std::next(subkeys.begin(), static_cast<std::ptrdiff_t>(index))->second->name;
    if (found.size() >= *characters) return ERROR_MORE_DATA;
    name[found.copy(name, found.size())] = u'\0';
    *characters = static_cast<DWORD>(found.size());
    return ERROR_SUCCESS;
}
