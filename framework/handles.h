// SPDX-License-Identifier: MIT
// Owners of platform handles: each releases its handle at the end of its life.
#pragma once

#include <windows.h>

#include <utility>

// Traits give the handle type, its null value and its release call.
template <typename Traits>
class CHandleOwner {
public:
    using Handle = typename Traits::Handle;

    CHandleOwner() = default;
    explicit CHandleOwner(Handle handle) : m_handle(handle) {}
    CHandleOwner(CHandleOwner&& other) noexcept : m_handle(other.Detach()) {}
    CHandleOwner& operator=(CHandleOwner&& other) noexcept {
        if (this != &other) Reset(other.Detach());
        return *this;
    }
    CHandleOwner(const CHandleOwner&) = delete;
    CHandleOwner& operator=(const CHandleOwner&) = delete;
    ~CHandleOwner() { Reset(); }

    Handle Get() const { return m_handle; }
    explicit operator bool() const { return m_handle != Traits::Null(); }
    // Releases what it owns, then owns the new handle.
    void Reset(Handle handle = Traits::Null()) {
        if (m_handle != Traits::Null()) Traits::Release(m_handle);
        m_handle = handle;
    }
    // Gives the handle away without releasing it.
    [[nodiscard]] Handle Detach() { return std::exchange(m_handle, Traits::Null()); }
    // For calls that return a handle through a pointer; releases the old one first.
    Handle* Receive() {
        Reset();
        return &m_handle;
    }

private:
    Handle m_handle = Traits::Null();
};

template <typename GraphicsHandle>
struct GraphicsTraits {
    using Handle = GraphicsHandle;
    static Handle Null() { return nullptr; }
    static void Release(Handle object) { DeleteObject(object); }
};
struct MemoryDCTraits {
    using Handle = HDC;
    static Handle Null() { return nullptr; }
    static void Release(Handle dc) { DeleteDC(dc); }
};
struct ModuleTraits {
    using Handle = HMODULE;
    static Handle Null() { return nullptr; }
    static void Release(Handle module) { FreeLibrary(module); }
};
struct RegistryKeyTraits {
    using Handle = HKEY;
    static Handle Null() { return nullptr; }
    static void Release(Handle key) { RegCloseKey(key); }
};
struct FindTraits {
    using Handle = HANDLE;
    static Handle Null() { return INVALID_HANDLE_VALUE; }
    static void Release(Handle find) { FindClose(find); }
};

using CBitmapOwner = CHandleOwner<GraphicsTraits<HBITMAP>>;
using CBrushOwner = CHandleOwner<GraphicsTraits<HBRUSH>>;
using CFontOwner = CHandleOwner<GraphicsTraits<HFONT>>;
using CMemoryDC = CHandleOwner<MemoryDCTraits>;
using CModuleOwner = CHandleOwner<ModuleTraits>;
using CRegistryKeyOwner = CHandleOwner<RegistryKeyTraits>;
using CFindOwner = CHandleOwner<FindTraits>;

// Selects an object into a device context and restores the previous one at the end. The context lives longer.
class CSelection {
public:
    CSelection(HDC dc, HGDIOBJ object) : m_dc(dc), m_previous(SelectObject(dc, object)) {}
    ~CSelection() {
        if (m_previous) SelectObject(m_dc, m_previous);
    }
    CSelection(const CSelection&) = delete;
    CSelection& operator=(const CSelection&) = delete;

    // False when the object could not be selected; the context then keeps the one it has.
    explicit operator bool() const { return m_previous != nullptr; }

private:
    HDC m_dc;
    HGDIOBJ m_previous;
};

// One GetDC and its ReleaseDC.
class CWindowDC {
public:
    explicit CWindowDC(HWND window) : m_window(window), m_dc(GetDC(window)) {}
    ~CWindowDC() {
        if (m_dc) ReleaseDC(m_window, m_dc);
    }
    CWindowDC(const CWindowDC&) = delete;
    CWindowDC& operator=(const CWindowDC&) = delete;

    HDC Get() const { return m_dc; }

private:
    HWND m_window;
    HDC m_dc;
};

// One BeginPaint and its EndPaint.
class CPaintCycle {
public:
    explicit CPaintCycle(HWND window) : m_window(window), m_dc(BeginPaint(window, &m_paint)) {}
    ~CPaintCycle() {
        if (m_dc) EndPaint(m_window, &m_paint);
    }
    CPaintCycle(const CPaintCycle&) = delete;
    CPaintCycle& operator=(const CPaintCycle&) = delete;

    // Null when painting could not begin.
    HDC Get() const { return m_dc; }

private:
    PAINTSTRUCT m_paint{};
    HWND m_window;
    HDC m_dc;
};
