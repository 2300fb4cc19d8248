// SPDX-License-Identifier: MIT
#include "modules/modules.h"

#include "device/device.h"
#include "device/faults.h"
#include "device/files.h"
#include "device/handles.h"
#include "device/strings.h"

#include <algorithm>

#include <dlfcn.h>
#include <link.h>

namespace host {
namespace {

using DllMainFunction = BOOL (*)(HMODULE, DWORD, void*);

HandleTable<Module, HandleKind::Module> g_modules;

// Adds what the loader adds: the folder to a bare name, the extension to a name without one.
std::u16string CompletePath(std::u16string_view path) {
    std::u16string complete;
    const SplitPath split = SplitDevicePath(path);
    if (split.name.size() == path.size()) complete = u"\\Windows\\";
    complete += path;
    if (split.name.find(u'.') == std::u16string_view::npos) complete += u".dll";
    return complete;
}

HMODULE FindLoaded(const std::filesystem::path& hostPath) {
    HMODULE found = nullptr;
    g_modules.ForEach([&](std::uint32_t handle, const Module& module, HandleOwner) {
        if (module.hostPath == hostPath) found = ToHandle<HMODULE>(handle);
    });
    return found;
}

void AddReference(Module& module) {
    ++module.references;
    if (CurrentOwner() == HandleOwner::Product) ++module.productReferences;
}

bool CallDllMain(const Module& module, HMODULE handle, DWORD reason) {
    const auto dllMain = reinterpret_cast<DllMainFunction>(FindExport(module, "DllMain"));
    // Handles that a library creates for itself belong to the product, whoever loads it.
    const ProductScope product;
    return !dllMain || dllMain(handle, reason, nullptr);
}

// Also true for a module without code.
bool LoadCode(Module& module) {
    const std::filesystem::path path = module.hostPath.string() + ".so";
    std::error_code error;
    if (!std::filesystem::exists(path, error)) return true;
    module.code = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!module.code) Report(path.string() + ": cannot be loaded: " + dlerror());
    return module.code != nullptr;
}

void CloseModule(HMODULE handle) {
    const std::unique_ptr<Module> module = g_modules.Close(handle);
    if (module->code) dlclose(module->code);
}

HMODULE OpenModule(const std::filesystem::path& hostPath, std::u16string devicePath) {
    std::optional<FileImage> image = FileImage::Read(hostPath);
    std::optional<PeImage> resources = image ? PeImage::Parse(image->Bytes()) : std::nullopt;
    if (!resources) return Fail(ERROR_BAD_EXE_FORMAT, nullptr);
    auto owned = std::make_unique<Module>(
        Module{hostPath, std::move(devicePath), std::move(*image), std::move(*resources)});
    Module& module = *owned;
    AddReference(module);
    const auto handle = ToHandle<HMODULE>(g_modules.Open(std::move(owned)));
    if (!handle) return nullptr;
    DWORD error = ERROR_SUCCESS;
    if (!LoadCode(module))
        error = ERROR_MOD_NOT_FOUND;
    else if (!CallDllMain(module, handle, DLL_PROCESS_ATTACH))
        error = ERROR_DLL_INIT_FAILED;
    if (error == ERROR_SUCCESS) return handle;
    CloseModule(handle);
    return Fail(error, nullptr);
}

}  // namespace

// Also finds a module without references: its DllMain may use resources while it is unloaded.
Module* FindModule(HMODULE handle) { return g_modules.Require(handle); }

HMODULE LoadModule(std::u16string_view path) {
    std::u16string devicePath = CompletePath(path);
    const ResolvedPath resolved = ResolvePath(devicePath);
    std::error_code error;
    const std::filesystem::path hostPath = std::filesystem::canonical(resolved.path, error);
    if (path.empty() || resolved.error != ERROR_SUCCESS || error) return Fail(ERROR_MOD_NOT_FOUND, nullptr);
    const HMODULE loaded = FindLoaded(hostPath);
    if (!loaded) return OpenModule(hostPath, std::move(devicePath));
    AddReference(*g_modules.Find(loaded));
    return loaded;
}

bool FreeModule(HMODULE handle) {
    Module* module = FindModule(handle);
    if (!module) return false;
    if (module->references == 0) return Fail(ERROR_INVALID_HANDLE, false);
    --module->references;
    if (CurrentOwner() == HandleOwner::Product && module->productReferences > 0) --module->productReferences;
    module->productReferences = std::min(module->productReferences, module->references);
    if (module->references > 0) return true;
    CallDllMain(*module, handle, DLL_PROCESS_DETACH);
    CloseModule(handle);
    return true;
}

// The symbol must be the library's own, not one from a library that it links.
void* FindExport(const Module& module, const char* name) {
    if (!module.code) return nullptr;
    void* symbol = dlsym(module.code, name);
    link_map* library = nullptr;
    link_map* owner = nullptr;
    Dl_info info;
    if (!symbol || dlinfo(module.code, RTLD_DI_LINKMAP, &library) != 0) return nullptr;
    if (!dladdr1(symbol, &info, reinterpret_cast<void**>(&owner), RTLD_DL_LINKMAP)) return nullptr;
    return owner == library ? symbol : nullptr;
}

bool IsModuleFile(const std::filesystem::path& hostPath) {
    std::error_code error;
    return FindLoaded(std::filesystem::canonical(hostPath, error)) != nullptr;
}

void ResetModules() {
    std::vector<HMODULE> handles;
    g_modules.ForEach([&](std::uint32_t handle, const Module&, HandleOwner) {
        handles.push_back(ToHandle<HMODULE>(handle));
    });
    for (const HMODULE handle : handles) {
        // A module may have freed another one while it was detached.
        while (g_modules.Find(handle) && FreeModule(handle)) {
        }
    }
}

void CountModuleHandles(LiveHandles& counts) {
    g_modules.ForEach([&](std::uint32_t, const Module& module, HandleOwner) {
        if (module.productReferences > 0) ++counts.modules;
    });
}

}  // namespace host

using namespace host;

HMODULE WINAPI LoadLibraryW(LPCWSTR path) {
    if (CallFails(Call::LoadLibrary, ERROR_NOT_ENOUGH_MEMORY)) return nullptr;
    return LoadModule(View(path));
}

BOOL WINAPI FreeLibrary(HMODULE module) { return FreeModule(module); }

FARPROC WINAPI GetProcAddress(HMODULE handle, LPCSTR name) {
    const Module* module = FindModule(handle);
    if (!module) return nullptr;
    // Host code has no ordinals.
    void* symbol = IS_INTRESOURCE(name) ? nullptr : FindExport(*module, name);
    if (!symbol) SetLastError(ERROR_PROC_NOT_FOUND);
    return reinterpret_cast<FARPROC>(symbol);
}

// If the buffer is too small, copies what fits with a null, and returns the buffer's size.
DWORD WINAPI GetModuleFileNameW(HMODULE handle, LPWSTR path, DWORD characters) {
    if (CallFails(Call::GetModuleFileName, ERROR_NOT_ENOUGH_MEMORY)) return 0;
    const Module* module = FindModule(handle);
    if (!module) return 0;
    if (!path || characters == 0) return Fail(ERROR_INSUFFICIENT_BUFFER, DWORD{0});
    const std::u16string& name = module->devicePath;
    path[name.copy(path, characters - 1)] = u'\0';
    if (name.size() < characters) return static_cast<DWORD>(name.size());
    return Fail(ERROR_INSUFFICIENT_BUFFER, characters);
}
