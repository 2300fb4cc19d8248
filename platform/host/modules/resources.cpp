// SPDX-License-Identifier: MIT
// Resources of loaded modules. A resource's handle is the address of its data entry in the module's image,
// and is checked against the entries of the image.
#include "modules/modules.h"

#include "device/bytes.h"
#include "device/faults.h"

namespace host {
namespace {

const Resource* Lookup(const Module& module, LPCWSTR name, LPCWSTR type) {
    const ResourceId typeId = ResourceId::FromArgument(type);
    const Resource* resource = module.resources.Find(typeId, ResourceId::FromArgument(name));
    if (!resource) {
        SetLastError(module.resources.HasType(typeId) ? ERROR_RESOURCE_NAME_NOT_FOUND
                                                      : ERROR_RESOURCE_TYPE_NOT_FOUND);
    } else if (!resource->data) {
        SetLastError(ERROR_RESOURCE_DATA_NOT_FOUND);
    }
    return resource && resource->data ? resource : nullptr;
}

// Null and the last error if FindResourceW did not return this handle for this module.
const Resource* FromHandle(HMODULE handle, HRSRC resource) {
    const Module* module = FindModule(handle);
    if (!module) return nullptr;
    const auto base = reinterpret_cast<std::uintptr_t>(module->image.Bytes().data());
    // An address below the image wraps around to an offset without an entry.
    const Resource* found = module->resources.FindByEntry(reinterpret_cast<std::uintptr_t>(resource) - base);
    if (found && found->data) return found;
    return Fail(ERROR_INVALID_HANDLE, nullptr);
}

// A block has 16 strings, each a length and that many code units.
std::optional<std::u16string> StringOfBlock(std::span<const BYTE> block, UINT index) {
    for (std::size_t offset = 0;; --index) {
        const auto length = Read<WORD>(block, offset);
        offset += sizeof(WORD);
        const auto text = length ? ReadCharacters(block, offset, *length) : std::nullopt;
        if (!text || index == 0) return text;
        offset += *length * sizeof(WCHAR);
    }
}

}  // namespace

std::optional<std::span<const BYTE>> FindResourceBytes(HMODULE handle, LPCWSTR name, LPCWSTR type) {
    const Module* module = FindModule(handle);
    const Resource* resource = module ? Lookup(*module, name, type) : nullptr;
    return resource ? resource->data : std::nullopt;
}

}  // namespace host

using namespace host;

HRSRC WINAPI FindResourceW(HMODULE handle, LPCWSTR name, LPCWSTR type) {
    if (CallFails(Call::FindResource, ERROR_RESOURCE_NAME_NOT_FOUND)) return nullptr;
    const Module* module = FindModule(handle);
    const Resource* resource = module ? Lookup(*module, name, type) : nullptr;
    if (!resource) return nullptr;
    const auto base = reinterpret_cast<std::uintptr_t>(module->image.Bytes().data());
    return reinterpret_cast<HRSRC>(base + resource->entryOffset);
}

HGLOBAL WINAPI LoadResource(HMODULE module, HRSRC resource) {
    if (CallFails(Call::LoadResource, ERROR_NOT_ENOUGH_MEMORY)) return nullptr;
    const Resource* found = FromHandle(module, resource);
    // The handle's type lacks const; the memory is write-protected.
    return found ? const_cast<BYTE*>(found->data->data()) : nullptr;
}

DWORD WINAPI SizeofResource(HMODULE module, HRSRC resource) {
    const Resource* found = FromHandle(module, resource);
    return found ? static_cast<DWORD>(found->data->size()) : 0;
}

// Copies what fits with a null, and returns its length without the null.
int WINAPI LoadStringW(HINSTANCE instance, UINT id, LPWSTR text, int characters) {
    if (CallFails(Call::LoadString, ERROR_NOT_ENOUGH_MEMORY)) return 0;
    if (!text || characters <= 0) return Fail(ERROR_INVALID_PARAMETER, 0);
    text[0] = u'\0';
    const auto block = FindResourceBytes(instance, MAKEINTRESOURCEW((id & 0xFFFF) / 16 + 1), RT_STRING);
    if (!block) return 0;
    const std::optional<std::u16string> string = StringOfBlock(*block, id % 16);
    if (!string || string->empty()) return Fail(ERROR_RESOURCE_NAME_NOT_FOUND, 0);
    const std::size_t length = string->copy(text, static_cast<std::size_t>(characters) - 1);
    text[length] = u'\0';
    return static_cast<int>(length);
}
