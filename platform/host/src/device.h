// SPDX-License-Identifier: MIT
// The parts of the device as StartDevice, StopDevice and CountHandles see them.
#pragma once

#include <host_control.h>

#include <optional>
#include <string>
#include <string_view>

namespace host {

// Empty folder and function while no device runs. The folder is absolute and free of symbolic links.
const DeviceOptions& Options();

// The opposite of PlatformScope, for calls into the product's code from platform code.
class ProductScope {
public:
    ProductScope();
    ~ProductScope();
    ProductScope(const ProductScope&) = delete;
    ProductScope& operator=(const ProductScope&) = delete;

private:
    int m_platformDepth;
};

void ResetFaults();

// --- windows ---
void ResetWindows();
void CountWindowHandles(LiveHandles& counts);
void InvalidateAllWindows();

// --- image lists ---
void ResetImageLists();
void CountImageLists(LiveHandles& counts);

// --- the open-file dialog ---
void ResetOpenFile();

// --- modules ---
void ResetModules();
void CountModuleHandles(LiveHandles& counts);
// Is this file the image of a loaded module?
bool IsModuleFile(const std::filesystem::path& hostPath);

// --- COM ---
void ResetCom();  // releases the libraries that activation loaded

// --- registry ---
void StartRegistry();  // reads device.reg
void ResetRegistry();  // writes it, closes every key
void CountRegistryHandles(LiveHandles& counts);

// --- files ---
void ResetFiles();
void CountFileHandles(LiveHandles& counts);

// --- strings ---
// What is malformed becomes U+FFFD.
std::string ToUtf8(std::u16string_view text);
std::u16string FromUtf8(std::string_view text);
// None when the text is malformed.
std::optional<std::string> ToStrictUtf8(std::u16string_view text);
std::optional<std::u16string> FromStrictUtf8(std::string_view text);
// Upper case, one code unit for one; the order and equality of everything that ignores case.
WCHAR FoldCase(WCHAR unit);
std::u16string FoldCase(std::u16string_view text);
bool EqualIgnoringCase(std::u16string_view first, std::u16string_view second);

}  // namespace host
