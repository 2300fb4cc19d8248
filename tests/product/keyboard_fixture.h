// SPDX-License-Identifier: MIT
// A keyboard with the library's resources, a window and a recording callback, on a new device.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <memory>

#include "framework/handles.h"
#include "framework/module.h"
#include "keyboard/key_codes.h"
#include "keyboard/keyboard.h"
#include "recording_callback.h"
#include "rectangles.h"
#include "registry_values.h"
#include "store/settings_key.h"
#include "test_skin.h"
#include "test_support.h"
#include "test_window.h"

// The product's module record, with the resources of Tolka.DLL but not its code.
class LibraryResources {
public:
    LibraryResources() {
        test::CopyToDevice(TOLKA_RESOURCES, "Windows/Tolka.DLL");
        m_module.Reset(LoadLibraryW(TEXT("\\windows\\Tolka.DLL")));
        static CComClassEntry noClasses[1] = {};
        _Module.Init(m_module.Get(), noClasses);
    }
    ~LibraryResources() { _Module.Term(); }
    LibraryResources(const LibraryResources&) = delete;
    LibraryResources& operator=(const LibraryResources&) = delete;

private:
    CModuleOwner m_module;
};

// The kEvents of function keys, by key index; the others send nothing.
inline const std::map<WORD, test::Events>& FunctionKeyEvents() {
    static const std::map<WORD, test::Events> kEvents = {{54, {"vk 1B down"}},
                                                         {55, {"vk 08 down", "vk 08 up"}},
                                                         {56, {"vk 0D down", "vk 0D up"}},
                                                         {57, {"vk 20 down", "vk 20 up"}},
                                                         {58, {"char vk=09 flags=00000080 U+0009"}},
                                                         {59, {"vk 25 down", "vk 25 up"}},
                                                         {60, {"vk 26 down", "vk 26 up"}},
                                                         {61, {"vk 27 down", "vk 27 up"}},
                                                         {62, {"vk 28 down", "vk 28 up"}}};
    return kEvents;
}

using Rects = std::vector<RECT>;
using test::Events;
using test::NumberValue;
using test::TextValue;
using test::Typed;

inline constexpr UINT kShiftFlag = 0x20000000;
inline constexpr RECT kCapsPlace{200, 0, 219, 19};

class KeyboardTest : public testing::Test {
protected:
    KeyboardTest() { m_keyboard->m_pCallback = &m_callback; }

    // Installs the skin as the only one and initialises the keyboard in portrait.
    void Start(const test::SkinBuilder& skin = test::TestSkin()) {
        skin.Install("a.tlk");
        ASSERT_TRUE(InitPortrait());
        ASSERT_FALSE(m_keyboard->m_bNoSkin);
    }
    void StartWithKeys(const std::vector<test::LayoutRecord>& characters) {
        Start(test::TestSkin().Data("CHAR_LAYOUT_STRUCT", test::LayoutBytes(characters)));
    }
    // The same with a caps lock key at kCapsPlace.
    void StartWithCapsKey() {
        std::vector<test::LayoutRecord> records = test::CharacterLayout();
        records.push_back({test::KeyCaps, 200, 0, 219, 19});
        StartWithKeys(records);
    }
    bool InitPortrait() { return m_keyboard->Init(test::ScreenSides().cx, test::ScreenSides().cy); }
    bool InitLandscape() { return m_keyboard->Init(test::ScreenSides().cy, test::ScreenSides().cx); }

    void Down(POINT point) { m_keyboard->PressKey(point, &m_window, true); }
    void Move(POINT point) { m_keyboard->MoveMouse(point, &m_window); }
    void Up(POINT point) { m_keyboard->PressKey(point, &m_window, false); }
    // Presses and releases the key; returns what was sent.
    Events Tap(WORD key) {
        Down(test::KeyCenter(key));
        Up(test::KeyCenter(key));
        return m_callback.Take();
    }
    // A stroke from the middle of the key by this distance, moved and released there.
    Events Stroke(WORD key, LONG dx, LONG dy) {
        const POINT begin = test::KeyCenter(key);
        const POINT end = {begin.x + dx, begin.y + dy};
        Down(begin);
        Move(end);
        Up(end);
        return m_callback.Take();
    }
    static RECT RectOf(WORD key) {
        const POINT center = test::KeyCenter(key);
        const LONG half = test::kKeySide / 2;
        return {center.x - half, center.y - half, center.x + half - 1, center.y + half - 1};
    }

    void SetFlags(const KbStatus& status) {
        m_keyboard->m_stKbStatus = status;
        m_keyboard->GetKeyboardMask();
    }
    HGDIOBJ SelectedMask() const { return GetCurrentObject(m_keyboard->m_hMaskDC, OBJ_BITMAP); }
    const Rects& Pressed() const { return m_keyboard->m_PressedRects; }

    // Values of the settings key.
    static void Store(LPCWSTR name, const test::RegistryValue& value) {
        test::WriteValue(HKEY_LOCAL_MACHINE, kSettingsKey, name, value);
    }
    static test::RegistryValue Stored(LPCWSTR name) {
        return test::ReadValue(HKEY_LOCAL_MACHINE, kSettingsKey, name);
    }

    LibraryResources m_resources;
    TestWindow m_window;
    test::RecordingCallback m_callback;
    std::unique_ptr<CKeyboard> m_keyboard = std::make_unique<CKeyboard>();
};
