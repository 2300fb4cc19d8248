// SPDX-License-Identifier: MIT
// Makes this keyboard the input method that the platform starts with, and undoes that. Only the stored
// default changes; the current input method stays.
#include <iterator>

#include "settings/settings_dlg.h"
#include "store/settings_key.h"

namespace {

// Writes nothing if the source value is missing.
void CopyString(const CSettingsKey& key, LPCWSTR from, LPCWSTR to) {
    StoredText text;
    if (key.ReadString(from, text)) key.WriteString(to, text);
}

// "Error: 0x" and the code, which for a failure always has 8 digits.
void WriteError(const CSettingsKey& key, LPCWSTR name, HRESULT result) {
    WCHAR text[] = TEXT("Error: 0x00000000");
    WCHAR* digit = std::end(text) - 1;
    for (auto rest = static_cast<DWORD>(result); rest; rest >>= 4)
        *--digit = TEXT("0123456789ABCDEF")[rest & 0xF];
    key.WriteString(name, text);
}

void WriteClsid(const CSettingsKey& key, LPCWSTR name, const CLSID& clsid) {
    LPWSTR text = nullptr;
    const HRESULT result = StringFromCLSID(clsid, &text);
    if (FAILED(result)) return WriteError(key, name, result);
    key.WriteString(name, text);
    CoTaskMemFree(text);
}

}  // namespace

bool CSettingsDlg::IsDefaultIM() const {
    const CSettingsKey key(HKEY_CURRENT_USER, kSipKey, SettingsAccess::Read);
    StoredText text;
    CLSID clsid{};
    return key.ReadString(kDefaultImValue, text) && SUCCEEDED(CLSIDFromString(text, &clsid)) &&
           IsEqualCLSID(clsid, m_OwnIM);
}

void CSettingsDlg::SetDefaultIM(bool undo) const {
    const CSettingsKey key(HKEY_CURRENT_USER, kSipKey, SettingsAccess::Create);
    if (!key.IsOpen()) return;
    if (undo) {
        CopyString(key, kPreviousImValue, kDefaultImValue);
        return;
    }
    CopyString(key, kDefaultImValue, kPreviousImValue);
    WriteClsid(key, kDefaultImValue, m_OwnIM);
}
