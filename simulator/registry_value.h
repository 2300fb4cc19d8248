// SPDX-License-Identifier: MIT
// Reads and writes values of the device's registry, like any program of the device.
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

    // The data as characters, without one terminator at the end; ignores an odd last byte.
    std::u16string Characters() const;
    // The data as a list of strings, up to the first empty one.
    std::vector<std::u16string> Texts() const;
};

// "HKLM\…", "HKCU\…" or "HKCR\…". Throws ScriptError for anything else.
KeyPath ParseKeyPath(const std::string& text);

// None if the key or the value does not exist.
std::optional<RegistryValue> ReadRegistryValue(const KeyPath& key, const std::u16string& name);
// A value of type REG_SZ up to its first null; empty if there is none.
std::u16string ReadRegistryText(const KeyPath& key, const std::u16string& name);
// These return the error code of the registry.
LSTATUS WriteRegistryValue(const KeyPath& key, const std::u16string& name, const RegistryValue& value);
LSTATUS DeleteRegistryValue(const KeyPath& key, const std::u16string& name);
LSTATUS DeleteRegistryKey(const KeyPath& key);
// Empty when the key does not exist.
std::vector<std::u16string> ListSubkeys(const KeyPath& key);
