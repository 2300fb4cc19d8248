// SPDX-License-Identifier: MIT
// Opening, painting, saving and closing the options dialog.
#include "settings/settings_dlg.h"

#include <aygshell.h>

#include <algorithm>

#include "framework/handles.h"
#include "framework/memory.h"
#include "framework/screen.h"
#include "settings/resource_string.h"
#include "settings/skin_combo.h"
#include "store/settings_key.h"

namespace {

constexpr WCHAR kInstalledLibrary[] = TEXT("\\Windows\\tolka.dll");
constexpr WCHAR kSkinFolder[] = TEXT("\\windows\\");
constexpr std::size_t kExtensionLength = 4;  // with its dot

DWORD CheckState(HWND check) { return static_cast<DWORD>(SendMessageW(check, BM_GETCHECK, 0, 0)); }

void SetCheckState(HWND check, DWORD state) { SendMessageW(check, BM_SETCHECK, state, 0); }

bool IsInSkinFolder(const WideString& path) {
    const std::size_t last = path.rfind(WCHAR{'\\'});
    const WideString folder = last == WideString::npos ? WideString() : path.substr(0, last + 1);
    return lstrcmpiW(folder.c_str(), kSkinFolder) == 0;
}

}  // namespace

WideString SkinDisplayName(const WideString& path) {
    const WideString stem = path.substr(0, path.size() - std::min(path.size(), kExtensionLength));
    return stem.substr(stem.rfind(WCHAR{'\\'}) + 1);
}

BOOL CSettingsDlg::ProcessWindowMessage(HWND, UINT message, WPARAM wParam, LPARAM, LRESULT& result,
                                        DWORD map) {
    if (map != 0) return FALSE;
    bool handled = true;
    switch (message) {
        case WM_INITDIALOG:
            result = OnInitDialog();
            break;
        case WM_SIZE:
            result = OnSize();
            break;
        case WM_PAINT:
            result = OnPaint();
            break;
        case WM_COMMAND:
            result = OnCommand(LOWORD(wParam), HIWORD(wParam), handled);
            break;
        default:
            handled = false;
            break;
    }
    return handled;
}

LRESULT CSettingsDlg::OnCommand(WORD id, WORD code, bool& handled) {
    switch (id) {
        case IDOK:
            return OnOK();
        case IDCANCEL:
            return OnCancel();
        case IDC_SKIN_COMBO:
            return OnSkinSelChange(code);
        case IDC_ADD_SKIN:
            return OnAddSkin();
        case IDC_DELETE_SKIN:
            return OnDeleteSkin();
        case IDC_SET_DEFAULT:
            SetDefaultIM(CheckState(m_hDefaultCheck) == 0);
            return 0;
        default:
            handled = false;
            return 0;
    }
}

LRESULT CSettingsDlg::OnInitDialog() {
    TakeOverPanel();
    MakeTitleFont();
    m_Screen = GetScreenSize();
    FetchControls();
    PlaceLine();
    SetCheckState(m_hDefaultCheck, IsDefaultIM() ? 1 : 0);
    HeightenSkinCombo();
    WidenAboutText();
    ShowAboutText();
    ListSkins();
    ShowSettings();
    InitShellDialog();
    return TRUE;  // the platform sets the focus
}

// While the dialog is open the panel shows this keyboard, so that a change of skin is seen at once.
void CSettingsDlg::TakeOverPanel() {
    SipShowIM(SIPF_OFF);
    SipGetCurrentIM(&m_PrevIM);
    if (!IsEqualCLSID(m_PrevIM, m_OwnIM)) SipSetCurrentIM(&m_OwnIM);
    SipShowIM(SIPF_ON);
}

void CSettingsDlg::MakeTitleFont() {
    LOGFONTW font{};
    GetObjectW(GetStockObject(SYSTEM_FONT), sizeof font, &font);
    font.lfWeight = FW_BOLD;
    m_hTitleFont.Reset(CreateFontIndirectW(&font));
}

void CSettingsDlg::FetchControls() {
    m_hLine = GetDlgItem(m_hWnd, IDC_LINE);
    m_hSwipeCheck = GetDlgItem(m_hWnd, IDC_SWIPE);
    m_hDefaultCheck = GetDlgItem(m_hWnd, IDC_SET_DEFAULT);
    m_hExtSymCheck = GetDlgItem(m_hWnd, IDC_EXTSYM);
    m_hSkinLabel = GetDlgItem(m_hWnd, IDC_SKIN_LABEL);
    m_hAboutText = GetDlgItem(m_hWnd, IDC_ABOUT);
    m_hSkinCombo = GetDlgItem(m_hWnd, IDC_SKIN_COMBO);
    m_hAddButton = GetDlgItem(m_hWnd, IDC_ADD_SKIN);
    m_hDeleteButton = GetDlgItem(m_hWnd, IDC_DELETE_SKIN);
}

// A message before the next WM_INITDIALOG must not find the controls of this opening.
INT_PTR CSettingsDlg::DoModal(HWND parent, LPARAM parameter) {
    const INT_PTR result = CDialogImpl::DoModal(parent, parameter);
    ForgetControls();
    return result;
}

void CSettingsDlg::ForgetControls() {
    m_hLine = m_hSwipeCheck = m_hDefaultCheck = m_hExtSymCheck = m_hSkinLabel = nullptr;
    m_hAboutText = m_hSkinCombo = m_hAddButton = m_hDeleteButton = nullptr;
}

