// SPDX-License-Identifier: MIT
#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>

#include "device/faults.h"
#include "windows/system_window.h"

namespace host {

namespace {

constexpr ATOM kFirstAtom = 0xC000;
constexpr std::size_t kMaxNameLength = 255;

std::vector<std::unique_ptr<WindowClass>> g_classes;
std::vector<std::unique_ptr<WindowClass>> g_systemClasses;
ATOM g_nextAtom = kFirstAtom;

bool Matches(const WindowClass& windowClass, LPCWSTR name, HINSTANCE instance) {
    if (windowClass.instance != instance) return false;
    if (IS_INTRESOURCE(name)) return windowClass.atom == static_cast<ATOM>(reinterpret_cast<ULONG_PTR>(name));
    return lstrcmpiW(windowClass.name.c_str(), name) == 0;
}

WindowClass* FindAmong(const std::vector<std::unique_ptr<WindowClass>>& all, LPCWSTR name,
                       HINSTANCE instance) {
    if (!name) return nullptr;
    for (const auto& windowClass : all)
        if (Matches(*windowClass, name, instance)) return windowClass.get();
    return nullptr;
}

WindowClass* FindOwnClass(LPCWSTR name, HINSTANCE instance) { return FindAmong(g_classes, name, instance); }

// Atoms count upward and start again, skipping those in use; there are 0x4000 of them.
ATOM TakeAtom() {
    const auto taken = [](const auto& windowClass) { return windowClass->atom == g_nextAtom; };
    while (std::any_of(g_classes.begin(), g_classes.end(), taken))
        g_nextAtom = g_nextAtom == 0xFFFF ? kFirstAtom : static_cast<ATOM>(g_nextAtom + 1);
    const ATOM atom = g_nextAtom;
    g_nextAtom = g_nextAtom == 0xFFFF ? kFirstAtom : static_cast<ATOM>(g_nextAtom + 1);
    return atom;
}

// Extra bytes and class menus are not simulated, so asking for them is an error.
DWORD CheckClass(const WNDCLASSW* windowClass) {
    if (!windowClass || !windowClass->lpszClassName || IS_INTRESOURCE(windowClass->lpszClassName))
        return ERROR_INVALID_PARAMETER;
    const std::size_t length = std::u16string_view(windowClass->lpszClassName).size();
    if (length == 0 || length > kMaxNameLength || !windowClass->lpfnWndProc) return ERROR_INVALID_PARAMETER;
    if (windowClass->cbClsExtra || windowClass->cbWndExtra || windowClass->lpszMenuName)
        return ERROR_CALL_NOT_IMPLEMENTED;
    if (FindOwnClass(windowClass->lpszClassName, windowClass->hInstance)) return ERROR_CLASS_ALREADY_EXISTS;
    return g_classes.size() > 0xFFFF - kFirstAtom ? ERROR_NOT_ENOUGH_MEMORY : ERROR_SUCCESS;
}

}  // namespace

WindowClass* FindClass(LPCWSTR name, HINSTANCE instance) {
    WindowClass* found = FindOwnClass(name, instance);
    if (!found) found = FindOwnClass(name, nullptr);
    return found ? found : FindAmong(g_systemClasses, name, nullptr);
}

void RegisterSystemClass(const WCHAR* name, ATOM atom, WNDPROC procedure, UINT style) {
    if (FindAmong(g_systemClasses, MAKEINTRESOURCEW(atom), nullptr)) return;
    auto windowClass = std::make_unique<WindowClass>();
    windowClass->name = name;
    windowClass->atom = atom;
    windowClass->style = style | CS_HREDRAW | CS_VREDRAW;
    windowClass->procedure = procedure;
    windowClass->background = reinterpret_cast<HBRUSH>(ULONG_PTR{COLOR_WINDOW + 1});
    g_systemClasses.push_back(std::move(windowClass));
}

void ResetClasses() {
    g_classes.clear();
    g_nextAtom = kFirstAtom;
}

}  // namespace host

using namespace host;

ATOM WINAPI RegisterClassW(const WNDCLASSW* windowClass) {
    if (CallFails(Call::RegisterClass, ERROR_NOT_ENOUGH_MEMORY)) return 0;
    const DWORD error = CheckClass(windowClass);
    if (error != ERROR_SUCCESS) return Fail(error, ATOM{0});
    auto registered = std::make_unique<WindowClass>();
    registered->name = windowClass->lpszClassName;
    registered->instance = windowClass->hInstance;
    registered->atom = TakeAtom();
    registered->style = windowClass->style;
    registered->procedure = windowClass->lpfnWndProc;
    registered->background = windowClass->hbrBackground;
    g_classes.push_back(std::move(registered));
    return g_classes.back()->atom;
}

BOOL WINAPI UnregisterClassW(LPCWSTR name, HINSTANCE instance) {
    const WindowClass* windowClass = FindOwnClass(name, instance);
    if (!windowClass || windowClass->windows > 0)
        return Fail(windowClass ? ERROR_CLASS_HAS_WINDOWS : ERROR_CLASS_DOES_NOT_EXIST, FALSE);
    const auto same = [windowClass](const auto& other) { return other.get() == windowClass; };
    g_classes.erase(std::find_if(g_classes.begin(), g_classes.end(), same));
    return TRUE;
}

// A pen device shows no cursor: the handle is never drawn.
HCURSOR WINAPI LoadCursorW(HINSTANCE instance, LPCWSTR name) {
    if (!instance && name == IDC_ARROW) return reinterpret_cast<HCURSOR>(const_cast<WCHAR*>(name));
    return Fail(ERROR_RESOURCE_NAME_NOT_FOUND, nullptr);
}
