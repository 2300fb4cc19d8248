// SPDX-License-Identifier: MIT
#include "skin_module.h"

#include <algorithm>

#include "bitmap.h"

namespace tlk {
namespace {

using View = std::span<const std::uint8_t>;

constexpr std::array<std::string_view, kPlaneCount> kPlanes{"lng1-small", "lng1-large", "uml1-small",
                                                            "uml1-large", "lng2-small", "lng2-large",
                                                            "uml2-small", "uml2-large", "digit"};
constexpr std::array<std::string_view, kPlaneCount> kMasks{
    "LANG1_SMALL_MASK", "LANG1_LARGE_MASK", "UML1_SMALL_MASK", "UML1_LARGE_MASK", "LANG2_SMALL_MASK",
    "LANG2_LARGE_MASK", "UML2_SMALL_MASK",  "UML2_LARGE_MASK", "DIGIT_MASK"};

// Of a layout's records, and how often they may cover the picture.
constexpr std::size_t kMostRecords = 1024;
constexpr std::int64_t kMostCover = 16;

constexpr std::size_t kLanguage2Slot = 4;
constexpr std::size_t kGroupUnits = 4;

int Big16(View bytes, std::size_t offset) { return bytes[offset] << 8 | bytes[offset + 1]; }

SkinBitmap ReadBitmap(const Module& module, std::string_view name) {
    SkinBitmap bitmap;
    const auto data = module.Find(ResourceKind::Bitmap, name);
    if (!data) return bitmap;
    bitmap.isPresent = true;
    bitmap.depth = Get16(*data, 14).value_or(0);
    if (auto pixels = DecodeBitmap(*data)) bitmap.pixels = std::move(*pixels);
    return bitmap;
}

std::int64_t ClippedArea(const Rect& rect, Size size) {
    const std::int64_t width = std::min(rect.right, size.width - 1) - rect.left + 1;
    const std::int64_t height = std::min(rect.bottom, size.height - 1) - rect.top + 1;
    return width > 0 && height > 0 ? width * height : 0;
}

void ReadLayout(View records, SkinBoard& board) {
    const Size size = board.picture.GetSize();
    std::int64_t left = kMostCover * size.width * size.height;
    board.recordCount = records.size() / kRecordSize;
    for (; board.readCount < std::min(board.recordCount, kMostRecords); ++board.readCount) {
        const View record = records.subspan(board.readCount * kRecordSize, kRecordSize);
        const Rect rect{Big16(record, 4), Big16(record, 6), Big16(record, 8), Big16(record, 10)};
        left -= ClippedArea(rect, size);
        if (left < 0) return;
        board.layout[static_cast<std::uint16_t>(Big16(record, 0))].push_back(rect);
    }
}

SkinBoard ReadBoard(const Module& module, BoardKind kind) {
    SkinBoard board;
    board.kind = kind;
    board.picture = ReadBitmap(module, PictureResource(kind));
    for (std::size_t plane = 0; plane < kPlaneCount; ++plane)
        if ((plane == kDigitPlane) == (kind == BoardKind::Digits))
            board.masks[plane] = ReadBitmap(module, MaskResource(kind, plane));
    auto records = module.Find(ResourceKind::Data, LayoutResource(kind));
    if (!records && kind == BoardKind::Landscape)
        records = module.Find(ResourceKind::Data, LayoutResource(BoardKind::Portrait));
    if (records) ReadLayout(*records, board);
    return board;
}

CharacterTable ReadCharacters(const std::optional<View>& locale) {
    CharacterTable table = BuiltInCharacters();
    for (std::size_t key = kFirstCharacter; key < table.size(); ++key)
        std::fill(table[key].begin() + kLanguage2Slot, table[key].end(), u'\0');
    if (!locale || locale->size() < kLocaleHeaderSize) return table;
    const View groups = locale->subspan(kLocaleHeaderSize);
    // A key index has 16 bits, so that the layouts can name no entry beyond.
    const std::size_t count = std::min<std::size_t>(groups.size() / kGroupSize, 0x10000 - kFirstCharacter);
    table.resize(std::max(table.size(), kFirstCharacter + count));
    for (std::size_t i = 0; i < count * kGroupUnits; ++i)
        table[kFirstCharacter + i / kGroupUnits][kLanguage2Slot + i % kGroupUnits] =
            static_cast<char16_t>(*Get16(groups, i * 2));
    return table;
}

// Unlike layout records, little-endian and 32 bits wide.
std::optional<Rect> ReadCapsRect(const std::optional<View>& data) {
    if (!data || data->size() < 16) return std::nullopt;
    const auto edge = [&data](std::size_t i) { return static_cast<std::int32_t>(*Get32(*data, i * 4)); };
    return Rect{edge(0), edge(1), edge(2), edge(3)};
}

}  // namespace

std::string_view PlaneName(std::size_t plane) { return kPlanes[plane]; }

std::optional<std::size_t> FindPlane(std::string_view name) {
    const auto found = std::ranges::find(kPlanes, name);
    if (found == kPlanes.end()) return std::nullopt;
    return static_cast<std::size_t>(found - kPlanes.begin());
}

std::string_view PictureResource(BoardKind board) {
    switch (board) {
        case BoardKind::Portrait:
            return "CHAR_KEYBOARD_BITMAP";
        case BoardKind::Landscape:
            return "LANSCAPE_KEYBOARD_BITMAP";
        case BoardKind::Digits:
            break;
    }
    return "DIGIT_KEYBOARD_BITMAP";
}

std::string_view LayoutResource(BoardKind board) {
    switch (board) {
        case BoardKind::Portrait:
            return "CHAR_LAYOUT_STRUCT";
        case BoardKind::Landscape:
            return "LNDSCP_LAYOUT_STRUCT";
        case BoardKind::Digits:
            break;
    }
    return "DIGIT_LAYOUT_STRUCT";
}

std::string MaskResource(BoardKind board, std::size_t plane) {
    return std::string(kMasks[plane]) + (board == BoardKind::Landscape ? "_LS" : "");
}

const SkinBoard& SkinModule::Board(BoardKind kind) const {
    switch (kind) {
        case BoardKind::Portrait:
            return portrait;
        case BoardKind::Landscape:
            return landscape;
        case BoardKind::Digits:
            break;
    }
    return digits;
}

bool SkinModule::HasName(std::uint16_t key) const {
    if (IsFunction(key)) return key <= function_key::kDown;
    return key < characters.size() && characters[key][0] > u' ';
}

std::string SkinModule::NameOf(std::uint16_t key) const {
    return HasName(key) ? NameKey(characters, key) : std::to_string(key);
}

std::string SkinModule::Describe(std::uint16_t key) const {
    return HasName(key) ? "key \"" + NameOf(key) + "\"" : "key " + NameOf(key);
}

SkinModule ReadSkin(const Module& module) {
    SkinModule skin;
    skin.portrait = ReadBoard(module, BoardKind::Portrait);
    skin.landscape = ReadBoard(module, BoardKind::Landscape);
    skin.digits = ReadBoard(module, BoardKind::Digits);
    const auto locale = module.Find(ResourceKind::Data, "LOCALE_CHARSET");
    skin.hasSecondLanguage = locale && locale->size() >= kLocaleHeaderSize;
    skin.characters = ReadCharacters(locale);
    skin.capsRect = ReadCapsRect(module.Find(ResourceKind::Data, "CAPS_RECT"));
    skin.isSwipeOnly = module.Find(ResourceKind::Data, "SWIPE_ONLY").has_value();
    return skin;
}

}  // namespace tlk
