// SPDX-License-Identifier: MIT
#include "check.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <ostream>

#include "bitmap.h"
#include "dump.h"
#include "errors.h"
#include "ink.h"
#include "module_writer.h"
#include "preview.h"

namespace tlk {
namespace {

constexpr Size kScreen{240, 320};

// The cells of a keyboard of four rows of six keys.
Rect Cell(int column, int row, int width = 40) {
    return {column * width, row * 20, (column + 1) * width - 1, row * 20 + 19};
}

constexpr int kCharacterKeys[] = {70, 71, 72, 80, 81, 55,   // 1 2 3 - = back
                                  82, 83, 84, 85, 86, 87,   // q w e r t y
                                  48, 94, 95, 96, 97, 56,   // shift a s d f enter
                                  51, 52, 53, 57, 59, 61};  // lang digits umlaut space left right
constexpr int kDigitKeys[] = {0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11,
                              12, 13, 14, 15, 16, 17, 52, 54, 55, 56, 57, 58};
constexpr int kLandscapeCell = 53;

void PutBig16(Bytes& bytes, int value) {
    Put8(bytes, static_cast<unsigned>(value) >> 8);
    Put8(bytes, static_cast<unsigned>(value));
}

Bytes CapsRect(const Rect& rect) {
    Bytes bytes;
    for (int edge : {rect.left, rect.top, rect.right, rect.bottom})
        Put32(bytes, static_cast<std::uint32_t>(edge));
    return bytes;
}

// A skin without faults, for tests to damage: every key shows a square, the digit row is the CAPS rectangle.
class DamagedSkin {
public:
    DamagedSkin() {
        AddBoard(BoardKind::Portrait, kCharacterKeys, 40);
        AddBoard(BoardKind::Landscape, kCharacterKeys, kLandscapeCell);
        AddBoard(BoardKind::Digits, kDigitKeys, 40);
        Data("CAPS_RECT") = CapsRect({0, 0, 239, 19});
        Bytes& locale = Data("LOCALE_CHARSET");
        for (int unit = 0; unit < 1 + 4 * 60; ++unit)
            Put16(locale, 'a');
    }

    Bytes& Data(const std::string& name) { return Add(ResourceKind::Data, name); }
    Bytes& Bitmap(const std::string& name) { return Add(ResourceKind::Bitmap, name); }
    void Remove(const std::string& name) { m_Resources.erase(name); }

    // Calls back with every record of the key.
    void Change(const std::string& layout, int key,
                const std::function<void(std::uint8_t* pRecord)>& change) {
        Bytes& bytes = Data(layout);
        for (std::size_t at = 0; at + 16 <= bytes.size(); at += 16)
            if ((bytes[at] << 8 | bytes[at + 1]) == key) change(&bytes[at]);
    }
    void Move(const std::string& layout, int key, const Rect& rect) {
        Change(layout, key, [&rect](std::uint8_t* pRecord) {
            const int edges[] = {rect.left, rect.top, rect.right, rect.bottom};
            for (std::size_t i = 0; i < 4; ++i) {
                pRecord[4 + 2 * i] = static_cast<std::uint8_t>(edges[i] >> 8);
                pRecord[5 + 2 * i] = static_cast<std::uint8_t>(edges[i]);
            }
        });
    }
    // Turns a key into another one.
    void Renumber(const std::string& layout, int key, int other) {
        Change(layout, key, [other](std::uint8_t* pRecord) {
            pRecord[0] = static_cast<std::uint8_t>(other >> 8);
            pRecord[1] = static_cast<std::uint8_t>(other);
        });
    }
    void Paint(const std::string& mask, const Rect& rect, std::uint8_t bit) {
        Mask& pixels = m_Masks.at(mask);
        for (int y = rect.top; y <= rect.bottom; ++y)
            for (int x = rect.left; x <= rect.right; ++x)
                pixels.At(x, y) = bit;
        Bitmap(mask) = EncodeMask(pixels);
    }

