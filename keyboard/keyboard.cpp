// SPDX-License-Identifier: MIT
#include "keyboard/keyboard.h"

#include <iterator>

#include "keyboard/skin_resources.h"

CKeyboard::~CKeyboard() {
    if (m_hSkinLib) FreeLibrary(m_hSkinLib);
    ReleaseBitmap(m_hOrigExtMaskBmp);
    ReleaseBitmap(m_hOrigMaskBmp);
    ReleaseContext(m_hExtMaskDC);
    ReleaseContext(m_hMaskDC);
    ReleaseContext(m_hKbDC);
    for (auto bitmap = std::rbegin(kSkinBitmaps); bitmap != std::rend(kSkinBitmaps); ++bitmap)
        ReleaseBitmap(this->*bitmap->field);
}
