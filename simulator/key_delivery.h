// SPDX-License-Identifier: MIT
#pragma once

#include <sip_shell.h>

// Posts the keys of the input method to the window with the focus, like the platform's keyboard driver. A
// character event has its own shift state: a modifier in it that is not held goes down before the key and up
// after it.
class KeyDelivery final : public SipKeySink {
public:
    void SendVirtualKey(BYTE virtualKey, DWORD flags) override;
    void SendCharEvent(UINT virtualKey, UINT shiftState, WCHAR character) override;

private:
    bool m_shiftHeld = false;
    bool m_controlHeld = false;
};
