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
    std::string NextSkin() { return m_Folder.Path("Windows/skin" + std::to_string(++m_SkinCount) + ".tlk"); }

    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;

private:
    Device() {
        host::DeviceOptions options;
        options.folder = m_Folder.Path("");
        options.report = [](const std::string& line) { std::cerr << line << '\n'; };
        options.durable = false;
        host::StartDevice(options);
        fs::create_directory(m_Folder.Path("Windows"));
        fs::copy_file(TOLKA_RESOURCES, m_Folder.Path("Windows/Tolka.DLL"));
        m_Library.Reset(LoadLibraryW(TEXT("\\Windows\\Tolka.DLL")));
        if (!m_Library) throw FileError(TOLKA_RESOURCES ": cannot be loaded: build it");
        _Module.Init(m_Library.Get(), m_NoClasses);
    }
    ~Device() {
        _Module.Term();
        m_Library.Reset();
        host::StopDevice();
    }

    TemporaryFolder m_Folder;
    CModuleOwner m_Library;
    CComClassEntry m_NoClasses[1] = {};
    int m_SkinCount = 0;
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
    explicit Canvas(Size size) : m_Size(size), m_DC(CreateCompatibleDC(nullptr)) {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = size.width;
        info.bmiHeader.biHeight = -size.height;  // rows from the top
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* pBits = nullptr;
        m_Bitmap.Reset(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &pBits, nullptr, 0));
        if (!m_Bitmap) throw FileError("no memory for a picture of " + Text(size));
        m_pBits = static_cast<const DWORD*>(pBits);
        m_Selection.emplace(m_DC.Get(), m_Bitmap.Get());
    }

    HDC DC() const { return m_DC.Get(); }

    Picture Read() const {
        Picture picture(m_Size, Color{});
        const DWORD* pPixel = m_pBits;
        for (int y = 0; y < m_Size.height; ++y)
            for (int x = 0; x < m_Size.width; ++x, ++pPixel)
                picture.At(x, y) = {static_cast<std::uint8_t>(*pPixel >> 16),
                                    static_cast<std::uint8_t>(*pPixel >> 8),
                                    static_cast<std::uint8_t>(*pPixel)};
        return picture;
    }

private:
    Size m_Size;
    CMemoryDC m_DC;
    CBitmapOwner m_Bitmap;
    const DWORD* m_pBits = nullptr;
    std::optional<CSelection> m_Selection;
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

Keyboard::Keyboard(Size screen) : m_pParts(std::make_unique<Parts>()) {
    CKeyboard& engine = m_pParts->engine;
    engine.m_pCallback = &m_pParts->sink;
    engine.m_stKbStatus = StatusOf(kLatchStates - 1);
    m_pParts->takesSkin = engine.Init(screen.width, screen.height) && !engine.m_bNoSkin;
    m_pParts->lasting = Latched();
    m_pParts->characters = TableOf(engine);
    Latch(0);
}

Keyboard::~Keyboard() = default;

bool Keyboard::TakesSkin() const { return m_pParts->takesSkin; }

const CharacterTable& Keyboard::Characters() const { return m_pParts->characters; }

KeyLayout Keyboard::Keys(bool ofDigits) const {
    KeyLayout keys;
    const CKeyboard& engine = m_pParts->engine;
    for (const auto& [key, entry] : ofDigits ? engine.m_DigitLayout : engine.m_CharLayout)
        for (const RECT& rect : entry.m_Rects)
            keys[static_cast<std::uint16_t>(key)].push_back({rect.left, rect.top, rect.right, rect.bottom});
    return keys;
}

Rect Keyboard::CapsRect() const {
    const RECT& rect = m_pParts->engine.m_CAPSRect;
    return {rect.left, rect.top, rect.right, rect.bottom};
}

Latches Keyboard::Lasting() const { return m_pParts->lasting; }

Latches Keyboard::Latched() const { return LatchesOf(m_pParts->engine.m_stKbStatus); }

void Keyboard::Latch(Latches latches) {
    ReleaseAll();
    m_pParts->sink.hasKey = false;
    m_pParts->engine.m_stKbStatus = StatusOf(latches);
    m_pParts->engine.GetKeyboardMask();
    m_pParts->engine.PaintStatusButtons(&m_pParts->panel);
}

