// SPDX-License-Identifier: MIT
#include "sip_trace.h"

namespace {

const char* CallName(SipCall call) {
    switch (call) {
        case SipCall::Create:
            return "Create";
        case SipCall::Select:
            return "Select";
        case SipCall::Deselect:
            return "Deselect";
        case SipCall::Showing:
            return "Showing";
        case SipCall::Hiding:
            return "Hiding";
        case SipCall::UserOptionsDlg:
            return "UserOptionsDlg";
        case SipCall::RegisterCallback:
            break;
    }
    return "RegisterCallback";
}

// Separated by commas; usually there is only one.
std::string HexadecimalList(const UINT* values, UINT count) {
    std::string text;
    for (UINT i = 0; i < count; ++i)
        text += (i ? "," : "") + Hexadecimal(values[i]);
    return text;
}

}  // namespace

void SipTrace::OnCall(SipCall call, HRESULT result) {
    // The trace has no line for this call.
    if (call == SipCall::RegisterCallback) return m_trace.NoteResult(result);
    if (call == SipCall::UserOptionsDlg) m_optionsOpen = false;
    m_trace.WriteCall(CallName(call), result);
}

void SipTrace::OnGetInfo(HRESULT result, const IMINFO& info) {
    m_trace.WriteCall("GetInfo", result,
                      " size=" + std::to_string(info.cbSize) + " flags=" + Hexadecimal(info.fdwFlags) +
                          " narrow=" + std::to_string(info.iNarrow) + " wide=" + std::to_string(info.iWide));
    if (SUCCEEDED(result) && m_infoHandler) m_infoHandler(info);
}

void SipTrace::OnReceiveSipInfo(HRESULT result, const SIPINFO& info) {
    const RECT& r = info.rcSipRect;
    m_trace.WriteCall("ReceiveSipInfo", result,
                      " rect=" + std::to_string(r.left) + ',' + std::to_string(r.top) + ',' +
                          std::to_string(r.right) + ',' + std::to_string(r.bottom));
}

// The options dialog shows the panel when it opens, and again for each chosen skin.
void SipTrace::OnShowIM(DWORD flags) {
    m_trace.Write("SipShowIM flags=" + Hexadecimal(flags));
    if (flags != SIPF_ON) return;
    if (m_optionsOpen && m_choiceHandler) m_choiceHandler();
    m_optionsOpen = true;
}

void SipTrace::OnSetCurrentIM(REFCLSID clsid) { m_trace.Write("SipSetCurrentIM " + GuidText(clsid)); }

void SipTrace::OnSendVirtualKey(BYTE virtualKey, DWORD flags) {
    m_trace.Write("SendVirtualKey vk=" + Hexadecimal(virtualKey) + " flags=" + Hexadecimal(flags));
}

void SipTrace::OnSendCharEvents(UINT virtualKey, UINT keyFlags, UINT count, const UINT* shiftStates,
                                const UINT* characters) {
    m_trace.Write("SendCharEvents vk=" + Hexadecimal(virtualKey) + " flags=" + Hexadecimal(keyFlags) +
                  " count=" + std::to_string(count) + " shift=" + HexadecimalList(shiftStates, count) +
                  " char=" + HexadecimalList(characters, count));
}
