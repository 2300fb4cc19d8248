// SPDX-License-Identifier: MIT
#include "input_method/keyb_input.h"

#include "framework/screen.h"
#include "input_method/button_images.h"
#include "store/settings_key.h"

namespace {

constexpr DWORD kInfoSize = 40;  // the handheld's size of IMINFO, on every build

// -1 if the list has no image.
int LastImage(HIMAGELIST list) { return ImageList_GetImageCount(list) - 1; }

}  // namespace

// The keyboard works without its button images: if they are missing, that is no failure.
HRESULT CKeybInput::FinalConstruct() {
    if (m_hImageNarrow && m_hImageWide) return S_OK;
    m_hImageNarrow = CreateNarrowImages();
    m_hImageWide = CreateWideImages();
    return S_OK;
}

void* CKeybInput::FindInterface(REFIID iid) {
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IInputMethod) ||
        IsEqualIID(iid, IID_IInputMethod2))
        return static_cast<IInputMethod2*>(this);
    return nullptr;
}

// The panel first gets the SIP window's screen rectangle; ReceiveSipInfo then moves it to the SIP window's
// origin.
STDMETHODIMP CKeybInput::Select(HWND sip) {
    if (m_MainWnd.m_hWnd) return S_OK;
    m_MainWnd.m_pKbd = &m_Kbd;
    m_hSipWnd = sip;
    m_Res = GetScreenSize();
    RECT place{};
    GetWindowRect(sip, &place);
    if (!m_MainWnd.Create(sip, place, nullptr, WS_CHILD, 0)) return E_FAIL;
    MoveWindow(sip, 0, place.top, m_Res.cx, place.bottom - place.top, TRUE);
    if (!m_Kbd.Init(m_Res.cx, m_Res.cy)) return E_FAIL;
    ShowWindow(m_MainWnd.m_hWnd, SW_SHOWNOACTIVATE);
    return S_OK;
}

STDMETHODIMP CKeybInput::Deselect() {
    if (!m_MainWnd.m_hWnd) return S_OK;
    DestroyWindow(m_MainWnd.m_hWnd);
    m_MainWnd.m_hWnd = nullptr;
    m_Kbd.UnloadSkin();
    return S_OK;
}

// The SIP window's height is a third of a landscape screen and a quarter of any other; either of them may
// stay.
STDMETHODIMP CKeybInput::Showing() {
    if (!m_MainWnd.m_hWnd) return S_OK;
    RECT place{};
    GetWindowRect(m_hSipWnd, &place);
    const LONG height = place.bottom - place.top;
    const LONG third = m_Res.cy / 3;
    const LONG quarter = m_Res.cy / 4;
    if (height != third && height != quarter)
        MoveWindow(m_hSipWnd, 0, place.top, m_Res.cx, m_Res.cx > m_Res.cy ? third : quarter, TRUE);
    m_Kbd.PressModifierKeys();
    return S_OK;
}

STDMETHODIMP CKeybInput::Hiding() {
    m_Kbd.ReleaseModifierKeys();
    return S_OK;
}

STDMETHODIMP CKeybInput::GetInfo(IMINFO* info) {
    if (!info) return E_POINTER;
    info->cbSize = kInfoSize;
    info->fdwFlags = SIPF_DOCKED;
    info->hImageNarrow = m_hImageNarrow;
    info->hImageWide = m_hImageWide;
    info->iNarrow = LastImage(m_hImageNarrow);
    info->iWide = LastImage(m_hImageWide);
    return S_OK;
}

STDMETHODIMP CKeybInput::ReceiveSipInfo(SIPINFO* info) {
    if (!info) return E_POINTER;
    const bool skinChanged = HasSkinChanged();
    const SIZE screen = GetScreenSize();
    RECT& place = info->rcSipRect;
    if (screen.cx != m_Res.cx || screen.cy != m_Res.cy || skinChanged) {
        m_Res = screen;
        place.left = 0;
        place.right = m_Res.cx;
        if (!m_Kbd.Init(m_Res.cx, m_Res.cy)) return E_FAIL;
    }
    MoveWindow(m_MainWnd.m_hWnd, 0, 0, place.right - place.left, place.bottom - place.top, TRUE);
    return S_OK;
}

// Also true when only the case of letters differs.
bool CKeybInput::HasSkinChanged() const {
    StoredText stored;
    return CSettingsKey(SettingsAccess::Write).ReadString(kSkinValue, stored) && *stored &&
           lstrcmpW(stored, m_Kbd.m_strSkinPath.c_str()) != 0;
}

STDMETHODIMP CKeybInput::RegisterCallback(IIMCallback* callback) {
    m_Kbd.m_pCallback = callback;
    return S_OK;
}

STDMETHODIMP CKeybInput::GetImData(DWORD, void*) { return S_OK; }

STDMETHODIMP CKeybInput::SetImData(DWORD, void*) { return S_OK; }

STDMETHODIMP CKeybInput::UserOptionsDlg(HWND parent) {
    m_OptionsDlg.m_pKeyboard = &m_Kbd;
    m_OptionsDlg.DoModal(parent, 0);
    return S_OK;
}

STDMETHODIMP CKeybInput::SetIMMActiveContext(HWND, BOOL, DWORD, DWORD, DWORD) { return S_OK; }

STDMETHODIMP CKeybInput::RegisterCallback2(IIMCallback2*) { return S_OK; }