std::size_t Keyboard::Plane() const { return static_cast<std::size_t>(m_pParts->engine.ActivePlane()); }

int Keyboard::KeyAt(Point point) const {
    const CKeyboard& engine = m_pParts->engine;
    return engine.FindKeyIndex(point.x, point.y, !engine.m_stKbStatus.m_bDigit);
}

bool Keyboard::IsStatusKey(std::uint16_t key) const {
    return m_pParts->engine.IsStatusKeyEntry(m_pParts->engine.m_Charset[key].m_Slots[0]);
}

bool Keyboard::IsOfDigitRow(std::uint16_t key) const {
    return m_pParts->engine.IsDigitalLineEntry(m_pParts->engine.m_Charset[key].m_Slots[0]);
}

char16_t Keyboard::CharacterOf(std::uint16_t key) {
    m_pParts->sink.character = 0;
    m_pParts->engine.SendKeyToApp(m_pParts->engine.m_Charset[key], false);
    return m_pParts->sink.character;
}

bool Keyboard::HasSent() const { return m_pParts->sink.hasKey; }

void Keyboard::Tap(Point point) {
    for (const bool isDown : {true, false})
        m_pParts->engine.PressKey(ToPOINT(point), &m_pParts->panel, isDown);
}

void Keyboard::DoubleTap(Point point) {
    Tap(point);
    if (!m_pParts->engine.DblPressKey(ToPOINT(point), &m_pParts->panel)) Tap(point);
}

void Keyboard::StrokeUp(Point point) {
    const POINT end = ToPOINT(StrokeEnd(point));
    m_pParts->engine.PressKey(ToPOINT(point), &m_pParts->panel, true);
    m_pParts->engine.MoveMouse(end, &m_pParts->panel);
    m_pParts->engine.PressKey(end, &m_pParts->panel, false);
}

void Keyboard::Press(std::uint16_t key) {
    CKeyboard& engine = m_pParts->engine;
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
        engine.DrawButton(&m_pParts->panel, found->second, false);
}

void Keyboard::ReleaseAll() { m_pParts->engine.m_PressedRects.clear(); }

Picture Keyboard::Paint(Size size) {
    if (size.width <= 0 || size.height <= 0) return {};
    const Canvas canvas(size);
    m_pParts->engine.Paint(canvas.DC(), &m_pParts->panel);
    return canvas.Read();
}

struct Engine::Parts {
    CModuleOwner file;
    std::unique_ptr<Keyboard> pUpright;
    std::unique_ptr<Keyboard> pTurned;
};

Engine::Engine(std::span<const std::uint8_t> file, Size upright) : m_pParts(std::make_unique<Parts>()) {
    const fs::path path = Device::Get().NextSkin();
    WriteFile(path.string(), {file.begin(), file.end()});
    const std::string name = path.filename().string();
    m_pParts->file.Reset(
        LoadLibraryW((WideString(TEXT("\\Windows\\")) + WideString(name.begin(), name.end())).c_str()));
    if (m_pParts->file) {
        // The engine uses only the narrow side of the device's screen.
        host::SetScreenSize({upright.width, upright.width});
        m_pParts->pUpright.reset(new Keyboard(upright));
        m_pParts->pTurned.reset(new Keyboard({upright.height, upright.width}));
    }
    // The module stays loaded, and the next skin is the only file again.
    fs::remove(path);
    if (!m_pParts->file) throw FileError("not a library file that a device loads");
}

Engine::~Engine() = default;

Keyboard& Engine::Upright() const { return *m_pParts->pUpright; }

Keyboard& Engine::Turned() const { return *m_pParts->pTurned; }

SkinBitmap Engine::Bitmap(std::string_view name) const {
    SkinBitmap bitmap;
    const WideString wide(name.begin(), name.end());
    bitmap.isPresent = FindResourceW(m_pParts->file.Get(), wide.c_str(), RT_BITMAP) != nullptr;
    const CBitmapOwner loaded(LoadBitmapW(m_pParts->file.Get(), wide.c_str()));
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
    static const CharacterTable table = [] {
        Device::Get();
        CKeyboard keyboard;
        keyboard.LoadCharsets();
        return TableOf(keyboard);
    }();
    return table;
}

}  // namespace tlk
