// SPDX-License-Identifier: MIT
// The input method, the object that the SIP drives.
#pragma once

#include <windows.h>

#include <commctrl.h>
#include <sip.h>

#include "framework/com_object.h"
#include "input_method/main_wnd.h"
#include "keyboard/keyboard.h"
#include "settings/settings_dlg.h"

extern "C" const CLSID CLSID_KeybInput;  // {5C1E0B7A-93D4-4F28-B6A1-2D7E4C9F8A30}

// State                    entered by                panel                keyboard
// created                  construction              none                 not initialised
// selected                 Select                    shown                initialised for m_Res
// selected, no keyboard    Select that failed late   created and hidden   initialisation failed
// deselected               Deselect                  none                 skin unloaded
class CKeybInput : public CComObjectRootEx<CComMultiThreadModel>,
                   public CComCoClass<CKeybInput, &CLSID_KeybInput>,
                   public IInputMethod2 {
public:
    HRESULT FinalConstruct();
    // Every interface of the object shares one pointer.
    void* FindInterface(REFIID iid);

    STDMETHODIMP Select(HWND sip) override;
    STDMETHODIMP Deselect() override;
    STDMETHODIMP Showing() override;
    STDMETHODIMP Hiding() override;
    STDMETHODIMP GetInfo(IMINFO* info) override;
    STDMETHODIMP ReceiveSipInfo(SIPINFO* info) override;
    // The callback is borrowed: neither counted nor released.
    STDMETHODIMP RegisterCallback(IIMCallback* callback) override;
    STDMETHODIMP GetImData(DWORD size, void* data) override;
    STDMETHODIMP SetImData(DWORD size, void* data) override;
    STDMETHODIMP UserOptionsDlg(HWND parent) override;
    STDMETHODIMP SetIMMActiveContext(HWND window, BOOL open, DWORD conversion, DWORD sentence,
                                     DWORD keyboardLayout) override;
    STDMETHODIMP RegisterCallback2(IIMCallback2* callback) override;

protected:
    CKeybInput() = default;
    ~CKeybInput() = default;

private:
    bool HasSkinChanged() const;

    CMainWnd m_MainWnd;  // has a handle exactly while the input method is selected
    HWND m_hSipWnd = nullptr;
    CKeyboard m_Kbd;
    // The button images that GetInfo reports; null when a list could not be made. They outlive the object.
    HIMAGELIST m_hImageNarrow = nullptr;
    HIMAGELIST m_hImageWide = nullptr;
    CSettingsDlg m_OptionsDlg{CLSID_KeybInput};
    SIZE m_Res{};  // the screen that the keyboard was last initialised for; (0, 0) before the first time
};
