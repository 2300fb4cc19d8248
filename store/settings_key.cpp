// SPDX-License-Identifier: MIT
#include "store/settings_key.h"

#include <algorithm>
#include <string>

#include "framework/memory.h"

CSettingsKey::CSettingsKey(HKEY root, LPCWSTR path, SettingsAccess access) {
    const REGSAM rights = access == SettingsAccess::Read ? KEY_READ : KEY_ALL_ACCESS;
    if (access == SettingsAccess::Create) {
        RegCreateKeyExW(root, path, 0, nullptr, REG_OPTION_NON_VOLATILE, rights, nullptr, m_key.Receive(),
                        nullptr);
    } else {
        RegOpenKeyExW(root, path, 0, rights, m_key.Receive());
    }
}

bool CSettingsKey::ReadDword(LPCWSTR name, DWORD& value) const {
    DWORD stored = value;  // a shorter value replaces only its first bytes
    DWORD size = sizeof stored;
    if (!Read(name, &stored, size)) return false;
    value = stored;
    return true;
}

bool CSettingsKey::ReadString(LPCWSTR name, StoredText& text) const {
    WCHAR buffer[kStringCharacters];
    DWORD size = sizeof buffer;
    if (!Read(name, buffer, size)) return false;
    *std::copy(buffer, std::find(buffer, buffer + size / sizeof(WCHAR), WCHAR{0}), text) = 0;
    return true;
}

bool CSettingsKey::ReadStringList(LPCWSTR name, WideStringList& list) const {
    WCHAR buffer[kUserSkinsBytes / sizeof(WCHAR)];
    DWORD size = sizeof buffer;
    if (!Read(name, buffer, size)) return true;
    return EnoughMemory([&] {
        const WCHAR* const end = buffer + size / sizeof(WCHAR);
        for (const WCHAR* begin = buffer; begin < end && *begin;) {
            const WCHAR* const terminator = std::find(begin, end, WCHAR{0});
            list.emplace_back(begin, terminator);
            begin = terminator + 1;
        }
    });
}

void CSettingsKey::WriteDword(LPCWSTR name, DWORD value) const {
    Write(name, REG_DWORD, &value, sizeof value);
}

void CSettingsKey::WriteString(LPCWSTR name, LPCWSTR text) const {
    Write(name, REG_SZ, text, (std::char_traits<WCHAR>::length(text) + 1) * sizeof(WCHAR));
}

void CSettingsKey::WriteStringList(LPCWSTR name, const WideStringList& list) const {
    EnoughMemory([&] {
        WideString block;
        for (const WideString& text : list)
            block.append(text.c_str(), text.size() + 1);
        block.append(2, WCHAR{0});
        Write(name, REG_MULTI_SZ, block.data(), block.size() * sizeof(WCHAR));
    });
}

bool CSettingsKey::Read(LPCWSTR name, void* data, DWORD& size) const {
    return IsOpen() && RegQueryValueExW(m_key.Get(), name, nullptr, nullptr, static_cast<BYTE*>(data),
                                        &size) == ERROR_SUCCESS;
}

void CSettingsKey::Write(LPCWSTR name, DWORD type, const void* data, std::size_t bytes) const {
    if (!IsOpen()) return;
    RegSetValueExW(m_key.Get(), name, 0, type, static_cast<const BYTE*>(data), static_cast<DWORD>(bytes));
}
