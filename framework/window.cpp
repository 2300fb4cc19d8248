// SPDX-License-Identifier: MIT
#include "framework/window.h"

ATOM CWndClassInfo::Register() { return _Module.RegisterWindowClass(m_wc, m_atom); }
