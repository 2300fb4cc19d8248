// SPDX-License-Identifier: MIT
#include "keyboard/keyboard.h"

#include "keyboard/skin_resources.h"

CKeyboard::~CKeyboard() {
    if (m_hSkinLib) FreeLibrary(m_hSkinLib);
    ReleaseBitmap(m_hOrigExtMaskBmp);
    ReleaseBitmap(m_hOrigMaskBmp);
    ReleaseContext(m_hExtMaskDC);
    ReleaseContext(m_hMaskDC);
    ReleaseContext(m_hKbDC);
    ReleaseBitmap(m_hUml2LrgKbMask);
    ReleaseBitmap(m_hUml2SmlKbMask);
    ReleaseBitmap(m_hUml1LrgKbMask);
    ReleaseBitmap(m_hUml1SmlKbMask);
    ReleaseBitmap(m_hLng2LrgKbMask);
    ReleaseBitmap(m_hLng2SmlKbMask);
    ReleaseBitmap(m_hLng1LrgKbMask);
    ReleaseBitmap(m_hLng1SmlKbMask);
    ReleaseBitmap(m_hDigitMask);
    ReleaseBitmap(m_hKbBitmap);
    ReleaseBitmap(m_hDigitKbBitmap);
}
