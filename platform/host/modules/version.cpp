// SPDX-License-Identifier: MIT
// The version resource of files. Each call reads the file again, as it is on the device now.
#include <windows.h>

#include <algorithm>
#include <cstring>

#include "device/faults.h"
#include "device/files.h"
#include "modules/modules.h"
#include "modules/version_block.h"

namespace host {
namespace {

// Finds the resource in the bytes of a file; returns the error if there is none.
DWORD FindBlock(const FileImage& file, std::vector<BYTE>& block) {
    const std::optional<PeImage> image = PeImage::Parse(file.Bytes());
    if (!image) return ERROR_BAD_EXE_FORMAT;
    const ResourceId type = ResourceId::FromArgument(RT_VERSION);
    const ResourceId name = ResourceId::FromArgument(MAKEINTRESOURCEW(VS_VERSION_INFO));
    if (!image->HasType(type)) return ERROR_RESOURCE_TYPE_NOT_FOUND;
    const Resource* resource = image->Find(type, name);
    if (!resource) return ERROR_RESOURCE_NAME_NOT_FOUND;
    if (!resource->data || resource->data->size() < sizeof(WORD)) return ERROR_RESOURCE_DATA_NOT_FOUND;
    block.assign(resource->data->begin(), resource->data->end());
    return ERROR_SUCCESS;
}

// False and the last error if there is no block of at least two bytes.
bool ReadBlock(LPCWSTR path, std::vector<BYTE>& block) {
    DWORD error = ERROR_INVALID_PARAMETER;
    if (path) {
        const ResolvedPath resolved = ResolvePath(path);
        error = resolved.error;
        if (error == ERROR_SUCCESS) {
            const std::optional<FileImage> file = FileImage::Read(resolved.path);
            error = file ? FindBlock(*file, block) : ERROR_BAD_EXE_FORMAT;
        }
    }
    if (error != ERROR_SUCCESS) SetLastError(error);
    return error == ERROR_SUCCESS;
}

WORD ReadLength(const void* block) {
    WORD length;
    std::memcpy(&length, block, sizeof length);
    return length;
}

}  // namespace
}  // namespace host

using namespace host;

DWORD WINAPI GetFileVersionInfoSizeW(LPCWSTR path, LPDWORD ignored) {
    if (ignored) *ignored = 0;
    std::vector<BYTE> block;
    if (CallFails(Call::GetVersionInfoSize, ERROR_NOT_ENOUGH_MEMORY) || !ReadBlock(path, block)) return 0;
    return static_cast<DWORD>(block.size());
}

BOOL WINAPI GetFileVersionInfoW(LPCWSTR path, DWORD, DWORD size, LPVOID target) {
    if (CallFails(Call::GetVersionInfo, ERROR_NOT_ENOUGH_MEMORY)) return FALSE;
    std::vector<BYTE> block;
    if (!target || size < sizeof(WORD))
        return Fail(target ? ERROR_INSUFFICIENT_BUFFER : ERROR_INVALID_PARAMETER, FALSE);
    if (!ReadBlock(path, block)) return FALSE;
    const std::size_t copied = std::min<std::size_t>(block.size(), size);
    // Later queries know the buffer's size only from the block's first word.
    const auto length = static_cast<WORD>(std::min<std::size_t>(ReadLength(block.data()), copied));
    std::memcpy(target, block.data(), copied);
    std::memcpy(target, &length, sizeof length);
    return TRUE;
}

BOOL WINAPI VerQueryValueW(LPCVOID block, LPCWSTR path, LPVOID* value, UINT* size) {
    if (value) *value = nullptr;
    if (size) *size = 0;
    if (CallFails(Call::QueryVersion, ERROR_RESOURCE_TYPE_NOT_FOUND)) return FALSE;
    if (!block || !path || !value) return Fail(ERROR_INVALID_PARAMETER, FALSE);
    const auto* bytes = static_cast<const BYTE*>(block);
    const std::optional<VersionValue> found = FindVersionValue({bytes, ReadLength(block)}, path);
    if (!found) return Fail(ERROR_RESOURCE_TYPE_NOT_FOUND, FALSE);
    // The SDK's pointer lacks const; the block is only read.
    *value = const_cast<BYTE*>(bytes + found->offset);
    if (size) *size = static_cast<UINT>(found->size);
    return TRUE;
}
