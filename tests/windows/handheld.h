// SPDX-License-Identifier: MIT
// The handheld around the real library: files, registration, SIP and pen.
#pragma once

#include <sip_shell.h>

#include <memory>

#include "panel_picture.h"

// {5C1E0B7A-93D4-4F28-B6A1-2D7E4C9F8A30}
extern const CLSID kInputMethod;
inline constexpr WCHAR kInstalledPath[] = L"\\Windows\\tolka.dll";

// Copies the built library and the standard skin to \Windows.
void InstallFiles();

// Loads the library from its installed path and redirects its screen size to the handheld's.
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
    // Is the library loaded from its installed path?
    static bool IsLoaded() { return GetModuleHandleW(kInstalledPath) != nullptr; }

private:
    HMODULE m_module;
};

// Delivers all waiting messages.
void DeliverMessages();

// Sends a pen message, in the panel's client coordinates, to the window with the capture, else to the panel
// if it contains the point; then delivers all messages.
void SendPen(HWND panel, UINT message, POINT point);
