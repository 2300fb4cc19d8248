// SPDX-License-Identifier: MIT
#include "registry_values.h"

#include <gtest/gtest.h>

#include "framework/handles.h"

namespace test {

std::string TextBytes(const std::basic_string<WCHAR>& text) {
    return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(WCHAR)};
}

RegistryValue TextValue(const std::basic_string<WCHAR>& text) {
    return {REG_SZ, TextBytes(text) + std::string(sizeof(WCHAR), '\0')};
}

RegistryValue NumberValue(DWORD number) {
    return {REG_DWORD, {reinterpret_cast<const char*>(&number), sizeof number}};
}

// Stores bytes that are not followed by a null, which desktop Windows would take for the text's end.
void WriteValue(HKEY root, const std::basic_string<WCHAR>& path, LPCWSTR name, const RegistryValue& value) {
    CRegistryKeyOwner key;
    ASSERT_EQ(
        RegCreateKeyExW(root, path.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, key.Receive(), nullptr),
        ERROR_SUCCESS);
    const std::string bytes = value.second + "###";
    EXPECT_EQ(RegSetValueExW(key.Get(), name, 0, value.first, reinterpret_cast<const BYTE*>(bytes.data()),
                             static_cast<DWORD>(value.second.size())),
              ERROR_SUCCESS);
}

RegistryValue ReadValue(HKEY root, const std::basic_string<WCHAR>& path, LPCWSTR name) {
    CRegistryKeyOwner key;
    if (RegOpenKeyExW(root, path.c_str(), 0, KEY_READ, key.Receive()) != ERROR_SUCCESS) return {};
    std::string bytes(16384, '\0');
    auto size = static_cast<DWORD>(bytes.size());
    DWORD type = REG_NONE;
    const LONG result =
        RegQueryValueExW(key.Get(), name, nullptr, &type, reinterpret_cast<BYTE*>(bytes.data()), &size);
    if (result != ERROR_SUCCESS) return {};
    return {type, bytes.substr(0, size)};
}

bool KeyExists(HKEY root, const std::basic_string<WCHAR>& path) {
    CRegistryKeyOwner key;
    return RegOpenKeyExW(root, path.c_str(), 0, KEY_READ, key.Receive()) == ERROR_SUCCESS;
}

}  // namespace test
