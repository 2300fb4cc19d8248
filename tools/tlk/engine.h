// SPDX-License-Identifier: MIT
// The keyboard engine itself, on a device in a temporary folder: whatever this program says about a finished
// skin, it asks here. Nothing of Win32 leaves engine.cpp.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "characters.h"
#include "grid.h"

namespace tlk {

// What is latched on a keyboard, a bit for each.
using Latches = unsigned;
namespace latch {
inline constexpr Latches kShift = 1;
inline constexpr Latches kCaps = 2;
inline constexpr Latches kControl = 4;
inline constexpr Latches kLanguage2 = 8;
inline constexpr Latches kDigits = 16;
inline constexpr Latches kUmlauts = 32;
}  // namespace latch
inline constexpr Latches kLatchStates = 64;

struct SkinBitmap {
    bool isPresent = false;
    // Bits per pixel of the device: 1 for what can be a mask. 0 when the device cannot load it.
    unsigned depth = 0;
    // Empty when the bitmap is absent or cannot be loaded.
    Picture pixels;

    Size GetSize() const { return pixels.GetSize(); }
    bool IsReadable() const { return GetSize().width > 0; }
};

// Ascending, as hit testing walks through it.
using KeyLayout = std::map<std::uint16_t, std::vector<Rect>>;

// Of a stroke upwards from here, which is longer than any has to be.
[[nodiscard]] inline Point StrokeEnd(Point start) { return {start.x, start.y - 100}; }

// One keyboard with one skin on one screen. Keys are those of the board that it shows.
class Keyboard {
public:
    // False: the engine refuses the skin on this screen. What it has read of it is there all the same.
    bool TakesSkin() const;
    const CharacterTable& Characters() const;
    // Of the digits or of the other keyboard.
    KeyLayout Keys(bool ofDigits) const;
    // Without area when the skin has none.
    Rect CapsRect() const;

    // What can still be latched after the screen has been turned.
    Latches Lasting() const;
    Latches Latched() const;
    // Brings this state up, in which no key is pressed but those that show it.
    void Latch(Latches latches);
    // Numbered as the slots of a character entry; the digit plane follows.
    std::size_t Plane() const;

    // Negative for none.
    int KeyAt(Point point) const;
    bool IsStatusKey(std::uint16_t key) const;
    // Caps lock leaves such a key alone inside of the CAPS rectangle.
    bool IsOfDigitRow(std::uint16_t key) const;
    // What a tap on a character key would send; 0 for nothing.
    char16_t CharacterOf(std::uint16_t key);
    void Tap(Point point);
    void DoubleTap(Point point);
    void StrokeUp(Point point);

    // The look alone.
    void Press(std::uint16_t key);
    void ReleaseAll();
    [[nodiscard]] Picture Paint(Size size);

    Keyboard(const Keyboard&) = delete;
    Keyboard& operator=(const Keyboard&) = delete;
    ~Keyboard();

private:
    friend class Engine;
    struct Parts;

    explicit Keyboard(Size screen);

    std::unique_ptr<Parts> m_pParts;
};

// A skin file on the device, and the keyboards with it for both orientations of the screen.
class Engine {
public:
    // Throws FileError for a file that the device does not load.
    Engine(std::span<const std::uint8_t> file, Size uprightScreen);
    ~Engine();
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    Keyboard& Upright() const;
    Keyboard& Turned() const;
    [[nodiscard]] SkinBitmap Bitmap(std::string_view name) const;

private:
    struct Parts;

    std::unique_ptr<Parts> m_pParts;
};

// The characters that the engine has without a skin; language 2 has none.
[[nodiscard]] CharacterTable BuiltInCharacters();

}  // namespace tlk
