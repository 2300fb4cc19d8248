// SPDX-License-Identifier: MIT
#include "import_patch.h"

#include <cstring>

namespace test {
namespace {

template <typename Part>
Part* At(HMODULE module, ULONG_PTR offset) {
    return reinterpret_cast<Part*>(reinterpret_cast<ULONG_PTR>(module) + offset);
}

const IMAGE_IMPORT_DESCRIPTOR* FirstImport(HMODULE module) {
    const auto* dos = At<IMAGE_DOS_HEADER>(module, 0);
    const auto* headers = At<IMAGE_NT_HEADERS>(module, static_cast<ULONG_PTR>(dos->e_lfanew));
    return At<IMAGE_IMPORT_DESCRIPTOR>(
        module, headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress);
}

// Where the loader has stored the function's address; null if the module does not import it from this
// library.
void** FindPlace(HMODULE module, const IMAGE_IMPORT_DESCRIPTOR& import, const char* name) {
    const auto* names = At<IMAGE_THUNK_DATA>(module, import.OriginalFirstThunk);
    auto* places = At<IMAGE_THUNK_DATA>(module, import.FirstThunk);
    for (; names->u1.AddressOfData; ++names, ++places) {
        if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) continue;
        const auto* entry = At<IMAGE_IMPORT_BY_NAME>(module, static_cast<ULONG_PTR>(names->u1.AddressOfData));
        if (std::strcmp(reinterpret_cast<const char*>(entry->Name), name) == 0)
            return reinterpret_cast<void**>(&places->u1.Function);
    }
    return nullptr;
}

void* Exchange(void** place, void* replacement) {
    DWORD protection = 0;
    if (!VirtualProtect(place, sizeof *place, PAGE_READWRITE, &protection)) return nullptr;
    void* const former = *place;
    *place = replacement;
    VirtualProtect(place, sizeof *place, protection, &protection);
    return former;
}

}  // namespace

void* ReplaceImport(HMODULE module, const char* name, void* replacement) {
    for (const auto* import = FirstImport(module); import->Name; ++import)
        if (void** place = FindPlace(module, *import, name)) return Exchange(place, replacement);
    return nullptr;
}

}  // namespace test
