// SPDX-License-Identifier: MIT
#pragma once

#include <sip_shell.h>

// The callback through which the input method sends keys. The shell owns it: input methods borrow the pointer
// without counting, so the reference count is a formality and the last Release frees nothing.
class SipCallback final : public IIMCallback {
public:
    SipCallback(SipObserver& observer, SipKeySink& keys) : m_observer(observer), m_keys(keys) {}

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;
    STDMETHODIMP SetImInfo(IMINFO* info) override;
    STDMETHODIMP SendVirtualKey(BYTE virtualKey, DWORD flags) override;
    STDMETHODIMP SendCharEvents(UINT virtualKey, UINT keyFlags, UINT count, UINT* shiftStates,
                                UINT* characters) override;
    STDMETHODIMP SendString(LPWSTR text, DWORD characters) override;

private:
    SipObserver& m_observer;
    SipKeySink& m_keys;
    LONG volatile m_references = 1;
};
