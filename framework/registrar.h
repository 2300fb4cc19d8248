// SPDX-License-Identifier: MIT
// Interprets a registration script, an 8-bit text like
//
//     HKCR
//     {
//         ProgID.1 = s 'Name'                 a key with its default value
//         {
//             CLSID = s '{...}'               a subkey
//             val Mode = d '2'                a named value: s for REG_SZ, d for REG_DWORD
//         }
//         NoRemove CLSID { ... }              never removed
//         ForceRemove {...} = s '%MODULE%'    removed with all under it before it is written
//     }
//
// A quote within a string is doubled. %MODULE% stands for the library's path.
#pragma once

#include "framework/module.h"
#include "framework/wide_string.h"

class CRegistrar {
public:
    explicit CRegistrar(LPCWSTR modulePath) : m_modulePath(modulePath) {}

    // Writes or removes the script's entries in their order. Stops at the first failure and returns it;
    // earlier changes stay. E_FAIL for a script that cannot be parsed.
    HRESULT Run(const WideString& script, RegistryAction action);

private:
    struct Entry;

    HRESULT RunBlock(HKEY parent);
    HRESULT RunEntry(HKEY parent);
    HRESULT RunValue(HKEY key);
    HRESULT RegisterKey(HKEY parent, const Entry& entry);
    HRESULT UnregisterKey(HKEY parent, const Entry& entry);
    HRESULT SkipBlock();
    HRESULT ReadData(DWORD& type, WideString& text);

    // The next word, or an empty one at the end of the script.
    WideString NextToken();
    WideString PeekToken();
    WideString NextQuoted();

    LPCWSTR m_modulePath;
    const WideString* m_script = nullptr;
    std::size_t m_position = 0;
    RegistryAction m_action = RegistryAction::Register;
};
