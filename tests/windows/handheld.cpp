// SPDX-License-Identifier: MIT
#include "handheld.h"

#include <gtest/gtest.h>

#include "test_support.h"
#include "windows/test_system.h"

const CLSID kInputMethod = {0x5C1E0B7A, 0x93D4, 0x4F28, {0xB6, 0xA1, 0x2D, 0x7E, 0x4C, 0x9F, 0x8A, 0x30}};

void InstallFiles() {
    test::CopyToDevice(TOLKA_LIBRARY, "Windows/tolka.dll");
    test::CopyToDevice(STANDARD_SKIN, "Windows/standard.tlk");
}

LoadedLibrary::LoadedLibrary() : m_module(LoadLibraryW(kInstalledPath)) {
    EXPECT_NE(m_module, nullptr) << "error " << GetLastError();
    if (m_module) test::RedirectScreenSize(m_module);
}

void LoadedLibrary::Free() {
    if (m_module) FreeLibrary(m_module);
    m_module = nullptr;
}

HRESULT LoadedLibrary::Call(const char* name) const {
    using Export = HRESULT(STDAPICALLTYPE*)();
    const auto entry = reinterpret_cast<Export>(reinterpret_cast<void (*)()>(GetProcAddress(m_module, name)));
    EXPECT_NE(entry, nullptr) << name;
    return entry ? entry() : E_UNEXPECTED;
}

void DeliverMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageW(&message);
}

void SendPen(HWND panel, UINT message, POINT point) {
    RECT area{};
    GetClientRect(panel, &area);
    HWND target = GetCapture();
    if (target)
        MapWindowPoints(panel, target, &point, 1);
    else if (PtInRect(&area, point))
        target = panel;
    const WPARAM buttons = message == WM_LBUTTONUP ? 0 : MK_LBUTTON;
    if (target) SendMessageW(target, message, buttons, MAKELPARAM(point.x, point.y));
    DeliverMessages();
}
