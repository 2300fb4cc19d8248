// SPDX-License-Identifier: MIT
#pragma once

#include <sip_shell.h>

#include <functional>
#include <utility>

#include "trace.h"

// Writes every call between the SIP and the input method to the trace.
class SipTrace final : public SipObserver {
public:
    explicit SipTrace(Trace& trace) : m_trace(trace) {}
    // Gets the result of each successful GetInfo.
    void SetInfoHandler(std::function<void(const IMINFO&)> handler) { m_infoHandler = std::move(handler); }

    // Called when the user has chosen a skin in the options dialog, even the one in use.
    void SetChoiceHandler(std::function<void()> handler) { m_choiceHandler = std::move(handler); }

    void OnCall(SipCall call, HRESULT result) override;
    void OnGetInfo(HRESULT result, const IMINFO& info) override;
    void OnReceiveSipInfo(HRESULT result, const SIPINFO& info) override;
    void OnShowIM(DWORD flags) override;
    void OnSetCurrentIM(REFCLSID clsid) override;
    void OnSendVirtualKey(BYTE virtualKey, DWORD flags) override;
    void OnSendCharEvents(UINT virtualKey, UINT keyFlags, UINT count, const UINT* shiftStates,
                          const UINT* characters) override;

private:
    Trace& m_trace;
    std::function<void(const IMINFO&)> m_infoHandler;
    std::function<void()> m_choiceHandler;
    bool m_optionsOpen = false;
};
