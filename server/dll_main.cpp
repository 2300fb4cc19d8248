// SPDX-License-Identifier: MIT
// The library's entry point and its four exports.
#include <objbase.h>
#include <windows.h>

#include "framework/module.h"
#include "input_method/keyb_input.h"
#include "server/class_factory.h"
#include "server/registration.h"

extern "C" const CLSID CLSID_KeybInput = {
    0x5C1E0B7A, 0x93D4, 0x4F28, {0xB6, 0xA1, 0x2D, 0x7E, 0x4C, 0x9F, 0x8A, 0x30}};

namespace {

LPCWSTR NoDescription() { return nullptr; }

void NothingAtStartAndStop(bool) {}

CComClassEntry g_classes[] = {
    {&CLSID_KeybInput, UpdateKeybInputRegistry, CComClassFactory::CreateCached, CreateInstanceOf<CKeybInput>,
     nullptr, 0, NoDescription, NothingAtStartAndStop},
    {nullptr, nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr},
};

HRESULT Register() {
    const HRESULT result = _Module.UpdateRegistry(RegistryAction::Register);
    return FAILED(result) ? result : RegisterOwnTypeLibrary();
}

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void*) {
    if (reason == DLL_PROCESS_ATTACH) _Module.Init(instance, g_classes);
    if (reason == DLL_PROCESS_DETACH) _Module.Term();
    return TRUE;
}

STDAPI DllCanUnloadNow() { return _Module.GetLockCount() == 0 ? S_OK : S_FALSE; }

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** object) {
    return _Module.GetClassObject(clsid, iid, object);
}

// The only exception possible is a failed allocation.
STDAPI DllRegisterServer() {
    try {
        return Register();
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

// Reports success even if a step fails, as the library is being removed anyway. The type library stays
// registered.
STDAPI DllUnregisterServer() {
    try {
        _Module.UpdateRegistry(RegistryAction::Unregister);
    } catch (...) {
    }
    return S_OK;
}
