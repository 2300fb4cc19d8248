// SPDX-License-Identifier: MIT
#include "test_server.h"

#include <winerror.h>
#include <winreg.h>

namespace {

LONG g_references = 0;

DWORD ReadNumber(LPCWSTR name) {
    DWORD number = 0;
    DWORD size = sizeof(number);
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, TEST_SERVER_KEY, 0, KEY_READ, &key) != ERROR_SUCCESS) return 0;
    RegQueryValueExW(key, name, nullptr, nullptr, reinterpret_cast<BYTE*>(&number), &size);
    RegCloseKey(key);
    return number;
}

void WriteNumber(LPCWSTR name, DWORD number) {
    HKEY key = nullptr;
    if (RegCreateKeyExW(HKEY_LOCAL_MACHINE, TEST_SERVER_KEY, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key,
                        nullptr) != ERROR_SUCCESS)
        return;
    RegSetValueExW(key, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof(number));
    RegCloseKey(key);
}

// Factory and object in one; lives as long as the library.
struct Factory final : IClassFactory {
    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        *object = iid == IID_IUnknown || iid == IID_IClassFactory ? this : nullptr;
        if (!*object) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&g_references)); }
    STDMETHODIMP_(ULONG) Release() override {
        return static_cast<ULONG>(InterlockedDecrement(&g_references));
    }
    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
        *object = nullptr;
        return outer ? CLASS_E_NOAGGREGATION : QueryInterface(iid, object);
    }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }
};
Factory g_factory;

}  // namespace

STDAPI DllCanUnloadNow() { return g_references == 0 ? S_OK : S_FALSE; }

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** object) {
    *object = nullptr;
    return clsid == kTestServerClass ? g_factory.QueryInterface(iid, object) : CLASS_E_CLASSNOTAVAILABLE;
}

extern "C" __attribute__((visibility("default"))) BOOL WINAPI DllMain(HMODULE, DWORD reason, void*) {
    if (reason == DLL_PROCESS_ATTACH && ReadNumber(TEST_SERVER_REFUSE)) return FALSE;
    if (reason == DLL_PROCESS_ATTACH || reason == DLL_PROCESS_DETACH)
        WriteNumber(TEST_SERVER_ATTACHED, reason == DLL_PROCESS_ATTACH);
    return TRUE;
}
