// SPDX-License-Identifier: MIT
// Typed reads and writes of registry values. There is no cache: whoever needs a value opens the key at that
// moment, and the key closes with the CSettingsKey.
#pragma once

#include <windows.h>

#include "framework/handles.h"
#include "framework/wide_string.h"
#include "store/registry_names.h"

// The longest string that can be read, with its terminating null; longer values count as absent.
inline constexpr DWORD kStringCharacters = 260;
inline constexpr DWORD kUserSkinsBytes = 5200;

// Holds a stored string and a terminating null, which the stored one may lack.
using StoredText = WCHAR[kStringCharacters + 1];

enum class SettingsAccess {
    Read,    // the key must exist
    Write,   // full access; the key must exist
    Create,  // full access; the key is made when it is missing
};

class CSettingsKey {
public:
    // If the key cannot be opened, all values read as absent and writes do nothing.
    CSettingsKey(HKEY root, LPCWSTR path, SettingsAccess access);
    // The settings key.
    explicit CSettingsKey(SettingsAccess access) : CSettingsKey(HKEY_LOCAL_MACHINE, kSettingsKey, access) {}

    bool IsOpen() const { return static_cast<bool>(m_key); }
    void Close() { m_key.Reset(); }

    // Reads 4 bytes, whatever type is stored. False, and `value` unchanged, when that fails.
    bool ReadDword(LPCWSTR name, DWORD& value) const;
    // Up to the first null character or the end of the data. False, and `text` unchanged, when it cannot be
    // read or is longer than kStringCharacters.
    bool ReadString(LPCWSTR name, StoredText& text) const;
    // Appends the strings up to an empty one or the end of the data; none if the value cannot be read or is
    // longer than kUserSkinsBytes. False when memory runs out: the list is then incomplete.
    bool ReadStringList(LPCWSTR name, WideStringList& list) const;

    // A failed write is not reported; the old value stays. Texts are stored with their terminating null.
    void WriteDword(LPCWSTR name, DWORD value) const;
    void WriteString(LPCWSTR name, LPCWSTR text) const;
    // Each string with its null, then two more nulls, so 4 zero bytes for an empty list.
    void WriteStringList(LPCWSTR name, const WideStringList& list) const;

private:
    // `size` is the size of the buffer in bytes, afterwards that of the value. Values of any type.
    bool Read(LPCWSTR name, void* data, DWORD& size) const;
    void Write(LPCWSTR name, DWORD type, const void* data, std::size_t bytes) const;

    CRegistryKeyOwner m_key;
};