    // To the width of the upright screen.
    void NarrowDigits() {
        const Mask& wide = m_Masks.at("DIGIT_MASK");
        Mask mask({240, 80}, 1);
        for (int y = 0; y < 80; ++y)
            for (int x = 0; x < 240; ++x)
                mask.At(x, y) = wide.At(x, y);
        Bitmap("DIGIT_MASK") = EncodeMask(mask);
        Bitmap("DIGIT_KEYBOARD_BITMAP") = EncodePicture(Picture(mask.GetSize(), Color{0xFF, 0xFF, 0xFF}));
    }

    Bytes File() const {
        std::vector<Resource> resources;
        for (const auto& [name, resource] : m_Resources)
            resources.push_back(resource);
        return WriteModule(resources);
    }
    Module Build() const { return Module::Parse(File()); }

private:
    Bytes& Add(ResourceKind kind, const std::string& name) {
        return m_Resources.try_emplace(name, Resource{kind, name, {}}).first->second.data;
    }

    void AddBoard(BoardKind board, std::span<const int> keys, int cellWidth) {
        const Size size{board == BoardKind::Portrait ? 240 : 320, 80};
        Mask mask(size, 1);
        Bytes& layout = Data(std::string(LayoutResource(board)));
        for (std::size_t i = 0; i < keys.size(); ++i) {
            const Rect rect = Cell(static_cast<int>(i % 6), static_cast<int>(i / 6), cellWidth);
            for (int value : {keys[i], 0, rect.left, rect.top, rect.right, rect.bottom, 0, 0})
                PutBig16(layout, value);
            Paste(mask, Mask({6, 6}, 1), rect.left + 15, rect.top + 7, 0);
        }
        Bitmap(std::string(PictureResource(board))) = EncodePicture(Picture(size, Color{0xFF, 0xFF, 0xFF}));
        for (std::size_t plane = 0; plane < kPlaneCount; ++plane)
            if ((plane == kDigitPlane) == (board == BoardKind::Digits))
                Bitmap(MaskResource(board, plane)) = EncodeMask(m_Masks[MaskResource(board, plane)] = mask);
    }

