// SPDX-License-Identifier: MIT
// Simulates the handheld's screen on a larger one, and its colours.
#include <gtest/gtest.h>

#include <map>

#include "test_support.h"
#include "windows/import_patch.h"
#include "windows/test_system.h"

namespace test {
namespace {

SIZE g_screen{240, 320};
std::map<int, COLORREF> g_formerColors;  // those of changed colours

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

void SetScreenSize(LONG width, LONG height) { g_screen = {width, height}; }

void RedirectScreenSize(HMODULE module) { ReplaceImport(module, "GetSystemMetrics", &GetTestMetrics); }

void ChangeSystemColor(int index, COLORREF color) {
    g_formerColors.emplace(index, GetSysColor(index));
    ASSERT_TRUE(SetSysColors(1, &index, &color));
}

void RestoreSystemColors() {
    for (const auto& [index, color] : g_formerColors)
        SetSysColors(1, &index, &color);
    g_formerColors.clear();
}

}  // namespace test
