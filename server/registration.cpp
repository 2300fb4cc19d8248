// SPDX-License-Identifier: MIT
#include "server/registration.h"

#include <oleauto.h>

#include "framework/registrar.h"
#include "resources/resource.h"

namespace {

// The full path of the library, null-terminated. Fails for paths of MAX_PATH or more characters.
HRESULT GetLibraryPath(WCHAR (&path)[MAX_PATH]) {
    const DWORD length = GetModuleFileNameW(_Module.GetModuleInstance(), path, MAX_PATH);
    if (length == 0) {
        const HRESULT result = HRESULT_FROM_WIN32(GetLastError());
        return FAILED(result) ? result : E_FAIL;
    }
    return length >= MAX_PATH ? HRESULT_FROM_WIN32(ERROR_INSUFFICIENT_BUFFER) : S_OK;
}

// The script is stored as 8-bit text.
bool LoadScript(WideString& script) {
    const HMODULE own = _Module.GetModuleInstance();
    const HRSRC resource = FindResourceW(own, MAKEINTRESOURCE(IDR_KEYBINPUT), TEXT("REGISTRY"));
    if (!resource) return false;
    const auto* bytes = static_cast<const char*>(LoadResource(own, resource));
    const auto size = static_cast<int>(SizeofResource(own, resource));
    if (!bytes || size <= 0) return false;
    script.resize(static_cast<std::size_t>(size));
    const int length = MultiByteToWideChar(CP_ACP, 0, bytes, size, script.data(), size);
    script.resize(static_cast<std::size_t>(length));
    return length > 0;
}

// The path up to and including its last separator.
WideString FolderOf(const WideString& path) {
    const std::size_t last = path.find_last_of(TEXT("\\/:"));
    return last == WideString::npos ? WideString() : path.substr(0, last + 1);
}

}  // namespace

HRESULT UpdateKeybInputRegistry(RegistryAction action) {
    WCHAR path[MAX_PATH];
    const HRESULT located = GetLibraryPath(path);
    if (FAILED(located)) return located;
    WideString script;
    if (!LoadScript(script)) return E_FAIL;
    return CRegistrar(path).Run(script, action);
}

HRESULT RegisterOwnTypeLibrary() {
    WCHAR path[MAX_PATH];
    HRESULT result = GetLibraryPath(path);
    if (FAILED(result)) return result;
    WideString folder = FolderOf(path);  // first, because it may throw and `library` has no owner
    ITypeLib* library = nullptr;
    result = LoadTypeLib(path, &library);
    if (FAILED(result)) return result;
    result = RegisterTypeLib(library, path, folder.data());
    library->Release();
    return result;
}
