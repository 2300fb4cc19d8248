// SPDX-License-Identifier: MIT
#pragma once

#include <objbase.h>
#include <windows.h>

#include <filesystem>
#include <utility>

#include "framework/handles.h"

// The library's class.
extern const CLSID kInputMethodClass;

// The library under test: the file named by InprocServer32 of its class, loaded when first needed and held
// until Unload.
class Library {
public:
    // `built` is the library of this build; its code is in the same folder, with ".so" appended to the name.
    explicit Library(std::filesystem::path built) : m_built(std::move(built)) {}
    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    // If no library is registered, copies the built one to \Windows\tolka.dll and registers it. Throws
    // ScriptError.
    void EnsureRegistered();
    // Loads the library if it is not loaded, and first registers it if none is registered.
    HRESULT Load();
    bool IsLoaded() const { return static_cast<bool>(m_module); }

    // Call the exports after Load; return its error if it fails.
    HRESULT GetClassObject(REFIID iid, void** object);
    HRESULT Register() { return CallExport("DllRegisterServer"); }
    HRESULT Unregister() { return CallExport("DllUnregisterServer"); }
    HRESULT CanUnloadNow() { return CallExport("DllCanUnloadNow"); }

    // Unloads the library if DllCanUnloadNow allows it, and returns that result; S_OK if it is not loaded.
    HRESULT Unload();

private:
    HRESULT CallExport(const char* name);
    void Install();
    void Free();

    std::filesystem::path m_built;
    CModuleOwner m_module;
};
