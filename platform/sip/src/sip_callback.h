// SPDX-License-Identifier: MIT
#pragma once

#include <sip_shell.h>

// What the input method is given to send keys through. It belongs to the shell: input methods borrow the
// pointer without counting, so references are counted for form alone and the last one frees nothing.
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
