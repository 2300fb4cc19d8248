// SPDX-License-Identifier: MIT
#include "key_delivery.h"

#include <host_control.h>

namespace {

// Holds a modifier down during one key.
class BriefModifier {
public:
    BriefModifier(UINT virtualKey, bool wanted) : m_virtualKey(virtualKey), m_wanted(wanted) {
        if (m_wanted) host::PostKey(m_virtualKey, true);
    }
    ~BriefModifier() {
        if (m_wanted) host::PostKey(m_virtualKey, false);
    }
    BriefModifier(const BriefModifier&) = delete;
    BriefModifier& operator=(const BriefModifier&) = delete;

private:
    UINT m_virtualKey;
    bool m_wanted;
};

}  // namespace

void KeyDelivery::SendVirtualKey(BYTE virtualKey, DWORD flags) {
    const bool down = (flags & KEYEVENTF_KEYUP) == 0;
    if (virtualKey == VK_SHIFT) m_shiftHeld = down;
    if (virtualKey == VK_CONTROL) m_controlHeld = down;
    host::PostKey(virtualKey, down);
}

// A character without a virtual key is only a WM_CHAR.
void KeyDelivery::SendCharEvent(UINT virtualKey, UINT shiftState, WCHAR character) {
    if ((shiftState & KeyStateDownFlag) == 0) {
        if (virtualKey != 0) host::PostKey(virtualKey, false);
        return;
    }
    const BriefModifier shift(VK_SHIFT, (shiftState & KeyShiftAnyShiftFlag) && !m_shiftHeld);
    const BriefModifier control(VK_CONTROL, (shiftState & KeyShiftAnyCtrlFlag) && !m_controlHeld);
    if (virtualKey != 0) host::PostKey(virtualKey, true);
    if ((shiftState & KeyShiftNoCharacterFlag) == 0) host::PostCharacter(virtualKey, character);
}
