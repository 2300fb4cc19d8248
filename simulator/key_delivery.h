// SPDX-License-Identifier: MIT
#pragma once

#include <sip_shell.h>

// Posts the keys of the input method to the window with the focus, as the platform's keyboard driver does. A
// character event brings its own shift state along: where that names a modifier that is not held, the
// modifier goes down before the key and up behind it.
class KeyDelivery final : public SipKeySink {
public:
    void SendVirtualKey(BYTE virtualKey, DWORD flags) override;
    void SendCharEvent(UINT virtualKey, UINT shiftState, WCHAR character) override;

private:
    bool m_shiftHeld = false;
    bool m_controlHeld = false;
};
