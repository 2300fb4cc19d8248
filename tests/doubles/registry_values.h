// SPDX-License-Identifier: MIT
// Registry values for tests to store and compare.
#pragma once

#include <windows.h>

#include <string>
#include <utility>

namespace test {

// Type and bytes; type REG_NONE and no bytes if there is no such value.
using RegistryValue = std::pair<DWORD, std::string>;

std::string TextBytes(const std::basic_string<WCHAR>& text);    // without a null
RegistryValue TextValue(const std::basic_string<WCHAR>& text);  // with its null
RegistryValue NumberValue(DWORD number);

// Creates the key if it is missing.
void WriteValue(HKEY root, const std::basic_string<WCHAR>& path, LPCWSTR name, const RegistryValue& value);
RegistryValue ReadValue(HKEY root, const std::basic_string<WCHAR>& path, LPCWSTR name);
bool KeyExists(HKEY root, const std::basic_string<WCHAR>& path);

}  // namespace test
