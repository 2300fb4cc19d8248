// SPDX-License-Identifier: MIT
// The registry. Functions return the error code itself.
#pragma once

#include <windef.h>

using REGSAM = DWORD;
using LSTATUS = LONG;

#define HKEY_CLASSES_ROOT (reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(0x80000000u)))
#define HKEY_CURRENT_USER (reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(0x80000001u)))
#define HKEY_LOCAL_MACHINE (reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(0x80000002u)))

#define REG_NONE 0
#define REG_SZ 1
#define REG_EXPAND_SZ 2
#define REG_BINARY 3
#define REG_DWORD 4
#define REG_MULTI_SZ 7

#define REG_OPTION_NON_VOLATILE 0
#define REG_CREATED_NEW_KEY 1
#define REG_OPENED_EXISTING_KEY 2

#define KEY_QUERY_VALUE 0x0001
#define KEY_SET_VALUE 0x0002
#define KEY_ENUMERATE_SUB_KEYS 0x0008
#define KEY_READ 0x20019
#define KEY_WRITE 0x20006
#define KEY_ALL_ACCESS 0xF003F

struct SECURITY_ATTRIBUTES;

LSTATUS WINAPI RegOpenKeyExW(HKEY key, LPCWSTR subkey, DWORD options, REGSAM access, HKEY* result);
LSTATUS WINAPI RegCreateKeyExW(HKEY key, LPCWSTR subkey, DWORD reserved, LPWSTR keyClass, DWORD options,
                               REGSAM access, SECURITY_ATTRIBUTES* security, HKEY* result,
                               LPDWORD disposition);
LSTATUS WINAPI RegCloseKey(HKEY key);
LSTATUS WINAPI RegQueryValueExW(HKEY key, LPCWSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data,
                                LPDWORD size);
LSTATUS WINAPI RegSetValueExW(HKEY key, LPCWSTR name, DWORD reserved, DWORD type, const BYTE* data,
                              DWORD size);
LSTATUS WINAPI RegDeleteValueW(HKEY key, LPCWSTR name);
// Deletes the key with everything under it, as the handheld does (desktop Windows refuses keys with subkeys).
LSTATUS WINAPI RegDeleteKeyW(HKEY key, LPCWSTR subkey);
LSTATUS WINAPI RegEnumKeyExW(HKEY key, DWORD index, LPWSTR name, LPDWORD characters, LPDWORD reserved,
                             LPWSTR keyClass, LPDWORD classCharacters, FILETIME* lastWrite);
LSTATUS WINAPI RegQueryInfoKeyW(HKEY key, LPWSTR keyClass, LPDWORD classCharacters, LPDWORD reserved,
                                LPDWORD subkeys, LPDWORD longestSubkey, LPDWORD longestClass, LPDWORD values,
                                LPDWORD longestName, LPDWORD longestValue, LPDWORD securityDescriptor,
                                FILETIME* lastWrite);
