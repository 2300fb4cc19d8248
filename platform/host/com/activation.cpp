// SPDX-License-Identifier: MIT
// Activation: from a class identifier through the registry to the library's DllGetClassObject.
#include "com/activation.h"

#include "device/device.h"
#include "modules/modules.h"
#include "registry/keys.h"

#include <algorithm>

const IID IID_IUnknown = {0x00000000, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
const IID IID_IClassFactory = {0x00000001, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

namespace host {
namespace {

using GetClassObjectFunction = HRESULT (*)(REFCLSID, REFIID, void**);
using CanUnloadNowFunction = HRESULT (*)();

// Holds one reference to its module, on behalf of the platform.
struct Library {
    HMODULE module;
    GetClassObjectFunction getClassObject;
    CanUnloadNowFunction canUnloadNow;  // null: the library is never unloaded
};
std::vector<Library> g_libraries;

void Free(HMODULE module) {
    const PlatformScope platform;
    FreeModule(module);
}

// Loads the library, or finds it among the loaded ones.
HRESULT LoadServer(const std::u16string& path, Library& library) {
    const PlatformScope platform;
    library.module = LoadModule(path);
    if (!library.module) return CO_E_DLLNOTFOUND;
    const auto loaded = std::find_if(g_libraries.begin(), g_libraries.end(),
                                     [&](const Library& other) { return other.module == library.module; });
    if (loaded != g_libraries.end()) {
        FreeModule(library.module);
        library = *loaded;
        return S_OK;
    }
    const Module& module = *FindModule(library.module);
    library.getClassObject =
        reinterpret_cast<GetClassObjectFunction>(FindExport(module, "DllGetClassObject"));
    library.canUnloadNow = reinterpret_cast<CanUnloadNowFunction>(FindExport(module, "DllCanUnloadNow"));
    if (!library.getClassObject) {
        FreeModule(library.module);
        return CO_E_ERRORINDLL;
    }
    g_libraries.push_back(library);
    return S_OK;
}

}  // namespace

void ResetCom() {
    while (!g_libraries.empty()) {
        const HMODULE module = g_libraries.back().module;
        g_libraries.pop_back();
        Free(module);
    }
}

}  // namespace host

using namespace host;

HRESULT WINAPI CoGetClassObject(REFCLSID clsid, DWORD context, void*, REFIID iid, void** object) {
    if (!object) return E_INVALIDARG;
    *object = nullptr;
    const std::u16string key = u"CLSID\\" + FormatGuid(clsid) + u"\\InprocServer32";
    const std::u16string path = ReadRegistryText(RegistryRoot::ClassesRoot, key, u"");
    if ((context & CLSCTX_INPROC_SERVER) == 0 || path.empty()) return REGDB_E_CLASSNOTREG;
    Library library{};
    if (const HRESULT result = LoadServer(path, library); FAILED(result)) return result;
    const ProductScope product;
    return library.getClassObject(clsid, iid, object);
}

HRESULT WINAPI CoCreateInstance(REFCLSID clsid, IUnknown* outer, DWORD context, REFIID iid, void** object) {
    if (!object) return E_POINTER;
    *object = nullptr;
    void* found = nullptr;
    const HRESULT result = CoGetClassObject(clsid, context, nullptr, IID_IClassFactory, &found);
    if (FAILED(result)) return result;
    auto* factory = static_cast<IClassFactory*>(found);
    const ProductScope product;
    const HRESULT created = factory->CreateInstance(outer, iid, object);
    factory->Release();
    return created;
}

void WINAPI CoFreeUnusedLibraries() {
    // By index and backwards: a library may activate or free others while it is detached.
    for (std::size_t i = g_libraries.size(); i-- > 0;) {
        if (i >= g_libraries.size()) continue;
        const Library library = g_libraries[i];
        if (!library.canUnloadNow || library.canUnloadNow() != S_OK) continue;
        g_libraries.erase(g_libraries.begin() + static_cast<std::ptrdiff_t>(i));
        Free(library.module);
    }
}
