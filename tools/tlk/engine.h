// SPDX-License-Identifier: MIT
// The keyboard engine itself, on a device in a temporary folder; all statements about finished skins come
// from it. Only engine.cpp uses Win32.
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

// The latched statuses of a keyboard, one bit each.
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
    // The device's bits per pixel: 1 for a possible mask, 0 if the device cannot load the bitmap.
    unsigned depth = 0;
    // Empty if the bitmap is missing or cannot be loaded.
    Picture pixels;

    Size GetSize() const { return pixels.GetSize(); }
    bool IsReadable() const { return GetSize().width > 0; }
};

// Ascending, in the order of hit testing.
using KeyLayout = std::map<std::uint16_t, std::vector<Rect>>;

// The end of a stroke upwards from here, of sufficient length.
[[nodiscard]] inline Point StrokeEnd(Point start) { return {start.x, start.y - 100}; }

// One keyboard with one skin on one screen. Keys are those of the board shown.
class Keyboard {
public:
    // False if the engine refuses the skin on this screen; the parts that it has read exist all the same.
    bool TakesSkin() const;
    const CharacterTable& Characters() const;
    // The keys of the digit keyboard, or of the other one.
    KeyLayout Keys(bool ofDigits) const;
    // Without area if the skin has none.
    Rect CapsRect() const;

    // The latches that remain after the screen has been turned.
    Latches Lasting() const;
    Latches Latched() const;
    // Selects this state; only the keys of its statuses look pressed.
    void Latch(Latches latches);
    // Numbered like the slots of a character entry; the digit plane follows.
    std::size_t Plane() const;

    // Negative for none.
    int KeyAt(Point point) const;
    bool IsStatusKey(std::uint16_t key) const;
    // Is it a key that caps lock leaves alone inside the CAPS rectangle?
    bool IsOfDigitRow(std::uint16_t key) const;
    // The character that a tap on the key would send; 0 for none.
    char16_t CharacterOf(std::uint16_t key);
    // Has a key been sent since the last Latch, other than Shift and Control?
    bool HasSent() const;
    void Tap(Point point);
    void DoubleTap(Point point);
    void StrokeUp(Point point);

    // Changes only the look.
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

    std::unique_ptr<Parts> m_parts;
};

// A skin file on the device, and its keyboards for both orientations of the screen.
class Engine {
public:
    // Throws FileError if the device does not load the file.
    Engine(std::span<const std::uint8_t> file, Size uprightScreen);
    ~Engine();
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    Keyboard& Upright() const;
    Keyboard& Turned() const;
    [[nodiscard]] SkinBitmap Bitmap(std::string_view name) const;

private:
    struct Parts;

    std::unique_ptr<Parts> m_parts;
};

// The engine's characters without a skin; language 2 has none.
[[nodiscard]] CharacterTable BuiltInCharacters();

}  // namespace tlk
