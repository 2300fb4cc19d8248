// SPDX-License-Identifier: MIT
#pragma once

#include <objbase.h>
#include <windows.h>

#include <filesystem>
#include <utility>

// The one class that the library offers.
extern const CLSID inputMethodClass;

// The library under test as the platform holds it: the file that InprocServer32 of its class names, loaded
// when first needed and held until Unload.
class Library {
public:
    // `built` is the library of this build; its code lies in the same folder with ".so" behind the name.
    explicit Library(std::filesystem::path built) : m_built(std::move(built)) {}
    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    // Where the registry names no library, copies the built one to \Windows\tolka.dll and registers it.
    // Throws ScriptError when that cannot be done.
    void EnsureRegistered();
    // Loads the library where it is not loaded yet, registering it before if need be.
    HRESULT Load();
    bool IsLoaded() const { return m_module != nullptr; }

    // The exports, with Load before; its failure is theirs.
    HRESULT GetClassObject(REFIID iid, void** object);
    HRESULT Register() { return CallExport("DllRegisterServer"); }
    HRESULT Unregister() { return CallExport("DllUnregisterServer"); }
    HRESULT CanUnloadNow() { return CallExport("DllCanUnloadNow"); }

    // Unloads the library if it allows that, and returns what it said; S_OK when it is not loaded.
    HRESULT Unload();

private:
    HRESULT CallExport(const char* name);
    FARPROC FindExport(const char* name, HRESULT& result);
    void Install();
    void Free();

    std::filesystem::path m_built;
    HMODULE m_module = nullptr;
};
