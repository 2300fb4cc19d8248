// SPDX-License-Identifier: MIT
// Loaded library files: a read-only image in memory and, where the host has one, the code that belongs to it.
#pragma once

#include "modules/pe_image.h"

#include <host_control.h>
#include <windows.h>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace host {

// The bytes of a file in memory that nobody can write to: what happens to the file later does not touch them.
class FileImage {
public:
    // None for what is no regular file, cannot be read, is empty or has more than 64 MiB.
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
    std::filesystem::path hostPath;  // free of links: one file is one module
    std::u16string devicePath;       // as first loaded, with the folder
    FileImage image;
    PeImage resources;
    void* code = nullptr;  // of dlopen; null for resources alone
    int references = 0;
    int productReferences = 0;  // those of them that the product holds
};

// As the SDK's calls, without fault injection: for what the platform does on its own account. They set the
// last error.
HMODULE LoadModule(std::u16string_view path);
bool FreeModule(HMODULE handle);
// Null (ERROR_INVALID_HANDLE) for what is no loaded module.
Module* FindModule(HMODULE handle);
void* FindExport(const Module& module, const char* name);
// Is this file the image of a loaded module?
bool IsModuleFile(const std::filesystem::path& hostPath);
void ResetModules();
void CountModuleHandles(LiveHandles& counts);
// None when there is none.
std::optional<std::span<const BYTE>> FindResourceBytes(HMODULE module, LPCWSTR name, LPCWSTR type);

}  // namespace host
