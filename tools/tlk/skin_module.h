// SPDX-License-Identifier: MIT
// A finished skin as the engine reads it, whoever made it: nothing of how the compiler writes skins is used.
#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "characters.h"
#include "grid.h"
#include "module_reader.h"
#include "places.h"

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

// Names of the resources of a board. Of the planes, a board has either the first eight or the last one.
[[nodiscard]] std::string_view PictureResource(BoardKind board);
[[nodiscard]] std::string_view LayoutResource(BoardKind board);
[[nodiscard]] std::string MaskResource(BoardKind board, std::size_t plane);

struct SkinBitmap {
    bool isPresent = false;
    // Bits per pixel; 0 when the header cannot be read.
    unsigned depth = 0;
    // Empty when the bitmap is absent, damaged or of a kind that is not read here.
    Picture pixels;

    Size GetSize() const { return pixels.GetSize(); }
    bool IsReadable() const { return GetSize().width > 0; }
};

// Ascending, as hit testing walks through it.
using KeyLayout = std::map<std::uint16_t, std::vector<Rect>>;

struct SkinBoard {
    BoardKind kind = BoardKind::Portrait;
    SkinBitmap picture;
    std::array<SkinBitmap, kPlaneCount> masks;
    KeyLayout layout;
    // Of the layout resource in use, and how many of them are in `layout`.
    std::size_t recordCount = 0;
    std::size_t readCount = 0;
};

struct SkinModule {
    SkinBoard portrait;
    // With the portrait layout when it has none of its own.
    SkinBoard landscape;
    SkinBoard digits;
    // Function keys have no characters here; language 2 has none where the skin gives none.
    CharacterTable characters;
    std::optional<Rect> capsRect;
    bool hasSecondLanguage = false;
    bool isSwipeOnly = false;

    const SkinBoard& Board(BoardKind kind) const;
    // By its small character of language 1 or as the source names functions; the index of any other key.
    std::string NameOf(std::uint16_t key) const;
    // For messages: key "q", key 87.
    std::string Describe(std::uint16_t key) const;

private:
    bool HasName(std::uint16_t key) const;
};

// Ends a layout early that no keyboard has, with thousands of records or rectangles that all cover
// everything.
[[nodiscard]] SkinModule ReadSkin(const Module& module);

}  // namespace tlk
