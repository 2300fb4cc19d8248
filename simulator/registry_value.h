// SPDX-License-Identifier: MIT
// Values of the device's registry, read and written as any program of the device does.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

struct KeyPath {
    HKEY root;
    std::u16string subkey;
};

struct RegistryValue {
    DWORD type = REG_NONE;
    std::vector<BYTE> data;

    static RegistryValue FromText(const std::u16string& text);
    static RegistryValue FromNumber(DWORD number);
    static RegistryValue FromTexts(const std::vector<std::u16string>& texts);

    // The data as characters; one terminator at the end is left out, an odd last byte ignored.
    std::u16string Text() const;
    // The data as a list: up to the first empty string.
    std::vector<std::u16string> Texts() const;
};

// "HKLM\…", "HKCU\…" or "HKCR\…". Throws ScriptError for anything else.
KeyPath ParseKeyPath(const std::string& text);

// None when the key or the value does not exist.
std::optional<RegistryValue> ReadRegistryValue(const KeyPath& key, const std::u16string& name);
// The rest return the error code of the registry.
LSTATUS WriteRegistryValue(const KeyPath& key, const std::u16string& name, const RegistryValue& value);
LSTATUS DeleteRegistryValue(const KeyPath& key, const std::u16string& name);
LSTATUS DeleteRegistryKey(const KeyPath& key);
// Empty when the key does not exist.
std::vector<std::u16string> ListSubkeys(const KeyPath& key);
