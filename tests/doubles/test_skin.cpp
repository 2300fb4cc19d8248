// SPDX-License-Identifier: MIT
#include "test_skin.h"

#include <algorithm>
#include <stdexcept>

namespace test {
namespace {

using Row = std::vector<WORD>;

std::vector<LayoutRecord> LayoutOf(const std::vector<Row>& rows) {
    std::vector<LayoutRecord> records;
    for (std::size_t y = 0; y < rows.size(); ++y) {
        for (std::size_t x = 0; x < rows[y].size(); ++x) {
            const auto left = static_cast<WORD>(x * kKeySide);
            const auto top = static_cast<WORD>(y * kKeySide);
            // Hit testing includes the right and bottom edges, so neighbours must not share them.
            records.push_back({rows[y][x], left, top, static_cast<WORD>(left + kKeySide - 1),
                               static_cast<WORD>(top + kKeySide - 1)});
        }
    }
    return records;
}

std::string SecondLanguage() {
    std::vector<WORD> words = {0xABCD};  // the header, which is not read
    for (WORD unit = 0x0400; unit < 0x0400 + 4 * 50; ++unit)
        words.push_back(unit);
    return WordBytes(words);
}

void AddMasks(SkinBuilder& skin, int width, const std::string& suffix) {
    static const char* const kNames[] = {"LANG1_SMALL_MASK", "LANG1_LARGE_MASK", "UML1_SMALL_MASK",
                                         "UML1_LARGE_MASK",  "LANG2_SMALL_MASK", "LANG2_LARGE_MASK",
                                         "UML2_SMALL_MASK",  "UML2_LARGE_MASK"};
    for (int plane = 0; plane < 8; ++plane) {
        skin.Bitmap(kNames[plane] + suffix,
                    MaskBytes(
                        width, kSkinHeight, [=](int x, int y) { return MaskBit(plane, x, y); }));
    }
}

std::string Picture(PictureKind kind, int width) {
    return PictureBytes(
        width, kSkinHeight, [=](int x, int y) { return PictureColor(kind, x, y); });
}

}  // namespace

COLORREF PictureColor(PictureKind kind, int x, int y) {
    return Color(x, 3 * y, static_cast<int>(kind) + x / 256);
}

bool MaskBit(int plane, int x, int y) { return (x / 3 + y / 2 + plane) % 11 < 5; }

std::vector<LayoutRecord> CharacterLayout() {
    return LayoutOf({{Key1, Key2, KeyHyphen, KeyEquals, KeyBackspace, KeyEscape},
                     {KeyTab, KeyQ, KeyW, KeyBracket, KeySemicolon, KeyComma},
                     {KeyShift, KeyControl, KeyA, KeyC, KeyEnter, KeyUmlaut},
                     {KeyLanguage, KeyDigits, KeySpace, KeyLeft, KeyNoAction}});
}

std::vector<LayoutRecord> DigitLayout() {
    std::vector<LayoutRecord> records = LayoutOf({{KeyDigit7, KeyDigit8, KeyDigit9}});
    for (const LayoutRecord& record : CharacterLayout())
        if (record.key == KeyLanguage || record.key == KeyDigits) records.push_back(record);
    return records;
}

POINT KeyCenter(WORD key) {
    for (const auto& layout : {CharacterLayout(), DigitLayout()}) {
        for (const LayoutRecord& record : layout)
            if (record.key == key) return {record.left + kKeySide / 2, record.top + kKeySide / 2};
    }
    throw std::logic_error("the test skin has no such key");
}

SIZE ScreenSides() {
    const LONG width = GetSystemMetrics(SM_CXSCREEN);
    const LONG height = GetSystemMetrics(SM_CYSCREEN);
    return {std::min(width, height), std::max(width, height)};
}

SkinBuilder TestSkin() {
    const int narrow = static_cast<int>(ScreenSides().cx);
    const int wide = static_cast<int>(ScreenSides().cy);
    SkinBuilder skin;
    skin.Bitmap("char_keyboard_bitmap", Picture(PictureKind::Portrait, narrow));
    skin.Bitmap("LANSCAPE_KEYBOARD_BITMAP", Picture(PictureKind::Landscape, wide));
    skin.Bitmap("digit_keyboard_bitmap", Picture(PictureKind::Digit, narrow));
    skin.Bitmap("DIGIT_MASK", MaskBytes(narrow, kSkinHeight, [](int x, int y) { return MaskBit(8, x, y); }));
    AddMasks(skin, narrow, "");
    AddMasks(skin, wide, "_LS");
    skin.Data("CHAR_LAYOUT_STRUCT", LayoutBytes(CharacterLayout()));
    skin.Data("DIGIT_LAYOUT_STRUCT", LayoutBytes(DigitLayout()));
    skin.Data("LNDSCP_LAYOUT_STRUCT", LayoutBytes({{KeyQ, 0, 0, kKeySide - 1, kKeySide - 1}}));
    skin.Data("CAPS_RECT", RectBytes({0, 0, narrow, kKeySide}));
    skin.Data("LOCALE_CHARSET", SecondLanguage());
    return skin;
}

}  // namespace test
