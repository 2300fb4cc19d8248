// SPDX-License-Identifier: MIT
#include "engine.h"

#include <host_control.h>
#include <sip.h>
#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <optional>

#include "file.h"
#include "framework/handles.h"
#include "framework/module.h"
#include "keyboard/keyboard.h"

namespace tlk {
namespace {

namespace fs = std::filesystem;

// The device of this process, from its first use to the end. It has only the library's resources.
class Device {
public:
    static Device& Get() {
        static Device device;
        return device;
    }

    // A new path for a skin: loading the path of a loaded module would return that module.
    std::string NextSkin() { return m_folder.Path("Windows/skin" + std::to_string(++m_skinCount) + ".tlk"); }

    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;

private:
    Device() {
        host::DeviceOptions options;
        options.folder = m_folder.Path("");
        options.report = [](const std::string& line) { std::cerr << line << '\n'; };
        options.durable = false;
        host::StartDevice(options);
        fs::create_directory(m_folder.Path("Windows"));
        fs::copy_file(TOLKA_RESOURCES, m_folder.Path("Windows/Tolka.DLL"));
        m_library.Reset(LoadLibraryW(TEXT("\\Windows\\Tolka.DLL")));
        if (!m_library) throw FileError(TOLKA_RESOURCES ": cannot be loaded: build it");
        _Module.Init(m_library.Get(), m_noClasses);
    }
    ~Device() {
        _Module.Term();
        m_library.Reset();
        host::StopDevice();
    }

    TemporaryFolder m_folder;
    CModuleOwner m_library;
    CComClassEntry m_noClasses[1] = {};
    int m_skinCount = 0;
};

// Receives the keys.
class KeySink final : public IIMCallback {
public:
    char16_t character = 0;
    bool hasKey = false;

