// SPDX-License-Identifier: MIT
// Loaded library files: a read-only image in memory and the host code that belongs to it, if any.
#pragma once

#include "modules/pe_image.h"

#include <host_control.h>
#include <windows.h>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace host {

// The bytes of a file in read-only memory. Later changes of the file do not affect them.
class FileImage {
public:
    // None if the file is not regular, cannot be read, is empty or larger than 64 MiB.
    static std::optional<FileImage> Read(const std::filesystem::path& path);
    FileImage(FileImage&& other) noexcept : m_bytes(other.m_bytes) { other.m_bytes = {}; }
    FileImage& operator=(FileImage&&) = delete;
    ~FileImage();

    std::span<const BYTE> Bytes() const { return m_bytes; }

private:
    explicit FileImage(std::span<const BYTE> bytes) : m_bytes(bytes) {}

    std::span<const BYTE> m_bytes;
};

struct Module {
    std::filesystem::path hostPath;  // without links: one file is one module
    std::u16string devicePath;       // as first loaded, with the folder
    FileImage image;
    PeImage resources;
    void* code = nullptr;  // from dlopen; null without code
    int references = 0;
    int productReferences = 0;  // the part of them that the product holds
};

// Like the SDK's calls, but without fault injection: for the platform itself. They set the last error.
HMODULE LoadModule(std::u16string_view path);
bool FreeModule(HMODULE handle);
// Null and ERROR_INVALID_HANDLE if it is no loaded module.
Module* FindModule(HMODULE handle);
void* FindExport(const Module& module, const char* name);
// Is this file the image of a loaded module?
bool IsModuleFile(const std::filesystem::path& hostPath);
void ResetModules();
void CountModuleHandles(LiveHandles& counts);
// None if the module has no such resource.
std::optional<std::span<const BYTE>> FindResourceBytes(HMODULE module, LPCWSTR name, LPCWSTR type);

}  // namespace host
