// SPDX-License-Identifier: MIT
// A finished skin as the engine reads it, from any author. Uses nothing of the compiler.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "boards.h"
#include "characters.h"
#include "engine.h"
#include "module_reader.h"

namespace tlk {

// Planes are numbered like the slots of a character entry; the digit plane follows.
inline constexpr std::size_t kDigitPlane = kSlotCount;
inline constexpr std::size_t kPlaneCount = kSlotCount + 1;

// Sizes in bytes: a layout record, the header of LOCALE_CHARSET, and its characters of a key.
inline constexpr std::size_t kRecordSize = 16;
inline constexpr std::size_t kLocaleHeaderSize = 2;
inline constexpr std::size_t kGroupSize = 8;

// The name on the command line and in remarks: "lng1-small", ..., "uml2-large", "digit".
[[nodiscard]] std::string_view PlaneName(std::size_t plane);
[[nodiscard]] std::optional<std::size_t> FindPlane(std::string_view name);
// The simplest latches for a plane.
[[nodiscard]] Latches LatchesFor(std::size_t plane);

// The names of a board's resources. A board has either the first eight planes or the last one.
[[nodiscard]] std::string_view PictureResource(BoardKind board);
[[nodiscard]] std::string_view LayoutResource(BoardKind board);
[[nodiscard]] std::string MaskResource(BoardKind board, std::size_t plane);
[[nodiscard]] inline bool HasPlane(BoardKind board, std::size_t plane) {
    return (plane == kDigitPlane) == (board == BoardKind::Digits);
}

struct SkinBoard {
    BoardKind kind = BoardKind::Portrait;
    SkinBitmap picture;
    std::array<SkinBitmap, kPlaneCount> masks;
    KeyLayout layout;
    // The number of rectangles that the engine has read. If they are too many or too large, `layout` has only
    // the first.
    std::size_t recordCount = 0;
    std::size_t readCount = 0;
};

struct SkinModule {
    // By BoardKind.
    std::array<SkinBoard, 3> boards;
    CharacterTable characters;
    bool hasSecondLanguage = false;
    bool isSwipeOnly = false;
    std::unique_ptr<Engine> engine;

    const SkinBoard& Board(BoardKind kind) const { return boards[static_cast<std::size_t>(kind)]; }
    // The keyboard that shows this board; both show the digits.
    Keyboard& KeyboardOf(BoardKind kind) const {
        return kind == BoardKind::Landscape ? engine->Turned() : engine->Upright();
    }
    std::string NameOf(std::uint16_t key) const { return KeyName(characters, key); }
    // For messages: key "q", key 87.
    std::string Describe(std::uint16_t key) const;
};

// Guesses the upright screen from the widths of the skin's pictures; without a landscape picture, its height
// is four times that of the portrait picture. Nothing if there is no portrait picture.
[[nodiscard]] std::optional<Size> GuessScreen(const Module& module);

// Uses this upright screen if the skin is as wide, else the one that its pictures suggest. Throws FileError
// if the engine cannot load the file.
[[nodiscard]] SkinModule ReadSkin(const Module& module, std::optional<Size> screen = {});

}  // namespace tlk
