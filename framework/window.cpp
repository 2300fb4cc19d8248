// SPDX-License-Identifier: MIT
#include "framework/window.h"

ATOM CWndClassInfo::Register() {
    m_wc.hInstance = _Module.GetModuleInstance();
    m_wc.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    m_atom = _Module.RegisterWindowClass(m_wc, m_atom);
    return m_atom;
}
