// SPDX-License-Identifier: MIT
// Any bytes as the only skin of a device: initialises the keyboard in both orientations, draws, taps, and
// checks that nothing leaks.
#include <host_control.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "framework/module.h"
#include "keyboard/keyboard.h"

namespace {

namespace fs = std::filesystem;

constexpr LONG kNarrow = 240;
constexpr LONG kWide = 320;
constexpr LONG kPenStep = 23;  // pixels; hits most keys of normal size

// Ignores all keys.
class DeafCallback final : public IIMCallback {
public:
    STDMETHODIMP QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP SetImInfo(IMINFO*) override { return S_OK; }
    STDMETHODIMP SendVirtualKey(BYTE, DWORD) override { return S_OK; }
    STDMETHODIMP SendCharEvents(UINT, UINT, UINT, UINT*, UINT*) override { return S_OK; }
    STDMETHODIMP SendString(LPWSTR, DWORD) override { return S_OK; }
};

// One device for the whole run, in a memory file system if there is one; every input replaces its skin.
class Device {
public:
    Device() : m_folder(MakeFolder()) {
        fs::create_directories(m_folder / "Windows");
        fs::copy_file(TOLKA_RESOURCES, m_folder / "Windows/Tolka.DLL");
        host::DeviceOptions options;
        options.folder = m_folder;
        options.durable = false;
        options.screen = {kNarrow, kWide};
        options.report = [](const std::string&) {};
        host::StartDevice(options);
        m_module = LoadLibraryW(TEXT("\\Windows\\Tolka.DLL"));
        static CComClassEntry noClasses[1] = {};
        _Module.Init(m_module, noClasses);
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = DefWindowProcW;
        windowClass.lpszClassName = TEXT("Fuzz");
        RegisterClassW(&windowClass);
        m_window.m_hWnd = CreateWindowExW(0, windowClass.lpszClassName, nullptr, WS_POPUP | WS_VISIBLE, 0, 0,
                                          kWide, kWide, nullptr, nullptr, nullptr, nullptr);
    }
    ~Device() {
        _Module.Term();
        host::StopDevice();
        std::error_code error;
        fs::remove_all(m_folder, error);
    }
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;

    void InstallSkin(const BYTE* data, std::size_t size) const {
        std::ofstream file(m_folder / "Windows/a.tlk", std::ios::binary | std::ios::trunc);
        file.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    }
    CWindow* Window() { return &m_window; }

private:
    static fs::path MakeFolder() {
        const fs::path memory = "/dev/shm";
        std::string folder =
            ((fs::exists(memory) ? memory : fs::temp_directory_path()) / "fuzz-XXXXXX").string();
        if (!mkdtemp(folder.data())) std::abort();
        return folder;
    }

    fs::path m_folder;
    HMODULE m_module = nullptr;
    CWindow m_window;
};

void Paint(CKeyboard& keyboard, CWindow* window) {
    PAINTSTRUCT paint;
    InvalidateRect(window->m_hWnd, nullptr, FALSE);
    const HDC dc = BeginPaint(window->m_hWnd, &paint);
    keyboard.Paint(dc, window);
    EndPaint(window->m_hWnd, &paint);
}

// Taps and strokes everywhere on the panel.
void UsePen(CKeyboard& keyboard, CWindow* window) {
    for (LONG y = 3; y < 100; y += kPenStep) {
        for (LONG x = 3; x < kWide; x += kPenStep) {
            const POINT point{x, y};
            if (!keyboard.DblPressKey(point, window)) keyboard.PressKey(point, window, true);
            keyboard.PressKey(point, window, false);
            keyboard.PressKey(point, window, true);
            keyboard.MoveMouse({x + kPenStep, y - 2 * kPenStep}, window);
            keyboard.PressKey({x + kPenStep, y - 2 * kPenStep}, window, false);
        }
    }
}

bool SameHandles(const host::LiveHandles& a, const host::LiveHandles& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const BYTE* data, std::size_t size) {
    static Device device;
    DeafCallback callback;
    device.InstallSkin(data, size);
    const host::LiveHandles before = host::CountHandles();
    {
        CKeyboard keyboard;
        keyboard.m_pCallback = &callback;
        for (const SIZE screen : {SIZE{kNarrow, kWide}, SIZE{kWide, kNarrow}}) {
            keyboard.Init(screen.cx, screen.cy);
            // Without a skin there is only a message, always the same.
            if (keyboard.m_bNoSkin) continue;
            Paint(keyboard, device.Window());
            UsePen(keyboard, device.Window());
            Paint(keyboard, device.Window());
        }
        UsePen(keyboard, device.Window());
        keyboard.UnloadSkin();
        UsePen(keyboard, device.Window());
    }
    if (!SameHandles(before, host::CountHandles())) std::abort();
    return 0;
}
