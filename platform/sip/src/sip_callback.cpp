// SPDX-License-Identifier: MIT
#include "sip_callback.h"

STDMETHODIMP SipCallback::QueryInterface(REFIID iid, void** object) {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (!IsEqualIID(iid, IID_IUnknown)) return E_NOINTERFACE;
    *object = static_cast<IIMCallback*>(this);
    AddRef();
    return S_OK;
}

STDMETHODIMP_(ULONG) SipCallback::AddRef() { return static_cast<ULONG>(InterlockedIncrement(&m_references)); }

STDMETHODIMP_(ULONG) SipCallback::Release() {
    return static_cast<ULONG>(InterlockedDecrement(&m_references));
}

// This SIP asks for the button images once, at Select, and ignores later ones.
STDMETHODIMP SipCallback::SetImInfo(IMINFO*) { return E_NOTIMPL; }

STDMETHODIMP SipCallback::SendVirtualKey(BYTE virtualKey, DWORD flags) {
    m_observer.OnSendVirtualKey(virtualKey, flags);
    m_keys.SendVirtualKey(virtualKey, flags);
    return S_OK;
}

STDMETHODIMP SipCallback::SendCharEvents(UINT virtualKey, UINT keyFlags, UINT count, UINT* shiftStates,
                                         UINT* characters) {
    if (count != 0 && (!shiftStates || !characters)) return E_INVALIDARG;
    m_observer.OnSendCharEvents(virtualKey, keyFlags, count, shiftStates, characters);
    for (UINT i = 0; i < count; ++i)
        m_keys.SendCharEvent(virtualKey, shiftStates[i], static_cast<WCHAR>(characters[i]));
    return S_OK;
}

STDMETHODIMP SipCallback::SendString(LPWSTR, DWORD) { return E_NOTIMPL; }