    std::map<std::string, Resource> m_Resources;
    std::map<std::string, Mask> m_Masks;
};

constexpr const char* kPortrait = "CHAR_LAYOUT_STRUCT";
constexpr const char* kLandscape = "LNDSCP_LAYOUT_STRUCT";
constexpr const char* kDigits = "DIGIT_LAYOUT_STRUCT";

// One change of the skin.
using Spoil = std::function<void(DamagedSkin& skin)>;

Spoil Moved(const char* layout, int key, const Rect& rect) {
    return [=](DamagedSkin& skin) { skin.Move(layout, key, rect); };
}
Spoil Renumbered(const char* layout, int key, int other) {
    return [=](DamagedSkin& skin) { skin.Renumber(layout, key, other); };
}
Spoil Painted(const char* mask, const Rect& rect, std::uint8_t bit) {
    return [=](DamagedSkin& skin) { skin.Paint(mask, rect, bit); };
}
Spoil Removed(const char* name) {
    return [=](DamagedSkin& skin) { skin.Remove(name); };
}
Spoil CapsMovedTo(const Rect& rect) {
    return [=](DamagedSkin& skin) { skin.Data("CAPS_RECT") = CapsRect(rect); };
}
// One byte too many.
Spoil Lengthened(const char* name) {
    return [=](DamagedSkin& skin) { skin.Data(name).push_back(0); };
}
Spoil Replaced(const char* name, const Bytes& bitmap) {
    return [=](DamagedSkin& skin) { skin.Bitmap(name) = bitmap; };
}

// Without masks, whose size would differ.
Spoil LandscapeOf(Size size) {
    return [=](DamagedSkin& skin) {
        skin.Bitmap("LANSCAPE_KEYBOARD_BITMAP") = EncodePicture(Picture(size, Color{}));
        for (std::size_t plane = 0; plane < kSlotCount; ++plane)
            skin.Remove(MaskResource(BoardKind::Landscape, plane));
    };
}

struct Fault {
    const char* name;
    std::vector<Spoil> spoils;
    // The beginnings of lines, after the file.
    std::vector<std::string> remarks;
};

void PrintTo(const Fault& fault, std::ostream* pOut) { *pOut << fault.name; }

const std::vector<Fault> kFaults{
    {"None", {}, {}},
    {"OverlappingKeys",
     {Moved(kPortrait, 83, {36, 20, 79, 39})},
     {"portrait, key \"w\": key \"q\" covers it from 36,20 to 39,39"}},
    {"SharedEdge", {Moved(kPortrait, 83, {39, 20, 79, 39})}, {}},
    {"CoveredKey",
     {Moved(kPortrait, 83, Cell(0, 1))},
     {"portrait, key \"w\": cannot be hit: covered by key \"q\"",
      "portrait, key \"q\": beside it taps are lost in a gap of 800 pixels within 40,20 to 79,39"}},
    {"GapInTheMiddle",
     {Moved(kLandscape, 94, {55, 40, 105, 59})},
     {"landscape, key \"shift\": beside it taps are lost in a gap of 40 pixels within 53,40 to "
      "54,59"}},
    {"SmallKey",
     {Moved(kDigits, 0, {0, 0, 8, 19}), Moved(kDigits, 1, {9, 0, 79, 19})},
     {"digits, key \"[\": at 9x20 pixels too small for a pen: make both sides 10 or more",
      "digits, key \"[\": types \"[\" but shows nothing"}},
    {"IndexOutsideTheTable",
     {Renumbered(kPortrait, 61, 222)},
     {"portrait, key 222: the character table ends with 221",
      "portrait, key \"left\": beside it taps are lost"}},
    {"FunctionWithoutAction",
     {Renumbered(kPortrait, 61, 63)},
     {"portrait, key 63: a function key without an action"}},
    {"RectangleWithoutArea",
     {Moved(kDigits, 7, {40, 20, 40, 39})},
     {"digits, key \"#\": the rectangle 40,20 to 40,39 has no area",
      "digits, key \"#\": beside it taps are lost", "digits, key \"#\": types \"#\" but shows nothing"}},
    {"KeyOutOfThePicture",
     {Moved(kPortrait, 61, {200, 60, 240, 79})},
     {"portrait, key \"right\": the rectangle 200,60 to 240,79 reaches out of the picture of 240x80"}},
    {"NoSpace", {Renumbered(kLandscape, 57, 58)}, {"landscape, key \"space\": is missing"}},
    {"NoSpaceForStrokes", {Renumbered(kLandscape, 57, 58), Lengthened("SWIPE_ONLY")}, {}},
    {"NoLandscape",
     {Removed("LANSCAPE_KEYBOARD_BITMAP")},
     {"landscape: the picture of the turned keyboard is missing (LANSCAPE_KEYBOARD_BITMAP)"}},
    {"PictureOfAnotherWidth",
     {LandscapeOf({400, 80})},
     {"landscape: the picture is 400 pixels wide: the skin does not load when the screen is turned to "
      "320x240",
      "landscape, lng1-small, lng1-large, uml1-small"}},
    {"PictureOfAnotherHeight",
     {LandscapeOf({320, 79})},
     {"landscape: the picture is 79 pixels high, the panel 80: a strip below it stays empty",
      "landscape, key \"lang\": the rectangle", "landscape, key \"digits\": the rectangle",
      "landscape, key \"umlaut\": the rectangle", "landscape, key \"space\": the rectangle",
      "landscape, key \"left\": the rectangle", "landscape, key \"right\": the rectangle",
      "landscape, lng1-small, lng1-large, uml1-small"}},
    {"LettersBesideDigits",
     {&DamagedSkin::NarrowDigits},
     {"digits: the picture is 240 pixels wide, the screen's wider side 320: letters stay visible"}},
    {"DigitKeyCut",
     {Moved(kDigits, 5, {200, 0, 250, 19})},
     {"digits, key \"8\": is cut at the end of the panel of 240x80",
      "digits, key \",\": beside it taps are lost"}},
    {"MaskOfAnotherSize",
     {Replaced("UML1_SMALL_MASK", EncodeMask(Mask({240, 79}, 1)))},
     {"portrait, uml1-small: the mask is 240x79 pixels large, its picture 240x80"}},
    {"MaskOfColours",
     {Replaced("DIGIT_MASK", EncodePicture(Picture({320, 80}, Color{})))},
     {"digits, digit: the mask is no bitmap of one bit per pixel"}},
    {"MissingMasks",
     {Removed("LANG2_SMALL_MASK_LS"), Removed("UML2_LARGE_MASK_LS")},
     {"landscape, lng2-small, uml2-large: can be brought up but has no mask "
      "(LANG2_SMALL_MASK_LS, UML2_LARGE_MASK_LS): nothing is drawn"}},
    {"MasksThatNothingBringsUp",
     {Renumbered(kPortrait, 51, 49), Renumbered(kLandscape, 51, 49), Renumbered(kLandscape, 53, 58)},
     {"portrait, lng2-small, lng2-large, uml2-small, uml2-large: no key brings this up",
      "landscape, uml1-small, uml1-large, lng2-small, lng2-large, uml2-small, uml2-large: no key"}},
    {"MissingGlyph",
     {Painted("LANG1_SMALL_MASK", Cell(1, 2), 1), Painted("LANG1_LARGE_MASK", Cell(1, 2), 1)},
     {"portrait, lng1-large, key \"a\": types \"A\" but shows nothing",
      "portrait, lng1-small, key \"a\": types \"a\" but shows nothing"}},
    {"CutGlyph",
     {Painted("LANG1_SMALL_MASK", {50, 28, 54, 39}, 0)},
     {"portrait, lng1-small, key \"w\": the glyph reaches the edge"}},
    {"FaintGlyphs",
     {[](DamagedSkin& skin) {
         // Middle grey inverted is middle grey again, also for light glyphs on black.
         Picture picture({240, 80}, Color{0xFF, 0xFF, 0xFF});
         for (int y = 20; y < 40; ++y)
             for (int x = 40; x < 120; ++x)
                 picture.At(x, y) = x < 80 ? Color{0x80, 0x80, 0x80} : Color{0x50, 0x50, 0x50};
         skin.Bitmap("CHAR_KEYBOARD_BITMAP") = EncodePicture(picture);
         skin.Paint("LANG1_SMALL_MASK", Cell(2, 1), 0);
         skin.Paint("LANG1_SMALL_MASK", {95, 27, 100, 32}, 1);
     }},
     {"portrait, key \"e\": hard to read when pressed: #AFAFAF on #FFFFFF has 2.1 to 1",
      "portrait, key \"w\": hard to read when pressed: #FFFFFF on #7F7F7F has 4.0 to 1"}},
    {"FramesAndRoundCorners",
     {// Light on black in a frame that the glyph touches.
      Painted("LANG1_SMALL_MASK", Cell(1, 1), 1), Painted("LANG1_SMALL_MASK", {41, 21, 77, 37}, 0),
      Painted("LANG1_SMALL_MASK", {55, 30, 60, 37}, 1),
      // A rounded corner, and a line above.
      Painted("LANG1_SMALL_MASK", {118, 38, 119, 39}, 0), Painted("LANG1_SMALL_MASK", {80, 20, 119, 20}, 0)},
     {}},
    {"FrameWithoutGlyph",
     {Painted("LANG1_SMALL_MASK", Cell(1, 1), 1), Painted("LANG1_SMALL_MASK", {41, 21, 77, 37}, 0)},
     {"portrait, lng1-small, key \"w\": types \"w\" but shows nothing"}},
    {"GlyphWithoutCharacter",
     {[](DamagedSkin& skin) { skin.Data("LOCALE_CHARSET")[2 + 8 * (94 - 70)] = 0; }},
     {"portrait, lng2-small, key \"a\": shows something but types no character",
      "landscape, lng2-small, key \"a\": shows something but types no character"}},
    {"NoWayBackFromDigits",
     {Renumbered(kDigits, 52, 53)},
     {"digits: no way back: add the key \"digits\" to it"}},
    {"NoWayBackFromLanguage2",
     {Renumbered(kLandscape, 51, 50)},
     {"landscape: no way back from language 2: add the key \"lang\""}},
    {"ControlAmongDigits",
     {Renumbered(kDigits, 54, 49)},
     {"digits, key \"ctrl\": Control shows the character keyboard"}},
    {"CapsRectangleThroughAKey",
     {CapsMovedTo({0, 0, 190, 19})},
     {"portrait, key \"=\": the area that caps lock leaves alone (CAPS_RECT) cuts through it"}},
    {"CapsRectangleOnANeighboursCorner",
     {CapsMovedTo({0, 0, 239, 20})},
     {"portrait, key \"q\": touches with its corner", "portrait, key \"w\": touches",
      "portrait, key \"e\": touches", "portrait, key \"r\": touches", "portrait, key \"t\": touches",
      "portrait, key \"y\": touches"}},
    {"RestsOfData",
     {Lengthened(kDigits), Lengthened("LOCALE_CHARSET")},
     {"digits: the layout ends with 1 bytes",
      "the characters of language 2 (LOCALE_CHARSET) have 483 bytes"}}};

class Faults : public testing::TestWithParam<Fault> {};

TEST_P(Faults, AreReportedAndNothingElse) {
    DamagedSkin skin;
    for (const Spoil& spoil : GetParam().spoils)
        spoil(skin);
    std::vector<std::string> lines;
    for (const Remark& remark : Check(skin.Build(), kScreen))
        lines.push_back(FormatRemark(remark, "a.tlk"));
    std::string all;
    for (const std::string& line : lines)
        all += line + '\n';
    ASSERT_EQ(lines.size(), GetParam().remarks.size()) << all;
    for (std::size_t i = 0; i < lines.size(); ++i)
        EXPECT_EQ(lines[i].find("a.tlk: " + GetParam().remarks[i]), 0u) << lines[i];
}

INSTANTIATE_TEST_SUITE_P(All, Faults, testing::ValuesIn(kFaults),
                         [](const auto& fault) { return std::string(fault.param.name); });

TEST(Check, GuessesTheScreenFromThePictures) {
    DamagedSkin skin;
    EXPECT_EQ(GuessScreen(skin.Build()), kScreen);
    skin.Remove("LANSCAPE_KEYBOARD_BITMAP");
    EXPECT_EQ(GuessScreen(skin.Build()), kScreen);
    skin.Remove("CHAR_KEYBOARD_BITMAP");
    EXPECT_EQ(GuessScreen(skin.Build()), std::nullopt);
}

TEST(Check, SaysWhereTheSourceNamesTheKey) {
    DamagedSkin skin;
    skin.Renumber(kPortrait, 61, 63);
    const SourcePlaces places{{{BoardKind::Portrait, 63}, {"my.toml", 12}}};
    const auto remarks = Check(skin.Build(), kScreen, &places);
    ASSERT_EQ(remarks.size(), 1u);
    EXPECT_EQ(FormatRemark(remarks[0], "a.tlk").find("my.toml:12: portrait, key 63: "), 0u);
}

TEST(Check, StopsReadingOversizedLayouts) {
    DamagedSkin skin;
    Bytes& layout = skin.Data(kPortrait);
    layout.clear();
    for (int key = 70; key < 170; ++key)
        for (int i = 0; i < 100; ++i)
            for (int value : {key, 0, 0, 0, 0xFFFF, 0xFFFF, 0, 0})
                PutBig16(layout, value);
    const auto remarks = Check(skin.Build(), kScreen);
    EXPECT_LT(remarks.size(), 1000u);
    EXPECT_EQ(remarks[0].text.find("the layout has 10000 records, too many or too large ones"), 0u);
}

// Only checks that it ends; sanitizers check that it stays inside the bytes.
TEST(Check, DamagedSkinsAreCheckedDumpedAndShown) {
    const Bytes whole = DamagedSkin().File();
    for (std::size_t place = 0; place < whole.size(); place += place < 8192 ? 211 : 4999) {
        Bytes damaged = whole;
        for (std::size_t i = place; i < std::min(place + 3, damaged.size()); ++i)
            damaged[i] ^= 0xFF;
        try {
            const Module module = Module::Parse(std::move(damaged));
            (void)Check(module, kScreen);
            (void)Dump(module);
            (void)Paint(ReadSkin(module), {latch::kDigits, false, {}});
        } catch (const FileError&) {
        }
    }
}

}  // namespace
}  // namespace tlk
