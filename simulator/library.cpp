// SPDX-License-Identifier: MIT
#include "library.h"

#include <host_control.h>

#include "device_files.h"
#include "registry_value.h"
#include "script.h"
#include "trace.h"

const CLSID kInputMethodClass = {
    0x5C1E0B7A, 0x93D4, 0x4F28, {0xB6, 0xA1, 0x2D, 0x7E, 0x4C, 0x9F, 0x8A, 0x30}};

namespace {

constexpr char16_t kInstalledPath[] = u"\\Windows\\tolka.dll";
constexpr char16_t kServerKey[] = u"CLSID\\{5C1E0B7A-93D4-4F28-B6A1-2D7E4C9F8A30}\\InprocServer32";

std::u16string RegisteredPath() { return ReadRegistryText({HKEY_CLASSES_ROOT, kServerKey}, u""); }

// The last error as a code that is always a failure.
HRESULT LastFailure() {
    const DWORD error = GetLastError();
    return error == ERROR_SUCCESS ? E_FAIL : HRESULT_FROM_WIN32(error);
}

template <typename Entry>
Entry FindEntry(const CModuleOwner& module, const char* name) {
    return reinterpret_cast<Entry>(reinterpret_cast<void (*)()>(GetProcAddress(module.Get(), name)));
}

HRESULT CallEntry(const CModuleOwner& module, const char* name) {
    using Entry = HRESULT(STDAPICALLTYPE*)();
    const auto entry = FindEntry<Entry>(module, name);
    return entry ? entry() : LastFailure();
}

}  // namespace

Library::~Library() { Free(); }

void Library::Free() {
    const host::PlatformScope scope;
    m_module.Reset();
}

void Library::EnsureRegistered() {
    if (RegisteredPath().empty()) Install();
}

void Library::Install() {
    CopyToDevice(m_built, kInstalledPath);
    std::filesystem::path code = m_built;
    code += ".so";
    CopyToDevice(code, std::u16string(kInstalledPath) + u".so");
    const host::PlatformScope scope;
    const CModuleOwner module(LoadLibraryW(kInstalledPath));
    if (!module) {
        throw ScriptError("the library " + m_built.string() + " does not load: error " +
                          std::to_string(GetLastError()));
    }
    const HRESULT result = CallEntry(module, "DllRegisterServer");
    if (FAILED(result)) {
        throw ScriptError("the library " + m_built.string() +
                          " does not register itself: " + Hexadecimal(static_cast<DWORD>(result)));
    }
}

HRESULT Library::Load() {
    if (m_module) return S_OK;
    EnsureRegistered();
    const host::PlatformScope scope;
    m_module.Reset(LoadLibraryW(RegisteredPath().c_str()));
    return m_module ? S_OK : LastFailure();
}

HRESULT Library::CallExport(const char* name) {
    const HRESULT result = Load();
    return FAILED(result) ? result : CallEntry(m_module, name);
}

HRESULT Library::GetClassObject(REFIID iid, void** object) {
    *object = nullptr;
    const HRESULT result = Load();
    if (FAILED(result)) return result;
    using Entry = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
    const auto entry = FindEntry<Entry>(m_module, "DllGetClassObject");
    return entry ? entry(kInputMethodClass, iid, object) : LastFailure();
}

// COM also holds the library if it has created an object, and releases it first: the last FreeLibrary
// detaches it.
HRESULT Library::Unload() {
    if (!m_module) return S_OK;
    const HRESULT result = CanUnloadNow();
    if (result != S_OK) return result;
    CoFreeUnusedLibraries();
    Free();
    return result;
}
