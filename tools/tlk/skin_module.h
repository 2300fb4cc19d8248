// SPDX-License-Identifier: MIT
// A finished skin as the engine reads it, whoever made it: nothing of how the compiler writes skins is used.
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

// Planes are numbered as the slots of a character entry; the digit plane follows.
inline constexpr std::size_t kDigitPlane = kSlotCount;
inline constexpr std::size_t kPlaneCount = kSlotCount + 1;

// Bytes of a layout record, and of what LOCALE_CHARSET begins with and has for each key.
inline constexpr std::size_t kRecordSize = 16;
inline constexpr std::size_t kLocaleHeaderSize = 2;
inline constexpr std::size_t kGroupSize = 8;

// As the command line and the remarks name them: "lng1-small", ..., "uml2-large", "digit".
[[nodiscard]] std::string_view PlaneName(std::size_t plane);
[[nodiscard]] std::optional<std::size_t> FindPlane(std::string_view name);
// What has to be latched for a plane, in the simplest way.
[[nodiscard]] Latches LatchesFor(std::size_t plane);

// Names of the resources of a board. Of the planes, a board has either the first eight or the last one.
[[nodiscard]] std::string_view PictureResource(BoardKind board);
[[nodiscard]] std::string_view LayoutResource(BoardKind board);
[[nodiscard]] std::string MaskResource(BoardKind board, std::size_t plane);

struct SkinBoard {
    BoardKind kind = BoardKind::Portrait;
    SkinBitmap picture;
    std::array<SkinBitmap, kPlaneCount> masks;
    KeyLayout layout;
    // Rectangles that the engine has read. Of too many or too large ones, `layout` has only the first.
    std::size_t recordCount = 0;
    std::size_t readCount = 0;
};

struct SkinModule {
    // By BoardKind.
    std::array<SkinBoard, 3> boards;
    CharacterTable characters;
    bool hasSecondLanguage = false;
    bool isSwipeOnly = false;
    std::unique_ptr<Engine> pEngine;

    const SkinBoard& Board(BoardKind kind) const { return boards[static_cast<std::size_t>(kind)]; }
    // The one that shows this board; the digits are on both.
    Keyboard& KeyboardOf(BoardKind kind) const {
        return kind == BoardKind::Landscape ? pEngine->Turned() : pEngine->Upright();
    }
    std::string NameOf(std::uint16_t key) const { return KeyName(characters, key); }
    // For messages: key "q", key 87.
    std::string Describe(std::uint16_t key) const;
};

// The screen, upright, that the widths of the skin's pictures were made for. Without a landscape picture the
// height is taken from the portrait picture's, a quarter of it. Nothing when there is no portrait picture.
[[nodiscard]] std::optional<Size> GuessScreen(const Module& module);

// On this upright screen if the skin is as wide, else on the one that its pictures suggest. Throws FileError
// for a file that the engine cannot load.
[[nodiscard]] SkinModule ReadSkin(const Module& module, std::optional<Size> screen = {});

}  // namespace tlk
