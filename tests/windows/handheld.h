// SPDX-License-Identifier: MIT
// The handheld around the real library: its files, its registration, its SIP and its pen.
#pragma once

#include <sip_shell.h>

#include <memory>

#include "panel_picture.h"

// {5C1E0B7A-93D4-4F28-B6A1-2D7E4C9F8A30}
extern const CLSID kInputMethod;
inline constexpr WCHAR kInstalledPath[] = L"\\Windows\\tolka.dll";

// Copies the built library and the standard skin to \Windows.
void InstallFiles();

// The library, loaded from its installed place as long as this lives; it is told the handheld's screen.
class LoadedLibrary {
public:
    LoadedLibrary();
    ~LoadedLibrary() { Free(); }
    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;

    HMODULE Get() const { return m_module; }
    void Free();
    // One of the exports without arguments.
    HRESULT Call(const char* name) const;
    // A library that is loaded already from that place is not loaded anew.
    static bool IsLoaded() { return GetModuleHandleW(kInstalledPath) != nullptr; }

private:
    HMODULE m_module;
};

// Delivers every message that is waiting.
void DeliverMessages();

// A pen message for the panel, in its client coordinates: to whoever has the capture, else to the panel if
// the point lies in it. Then everything that follows is delivered.
void SendPen(HWND panel, UINT message, POINT point);
