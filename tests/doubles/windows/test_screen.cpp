// SPDX-License-Identifier: MIT
// Simulates the handheld's screen on a larger one.
#include "test_support.h"
#include "windows/import_patch.h"
#include "windows/test_system.h"

namespace test {
namespace {

SIZE g_screen{240, 320};

int WINAPI GetTestMetrics(int index) {
    switch (index) {
        case SM_CXSCREEN:
            return static_cast<int>(g_screen.cx);
        case SM_CYSCREEN:
            return static_cast<int>(g_screen.cy);
        default: {
            // Called by its address, as this module's import is redirected to this function.
            static const auto original = reinterpret_cast<decltype(&GetTestMetrics)>(
                reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetSystemMetrics")));
            return original(index);
        }
    }
}

}  // namespace

bool SetScreenSize(LONG width, LONG height) {
    g_screen = {width, height};
    return true;
}

void RedirectScreenSize(HMODULE module) { ReplaceImport(module, "GetSystemMetrics", &GetTestMetrics); }

}  // namespace test
