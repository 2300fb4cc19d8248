// SPDX-License-Identifier: MIT
// The Software Input Panel for input methods and dialogs. Desktop Windows has no such header; this one is for
// all builds.
#pragma once

#include <objbase.h>
#include <windows.h>

#define SIPF_OFF 0x00000000
#define SIPF_ON 0x00000001
#define SIPF_DOCKED 0x00000002

struct IMINFO {
    DWORD cbSize;
    HANDLE hImageNarrow;  // image lists
    HANDLE hImageWide;
    int iNarrow;  // index of the image in its list
    int iWide;
    DWORD fdwFlags;
    RECT rcSipRect;
};

struct SIPINFO {
    DWORD cbSize;
    DWORD fdwFlags;
    RECT rcVisibleDesktop;
    RECT rcSipRect;
    DWORD dwImDataSize;
    void* pvImData;
};

// Key state flags of SendCharEvents.
#define KeyStateDownFlag 0x00000080u
#define KeyShiftNoCharacterFlag 0x00010000u
#define KeyShiftAnyShiftFlag 0x20000000u
#define KeyShiftAnyCtrlFlag 0x40000000u

struct IIMCallback : public IUnknown {
    STDMETHOD(SetImInfo)(IMINFO* info) PURE;
    STDMETHOD(SendVirtualKey)(BYTE virtualKey, DWORD flags) PURE;
    STDMETHOD(SendCharEvents)
    (UINT virtualKey, UINT keyFlags, UINT count, UINT* shiftStates, UINT* characters) PURE;
    STDMETHOD(SendString)(LPWSTR text, DWORD characters) PURE;
};

struct IIMCallback2;

struct IInputMethod : public IUnknown {
    STDMETHOD(Select)(HWND sip) PURE;
    STDMETHOD(Deselect)() PURE;
    STDMETHOD(Showing)() PURE;
    STDMETHOD(Hiding)() PURE;
    STDMETHOD(GetInfo)(IMINFO* info) PURE;
    STDMETHOD(ReceiveSipInfo)(SIPINFO* info) PURE;
    STDMETHOD(RegisterCallback)(IIMCallback* callback) PURE;
    STDMETHOD(GetImData)(DWORD size, void* data) PURE;
    STDMETHOD(SetImData)(DWORD size, void* data) PURE;
    STDMETHOD(UserOptionsDlg)(HWND parent) PURE;
};

struct IInputMethod2 : public IInputMethod {
    STDMETHOD(SetIMMActiveContext)
    (HWND window, BOOL open, DWORD conversion, DWORD sentence, DWORD keyboardLayout) PURE;
    STDMETHOD(RegisterCallback2)(IIMCallback2* callback) PURE;
};

extern "C" const IID IID_IInputMethod;   // {42429666-ae04-11d0-a4f8-00aa00a749b9}
extern "C" const IID IID_IInputMethod2;  // {0576f2e1-aa6b-11d2-a146-0000f8757270}

// Shows or hides the panel (SIPF_ON, SIPF_OFF).
extern "C" BOOL WINAPI SipShowIM(DWORD flags);
extern "C" BOOL WINAPI SipGetCurrentIM(CLSID* clsid);
extern "C" BOOL WINAPI SipSetCurrentIM(CLSID* clsid);