    STDMETHODIMP QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP SetImInfo(IMINFO*) override { return S_OK; }
    STDMETHODIMP SendVirtualKey(BYTE virtualKey, DWORD) override {
        hasKey = hasKey || (virtualKey != VK_SHIFT && virtualKey != VK_CONTROL);
        return S_OK;
    }
    STDMETHODIMP SendCharEvents(UINT, UINT, UINT count, UINT*, UINT* characters) override {
        hasKey = true;
        if (count > 0) character = static_cast<char16_t>(*characters);
        return S_OK;
    }
    STDMETHODIMP SendString(LPWSTR, DWORD) override { return S_OK; }
};

// A bitmap of 32 bits per pixel to draw on.
class Canvas {
public:
    explicit Canvas(Size size) : m_size(size), m_dc(CreateCompatibleDC(nullptr)) {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = size.width;
        info.bmiHeader.biHeight = -size.height;  // rows from the top
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* bits = nullptr;
        m_bitmap.Reset(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
        if (!m_bitmap) throw FileError("no memory for a picture of " + Text(size));
        m_bits = static_cast<const DWORD*>(bits);
        m_selection.emplace(m_dc.Get(), m_bitmap.Get());
    }

    HDC DC() const { return m_dc.Get(); }

    Picture Read() const {
        Picture picture(m_size, Color{});
        const DWORD* pixel = m_bits;
        for (int y = 0; y < m_size.height; ++y)
            for (int x = 0; x < m_size.width; ++x, ++pixel)
                picture.At(x, y) = {static_cast<std::uint8_t>(*pixel >> 16),
                                    static_cast<std::uint8_t>(*pixel >> 8),
                                    static_cast<std::uint8_t>(*pixel)};
        return picture;
    }

private:
    Size m_size;
    CMemoryDC m_dc;
    CBitmapOwner m_bitmap;
    const DWORD* m_bits = nullptr;
    std::optional<CSelection> m_selection;
};

CharacterTable TableOf(const CKeyboard& keyboard) {
    CharacterTable table;
    for (const CharsetEntry& entry : keyboard.m_Charset)
        std::ranges::copy(entry.m_Slots, table.emplace_back().begin());
    return table;
}

KbStatus StatusOf(Latches latches) {
    const auto flag = [latches](Latches bit) { return static_cast<BYTE>((latches & bit) != 0); };
    return {.m_bShift = flag(latch::kShift),
            .m_bCAPS = flag(latch::kCaps),
            .m_bCtrl = flag(latch::kControl),
            .m_bLng1 = static_cast<BYTE>(!flag(latch::kLanguage2)),
            .m_bDigit = flag(latch::kDigits),
            .m_bUml = flag(latch::kUmlauts)};
}

Latches LatchesOf(const KbStatus& status) {
    return (status.m_bShift ? latch::kShift : 0) | (status.m_bCAPS ? latch::kCaps : 0) |
           (status.m_bCtrl ? latch::kControl : 0) | (status.m_bLng1 ? 0 : latch::kLanguage2) |
           (status.m_bDigit ? latch::kDigits : 0) | (status.m_bUml ? latch::kUmlauts : 0);
}

POINT ToPOINT(Point point) { return {point.x, point.y}; }

}  // namespace

struct Keyboard::Parts {
    CKeyboard engine;
    KeySink sink;
    // The panel, which is invisible and needs no window.
    CWindow panel;
    CharacterTable characters;
    Latches lasting = 0;
    bool takesSkin = false;
};

Keyboard::Keyboard(Size screen) : m_parts(std::make_unique<Parts>()) {
    CKeyboard& engine = m_parts->engine;
    engine.m_pCallback = &m_parts->sink;
    engine.m_stKbStatus = StatusOf(kLatchStates - 1);
    m_parts->takesSkin = engine.Init(screen.width, screen.height) && !engine.m_bNoSkin;
    m_parts->lasting = Latched();
    m_parts->characters = TableOf(engine);
    Latch(0);
}

Keyboard::~Keyboard() = default;

bool Keyboard::TakesSkin() const { return m_parts->takesSkin; }

const CharacterTable& Keyboard::Characters() const { return m_parts->characters; }

KeyLayout Keyboard::Keys(bool ofDigits) const {
    KeyLayout keys;
    const CKeyboard& engine = m_parts->engine;
    for (const auto& [key, entry] : ofDigits ? engine.m_DigitLayout : engine.m_CharLayout)
        for (const RECT& rect : entry.m_Rects)
            keys[static_cast<std::uint16_t>(key)].push_back({rect.left, rect.top, rect.right, rect.bottom});
    return keys;
}

Rect Keyboard::CapsRect() const {
    const RECT& rect = m_parts->engine.m_CAPSRect;
    return {rect.left, rect.top, rect.right, rect.bottom};
}

Latches Keyboard::Lasting() const { return m_parts->lasting; }

Latches Keyboard::Latched() const { return LatchesOf(m_parts->engine.m_stKbStatus); }

void Keyboard::Latch(Latches latches) {
    ReleaseAll();
    m_parts->sink.hasKey = false;
    m_parts->engine.m_stKbStatus = StatusOf(latches);
    m_parts->engine.GetKeyboardMask();
    m_parts->engine.PaintStatusButtons(&m_parts->panel);
}

std::size_t Keyboard::Plane() const { return static_cast<std::size_t>(m_parts->engine.ActivePlane()); }

int Keyboard::KeyAt(Point point) const {
    const CKeyboard& engine = m_parts->engine;
    return engine.FindKeyIndex(point.x, point.y, !engine.m_stKbStatus.m_bDigit);
}

bool Keyboard::IsStatusKey(std::uint16_t key) const {
    return m_parts->engine.IsStatusKeyEntry(m_parts->engine.m_Charset[key].m_Slots[0]);
}

bool Keyboard::IsOfDigitRow(std::uint16_t key) const {
    return m_parts->engine.IsDigitalLineEntry(m_parts->engine.m_Charset[key].m_Slots[0]);
}

char16_t Keyboard::CharacterOf(std::uint16_t key) {
    m_parts->sink.character = 0;
    m_parts->engine.SendKeyToApp(m_parts->engine.m_Charset[key], false);
    return m_parts->sink.character;
}

bool Keyboard::HasSent() const { return m_parts->sink.hasKey; }

void Keyboard::Tap(Point point) {
    for (const bool isDown : {true, false})
        m_parts->engine.PressKey(ToPOINT(point), &m_parts->panel, isDown);
}

void Keyboard::DoubleTap(Point point) {
    Tap(point);
    if (!m_parts->engine.DblPressKey(ToPOINT(point), &m_parts->panel)) Tap(point);
}

void Keyboard::StrokeUp(Point point) {
    const POINT end = ToPOINT(StrokeEnd(point));
    m_parts->engine.PressKey(ToPOINT(point), &m_parts->panel, true);
    m_parts->engine.MoveMouse(end, &m_parts->panel);
    m_parts->engine.PressKey(end, &m_parts->panel, false);
}

void Keyboard::Press(std::uint16_t key) {
    CKeyboard& engine = m_parts->engine;
    const auto& layout = engine.m_stKbStatus.m_bDigit ? engine.m_DigitLayout : engine.m_CharLayout;
    const auto found = layout.find(key);
    if (found == layout.end()) return;
    const auto isPressed = [&engine](const RECT& rect) {
        return std::ranges::any_of(engine.m_PressedRects, [&rect](const RECT& pressed) {
            return EqualRect(&pressed, &rect) != FALSE;
        });
    };
    // Otherwise the engine would toggle the look off.
    if (!std::ranges::any_of(found->second.m_Rects, isPressed))
        engine.DrawButton(&m_parts->panel, found->second, false);
}

void Keyboard::ReleaseAll() { m_parts->engine.m_PressedRects.clear(); }

Picture Keyboard::Paint(Size size) {
    if (size.width <= 0 || size.height <= 0) return {};
    const Canvas canvas(size);
    m_parts->engine.Paint(canvas.DC(), &m_parts->panel);
    return canvas.Read();
}

struct Engine::Parts {
    CModuleOwner file;
    std::unique_ptr<Keyboard> upright;
    std::unique_ptr<Keyboard> turned;
};

Engine::Engine(std::span<const std::uint8_t> file, Size upright) : m_parts(std::make_unique<Parts>()) {
    const fs::path path = Device::Get().NextSkin();
    WriteFile(path.string(), {file.begin(), file.end()});
    const std::string name = path.filename().string();
    m_parts->file.Reset(
        LoadLibraryW((WideString(TEXT("\\Windows\\")) + WideString(name.begin(), name.end())).c_str()));
    if (m_parts->file) {
        // The engine uses only the narrow side of the device's screen.
        host::SetScreenSize({upright.width, upright.width});
        m_parts->upright.reset(new Keyboard(upright));
        m_parts->turned.reset(new Keyboard({upright.height, upright.width}));
    }
    // The module stays loaded, and the next skin is the only file again.
    fs::remove(path);
    if (!m_parts->file) throw FileError("not a library file that a device loads");
}

Engine::~Engine() = default;

Keyboard& Engine::Upright() const { return *m_parts->upright; }

Keyboard& Engine::Turned() const { return *m_parts->turned; }

SkinBitmap Engine::Bitmap(std::string_view name) const {
    SkinBitmap bitmap;
    const WideString wide(name.begin(), name.end());
    bitmap.isPresent = FindResourceW(m_parts->file.Get(), wide.c_str(), RT_BITMAP) != nullptr;
    const CBitmapOwner loaded(LoadBitmapW(m_parts->file.Get(), wide.c_str()));
    BITMAP description{};
    if (!loaded || !GetObjectW(loaded.Get(), sizeof description, &description)) return bitmap;
    bitmap.depth = description.bmBitsPixel;
    const Size size{description.bmWidth, description.bmHeight};
    const Canvas canvas(size);
    const CMemoryDC source(CreateCompatibleDC(nullptr));
    const CSelection selection(source.Get(), loaded.Get());
    BitBlt(canvas.DC(), 0, 0, size.width, size.height, source.Get(), 0, 0, SRCCOPY);
    bitmap.pixels = canvas.Read();
    return bitmap;
}

CharacterTable BuiltInCharacters() {
    static const CharacterTable kTable = [] {
        Device::Get();
        CKeyboard keyboard;
        keyboard.LoadCharsets();
        return TableOf(keyboard);
    }();
    return kTable;
}

}  // namespace tlk
