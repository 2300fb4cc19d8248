// SPDX-License-Identifier: MIT
#include "skin_module.h"

#include <algorithm>
#include <cstdlib>

#include "bitmap.h"

namespace tlk {
namespace {

struct BoardResources {
    std::string_view picture;
    std::string_view layout;
};
// By BoardKind.
constexpr BoardResources kBoardResources[] = {{"CHAR_KEYBOARD_BITMAP", "CHAR_LAYOUT_STRUCT"},
                                              {"LANSCAPE_KEYBOARD_BITMAP", "LNDSCP_LAYOUT_STRUCT"},
                                              {"DIGIT_KEYBOARD_BITMAP", "DIGIT_LAYOUT_STRUCT"}};

constexpr std::array<std::string_view, kPlaneCount> kPlanes{"lng1-small", "lng1-large", "uml1-small",
                                                            "uml1-large", "lng2-small", "lng2-large",
                                                            "uml2-small", "uml2-large", "digit"};
constexpr std::array<std::string_view, kPlaneCount> kMasks{
    "LANG1_SMALL_MASK", "LANG1_LARGE_MASK", "UML1_SMALL_MASK", "UML1_LARGE_MASK", "LANG2_SMALL_MASK",
    "LANG2_LARGE_MASK", "UML2_SMALL_MASK",  "UML2_LARGE_MASK", "DIGIT_MASK"};

// No real keyboard has more rectangles, or covers its picture more often.
constexpr std::size_t kMostRecords = 1024;
constexpr std::int64_t kMostCover = 16;

// Of a picture for a real device.
constexpr int kLargestSide = 2048;

std::int64_t ClippedArea(const Rect& rect, Size size) {
    const Rect seen = Intersect(rect, {0, 0, size.width - 1, size.height - 1});
    return std::int64_t{std::max(seen.Width(), 0)} * std::max(seen.Height(), 0);
}

void TakeLayout(const KeyLayout& keys, SkinBoard& board) {
    const Size size = board.picture.GetSize();
    std::int64_t left = kMostCover * size.width * size.height;
    bool hasRoom = true;
    for (const auto& [key, rects] : keys)
        for (const Rect& rect : rects) {
            ++board.recordCount;
            left -= ClippedArea(rect, size);
            hasRoom = hasRoom && left >= 0 && board.readCount < kMostRecords;
            if (!hasRoom) continue;
            board.layout[key].push_back(rect);
            ++board.readCount;
        }
}

SkinBoard ReadBoard(const SkinModule& skin, BoardKind kind) {
    SkinBoard board;
    board.kind = kind;
    board.picture = skin.engine->Bitmap(PictureResource(kind));
    for (std::size_t plane = 0; plane < kPlaneCount; ++plane)
        if (HasPlane(kind, plane)) board.masks[plane] = skin.engine->Bitmap(MaskResource(kind, plane));
    TakeLayout(skin.KeyboardOf(kind).Keys(kind == BoardKind::Digits), board);
    return board;
}

// Empty if there is none of a normal size.
Size PictureSize(const Module& module, BoardKind board) {
    const auto data = module.Find(ResourceKind::Bitmap, PictureResource(board));
    const auto header = data ? ReadBitmapHeader(*data) : std::nullopt;
    if (!header) return {};
    const std::int64_t height = std::abs(header->rows);
    if (header->width < 1 || header->width > kLargestSide || height < 1 || height > kLargestSide) return {};
    return {static_cast<int>(header->width), static_cast<int>(height)};
}

}  // namespace

std::string_view PlaneName(std::size_t plane) { return kPlanes[plane]; }

std::optional<std::size_t> FindPlane(std::string_view name) {
    const auto found = std::ranges::find(kPlanes, name);
    if (found == kPlanes.end()) return std::nullopt;
    return static_cast<std::size_t>(found - kPlanes.begin());
}

Latches LatchesFor(std::size_t plane) {
    if (plane == kDigitPlane) return latch::kDigits;
    return (plane & 1 ? latch::kShift : 0) | (plane & 2 ? latch::kUmlauts : 0) |
           (plane & 4 ? latch::kLanguage2 : 0);
}

std::string_view PictureResource(BoardKind board) {
    return kBoardResources[static_cast<std::size_t>(board)].picture;
}

std::string_view LayoutResource(BoardKind board) {
    return kBoardResources[static_cast<std::size_t>(board)].layout;
}

std::string MaskResource(BoardKind board, std::size_t plane) {
    return std::string(kMasks[plane]) + (board == BoardKind::Landscape ? "_LS" : "");
}

std::string SkinModule::Describe(std::uint16_t key) const {
    return HasName(characters, key) ? "key \"" + NameOf(key) + "\"" : "key " + NameOf(key);
}

std::optional<Size> GuessScreen(const Module& module) {
    const Size portrait = PictureSize(module, BoardKind::Portrait);
    if (portrait == Size{}) return std::nullopt;
    // A landscape picture may be only as wide as the narrow side, and then says nothing about the screen.
    const int turnedWidth = PictureSize(module, BoardKind::Landscape).width;
    if (turnedWidth > portrait.width) return Size{portrait.width, turnedWidth};
    return Size{portrait.width, std::max(portrait.width, portrait.height * 4)};
}

SkinModule ReadSkin(const Module& module, std::optional<Size> screen) {
    // Without a picture, any screen will do to report that.
    const Size suggested = GuessScreen(module).value_or(Size{240, 320});
    SkinModule skin;
    skin.engine = std::make_unique<Engine>(module.File(),
                                           screen && screen->width == suggested.width ? *screen : suggested);
    for (BoardKind kind : kBoards)
        skin.boards[static_cast<std::size_t>(kind)] = ReadBoard(skin, kind);
    skin.characters =
        skin.engine->Upright().TakesSkin() ? skin.engine->Upright().Characters() : BuiltInCharacters();
    const auto locale = module.Find(ResourceKind::Data, "LOCALE_CHARSET");
    skin.hasSecondLanguage = locale && locale->size() >= kLocaleHeaderSize;
    skin.isSwipeOnly = module.Find(ResourceKind::Data, "SWIPE_ONLY").has_value();
    return skin;
}

}  // namespace tlk
