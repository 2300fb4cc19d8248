// SPDX-License-Identifier: MIT
// Making this keyboard the input method that the platform starts with, and undoing it. Only the stored
// default changes; the current input method stays.
#include "settings/settings_dlg.h"
#include "settings/store.h"

namespace {

constexpr WCHAR kSipKey[] = TEXT("ControlPanel\\Sip");  // under HKEY_CURRENT_USER, the platform's
constexpr WCHAR kDefaultImValue[] = TEXT("DefaultIm");
constexpr WCHAR kPreviousImValue[] = TEXT("PrevIMClsid");

// Without the source value nothing is written.
void CopyString(const CSettingsKey& key, LPCWSTR from, LPCWSTR to) {
    WideString text;
    if (key.ReadString(from, text)) key.WriteString(to, text);
}

WideString ErrorText(HRESULT result) {
    WideString digits;
    for (auto rest = static_cast<DWORD>(result); rest || digits.empty(); rest >>= 4) {
        digits.insert(digits.begin(), TEXT("0123456789ABCDEF")[rest & 0xF]);
    }
    return TEXT("Error: 0x") + digits;
}

WideString TextOf(const CLSID& clsid) {
    LPWSTR text = nullptr;
    const HRESULT result = StringFromCLSID(clsid, &text);
    if (FAILED(result)) return ErrorText(result);
    try {
        WideString copy(text);
        CoTaskMemFree(text);
        return copy;
    } catch (...) {
        CoTaskMemFree(text);
        throw;
    }
}

}  // namespace

bool CSettingsDlg::IsDefaultIM() const {
    const CSettingsKey key(HKEY_CURRENT_USER, kSipKey, SettingsAccess::Read);
    WideString text;
    CLSID clsid{};
    return key.ReadString(kDefaultImValue, text) && SUCCEEDED(CLSIDFromString(text.data(), &clsid)) &&
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
    key.WriteString(kDefaultImValue, TextOf(m_OwnIM));
}
