// SPDX-License-Identifier: MIT
// Sends keys through the SIP's callback, whose results are ignored.
#include "keyboard/key_codes.h"
#include "keyboard/keyboard.h"

namespace {

struct FunctionKey {
    WCHAR code;
    BYTE virtualKey;
};
// Function keys that send a key-down and a key-up.
constexpr FunctionKey kDownUpKeys[] = {
    {kBackspaceCode, VK_BACK}, {kEnterCode, VK_RETURN}, {kSpaceCode, VK_SPACE}, {kLeftCode, VK_LEFT},
    {kUpCode, VK_UP},          {kRightCode, VK_RIGHT},  {kDownCode, VK_DOWN},
};

struct CharacterKey {
    WCHAR character;  // small, language 1
    UINT virtualKey;
};
// From the hyphen on these are the platform's usual virtual keys; only Control combinations depend on them.
constexpr CharacterKey kPunctuationKeys[] = {
    {'\'', VK_OEM_7},   {',', VK_OEM_COMMA}, {'.', VK_OEM_PERIOD}, {'/', VK_OEM_2},
    {';', VK_OEM_1},    {'[', VK_OEM_4},     {']', VK_OEM_6},      {'-', VK_OEM_MINUS},
    {'=', VK_OEM_PLUS}, {'`', VK_OEM_3},     {'\\', VK_OEM_5},
};

// By the language-1 characters, whichever plane is active: a key is the same physical key in all planes.
UINT VirtualKeyOf(const CharsetEntry& record) {
    const WCHAR small = record.m_Slots[0];
    const WCHAR large = record.m_Slots[1];
    if (small >= '0' && small <= '9') return small;
    for (const CharacterKey& key : kPunctuationKeys)
        if (key.character == small) return key.virtualKey;
    return large >= 'A' && large <= 'Z' ? large : 0u;
}

}  // namespace

void CKeyboard::SendKeyToApp(CharsetEntry record, bool bShifted) {
    if (!m_pCallback) return;
    if (IsFunctionalKeyEntry(record.m_Slots[0]))
        SendFunctionKey(record.m_Slots[0], bShifted);
    else
        SendCharacterKey(record, bShifted);
}

// Function keys ignore the plane. Codes without an action, and status codes, send nothing.
void CKeyboard::SendFunctionKey(WCHAR code, bool bShifted) {
    if (code == kEscapeCode) {
        m_pCallback->SendVirtualKey(VK_ESCAPE, 0);
        return;
    }
    if (code == kTabCode) {
        const bool shifted = bShifted || m_stKbStatus.m_bShift;
        SendCharEvent(VK_TAB, KeyStateDownFlag | (shifted ? KeyShiftAnyShiftFlag : 0), '\t');
        return;
    }
    if (code == kBackspaceCode && m_stKbStatus.m_bShift) {
        m_pCallback->SendVirtualKey(VK_SHIFT, KEYEVENTF_KEYUP);
        SendDownUp(VK_DELETE);
        return;
    }
    for (const FunctionKey& key : kDownUpKeys)
        if (key.code == code) SendDownUp(key.virtualKey);
}

void CKeyboard::SendDownUp(BYTE virtualKey) {
    m_pCallback->SendVirtualKey(virtualKey, 0);
    m_pCallback->SendVirtualKey(virtualKey, KEYEVENTF_KEYUP);
}

// Under Control a single key-down without character makes the combination.
void CKeyboard::SendCharacterKey(const CharsetEntry& record, bool bShifted) {
    const UINT virtualKey = VirtualKeyOf(record);
    const WCHAR character = CharacterOf(record, bShifted);
    if (m_stKbStatus.m_bCtrl) {
        SendCharEvent(virtualKey, KeyStateDownFlag | KeyShiftAnyCtrlFlag | KeyShiftNoCharacterFlag,
                      character);
        return;
    }
    const bool shifted = (m_stKbStatus.m_bShift != m_stKbStatus.m_bCAPS) != bShifted;
    const UINT shiftFlag = shifted ? KeyShiftAnyShiftFlag : 0;
    SendCharEvent(virtualKey, KeyStateDownFlag | shiftFlag, character);
    SendCharEvent(virtualKey, KeyShiftNoCharacterFlag | shiftFlag, character);
}

// An upward stroke types the other case. So does a key of the digit row while caps lock selects a plane that
// Shift alone would not, as the row ignores caps lock. Both together still change the case once.
WCHAR CKeyboard::CharacterOf(const CharsetEntry& record, bool bShifted) const {
    const Plane plane = ActivePlane();
    if (plane == PlaneDigit) return record.m_Slots[PlaneUml2Lrg];
    const bool large = plane & 1;
    const bool ignoresCaps = CapsSplitsPicture() && m_CAPSRect.right != m_CAPSRect.left &&
                             m_CAPSRect.bottom != m_CAPSRect.top && IsDigitalLineEntry(record.m_Slots[0]);
    const bool otherCase = bShifted || (ignoresCaps && large != (m_stKbStatus.m_bShift != 0));
    return record.m_Slots[otherCase ? plane ^ 1 : plane];
}

void CKeyboard::SendCharEvent(UINT virtualKey, UINT flags, WCHAR character) {
    UINT shiftState = flags;
    UINT code = character;
    m_pCallback->SendCharEvents(virtualKey, flags, 1, &shiftState, &code);
}