// Reads the installed library's file, not the running module.
void CSettingsDlg::ShowAboutText() {
    m_Version.Load(kInstalledLibrary);
    EnoughMemory([&] {
        m_strAbout = m_Version.QueryString(TEXT("LegalCopyright"));
        m_strAbout += TEXT(", ");
        m_strAbout += m_Version.QueryString(TEXT("CompanyName"));
        m_strAbout += TEXT("\nBuild: ");
        m_strAbout += m_Version.QueryString(TEXT("ProductVersion"));
    });
    SetWindowTextW(m_hAboutText, m_strAbout.c_str());
}

// If memory ran out, the list is incomplete and must not be saved as the list of user skins.
void CSettingsDlg::ListSkins() {
    m_Skins.clear();
    m_bSkinsListed = CKeyboard::ListSkins(m_Skins);
    EnoughMemory([&] {
        for (const WideString& path : m_Skins)
            AddItem(m_hSkinCombo, SkinDisplayName(path));
    });
}

// A value that cannot be read leaves its control as the template created it.
void CSettingsDlg::ShowSettings() {
    const CSettingsKey settings(SettingsAccess::Read);
    DWORD value = 0;
    if (settings.ReadDword(kSwipeValue, value)) SetCheckState(m_hSwipeCheck, value);
    if (settings.ReadDword(kSwipeOnlySkinValue, value)) ShowSwipeOnlySkin(value);
    if (settings.ReadDword(kExtSymValue, value)) SetCheckState(m_hExtSymCheck, value);
    StoredText skin;
    if (settings.ReadString(kSkinValue, skin)) EnoughMemory([&] { SelectSkin(skin); });
}

// A skin made for strokes needs them on.
void CSettingsDlg::ShowSwipeOnlySkin(DWORD swipeOnly) {
    if (swipeOnly) SetCheckState(m_hSwipeCheck, 1);
    EnableWindow(m_hSwipeCheck, swipeOnly == 0);
}

// If several items have the skin's name, the last one stays selected.
void CSettingsDlg::SelectSkin(const WideString& path) {
    const WideString name = SkinDisplayName(path);
    for (int index = 0; index < ItemCount(m_hSkinCombo); ++index)
        if (ItemText(m_hSkinCombo, index) == name) SelectItem(m_hSkinCombo, index);
}

// A Done button in the title bar; the dialog fills the screen. Sizing it delivers WM_SIZE.
void CSettingsDlg::InitShellDialog() {
    SHINITDLGINFO info{};
    info.dwMask = SHIDIM_FLAGS;
    info.hDlg = m_hWnd;
    info.dwFlags = SHIDIF_DONEBUTTON | SHIDIF_SIZEDLGFULLSCREEN;
    SHInitDialog(&info);
}

LRESULT CSettingsDlg::OnSize() {
    m_Screen = GetScreenSize();
    if (!m_hLine) return 0;
    PlaceAboutText();
    PlaceLine();
    WidenAboutText();
    BringWindowToTop(m_hDefaultCheck);  // in landscape the about text overlaps it
    return 0;
}

LRESULT CSettingsDlg::OnPaint() {
    const CPaintCycle paint(m_hWnd);
    if (!paint.Get()) return 0;
    SetTextColor(paint.Get(), GetSysColor(COLOR_ACTIVECAPTION));
    const CSelection font(paint.Get(), m_hTitleFont.Get());
    const WideString title = LoadResourceString(IDS_TITLE);
    RECT place{7, LongerSide() / 30, 150, LongerSide() / 15};
    DrawTextW(paint.Get(), title.c_str(), static_cast<int>(title.size()), &place, DT_VCENTER | DT_NOCLIP);
    return 0;
}

LRESULT CSettingsDlg::OnOK() {
    SaveSettings();
    SipSetCurrentIM(&m_PrevIM);
    SipShowIM(SIPF_OFF);
    EndDialog(m_hWnd, IDOK);
    return 0;
}

LRESULT CSettingsDlg::OnCancel() {
    EndDialog(m_hWnd, IDCANCEL);
    return 0;
}

WideString CSettingsDlg::SelectedSkinName() const {
    return ItemText(m_hSkinCombo, SelectedItem(m_hSkinCombo));
}

// Items and paths are matched by text alone: each path that contains the selected name is validated and
// written, so the last one stays. Every path contains an empty name.
bool CSettingsDlg::SaveSettings() {
    const CSettingsKey settings(SettingsAccess::Create);
    bool valid = true;
    if (settings.IsOpen()) EnoughMemory([&] { valid = WriteSettings(settings); });
    return valid;
}

bool CSettingsDlg::WriteSettings(const CSettingsKey& settings) {
    settings.WriteDword(kSwipeValue, CheckState(m_hSwipeCheck));
    settings.WriteDword(kExtSymValue, CheckState(m_hExtSymCheck));
    const WideString name = SelectedSkinName();
    WideStringList userSkins;
    for (const WideString& path : m_Skins) {
        if (!IsInSkinFolder(path)) userSkins.push_back(path);
        if (path.find(name) == WideString::npos) continue;
        if (!CKeyboard::IsValidSkin(path)) return false;
        settings.WriteString(kSkinValue, path.c_str());
    }
    if (m_bSkinsListed) settings.WriteStringList(kUserSkinsValue, userSkins);
    return true;
}
