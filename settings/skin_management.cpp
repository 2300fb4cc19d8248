// SPDX-License-Identifier: MIT
// Changes, adds and deletes skins. These commands take effect at once, however the user closes the dialog.
#include <algorithm>

#include "framework/screen.h"
#include "settings/resource_string.h"
#include "settings/settings_dlg.h"
#include "settings/skin_combo.h"
#include "store/settings_key.h"

namespace {

constexpr WCHAR kSkinFilter[] = TEXT("Tolka 7 Skin (*.tlk)\0*.tlk\0");
constexpr std::size_t kExtensionLength = 4;
constexpr std::size_t kMessageCharacters = 260;  // with the terminating null
constexpr WCHAR kEllipsis = 0x2026;
constexpr DWORD kDeleteDelay = 1000;  // milliseconds, in which others can release the file

// The question with the name in place of "%s". A name that is too long is cut with an ellipsis, so that the
// whole question fits into the buffer.
WideString DeleteQuestion(WideString name) {
    WideString text = LoadResourceString(IDS_CONFIRM_DELETE);
    const std::size_t place = text.find(TEXT("%s"));
    if (place == WideString::npos) return text;
    const std::size_t room = kMessageCharacters - 1 - (text.size() - 2);
    if (name.size() > room) name.replace(room - 1, WideString::npos, 1, kEllipsis);
    return text.replace(place, 2, name);
}

WideString ErrorMessage(DWORD error) {
    WideString digits;
    do {
        digits.insert(digits.begin(), static_cast<WCHAR>('0' + error % 10));
        error /= 10;
    } while (error);
    return TEXT("LastError: ") + digits + TEXT(" ");
}

}  // namespace

int CSettingsDlg::ShowMessage(const WideString& text, UINT type) const {
    return MessageBoxW(m_hWnd, text.c_str(), m_Version.QueryString(TEXT("FileDescription")).c_str(), type);
}

LRESULT CSettingsDlg::OnSkinSelChange(WORD code) {
    if (code != CBN_SELCHANGE) return 0;
    if (!ApplySkin()) ShowMessage(LoadResourceString(IDS_WRONG_RESOLUTION), MB_OK | MB_ICONHAND);
    return 0;
}

bool CSettingsDlg::ApplySkin() {
    if (!m_pKeyboard) return true;
    const SIZE screen = GetScreenSize();
    if (!SaveSettings()) return false;
    if (!m_pKeyboard->Init(screen.cx, screen.cy)) return true;
    SipShowIM(SIPF_OFF);  // off and on lays the panel out and redraws it
    SipShowIM(SIPF_ON);
    DWORD swipeOnly = 0;
    if (CSettingsKey(SettingsAccess::Read).ReadDword(kSwipeOnlySkinValue, swipeOnly))
        ShowSwipeOnlySkin(swipeOnly);
    return true;
}

// Validates and writes nothing: that happens when the user selects the skin.
LRESULT CSettingsDlg::OnAddSkin() {
    CFileDialog dialog(TEXT("tlk"), 0, kSkinFilter);
    if (dialog.DoModal() != IDOK) return 0;
    MessageBoxW(m_hWnd, dialog.m_szFileName, TEXT(""), MB_OK);
    m_Skins.emplace_back(dialog.m_szFileName);
    const WideString title(dialog.m_szFileTitle);
    AddItem(m_hSkinCombo, title.substr(0, title.size() - std::min(title.size(), kExtensionLength)));
    return 0;
}

// The path stays in m_Skins until the dialog opens again; discovery skips it, as its file is gone.
LRESULT CSettingsDlg::OnDeleteSkin() {
    if (ItemCount(m_hSkinCombo) <= 1) {
        ShowMessage(LoadResourceString(IDS_LAST_SKIN), MB_OK | MB_ICONHAND);
        return 0;
    }
    const WideString name = SelectedSkinName();
    if (name.empty() || ShowMessage(DeleteQuestion(name), MB_OKCANCEL) != IDOK) return 0;
    if (m_pKeyboard) m_pKeyboard->UnloadSkin();  // a loaded file cannot be deleted
    SelectNeighbourAndRemove(SelectedItem(m_hSkinCombo));
    ApplySkin();
    Sleep(kDeleteDelay);
    const WideString* const path = FindSkinPath(name);
    if (path && !DeleteFileW(path->c_str())) ShowMessage(ErrorMessage(GetLastError()), MB_OKCANCEL);
    return 0;
}

void CSettingsDlg::SelectNeighbourAndRemove(int index) const {
    SelectItem(m_hSkinCombo, index == 0 ? 1 : 0);
    SendMessageW(m_hSkinCombo, CB_DELETESTRING, static_cast<WPARAM>(index), 0);
}

const WideString* CSettingsDlg::FindSkinPath(const WideString& name) const {
    for (const WideString& path : m_Skins)
        if (path.find(name) != WideString::npos) return &path;
    return nullptr;
}
