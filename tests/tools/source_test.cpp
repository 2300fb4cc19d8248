// SPDX-License-Identifier: MIT
#include "source.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "bitmap.h"
#include "compile.h"
#include "drawing.h"
#include "errors.h"
#include "file.h"
#include "files.h"
#include "png_file.h"

namespace tlk {
namespace {

constexpr const char* kSmall = "[portrait]\nsize = [60, 32]\nrows = [\"1 2\", \"q w:2 shift\"]\n";

struct BadSource {
    const char* name;
    const char* text;
    unsigned line;
    const char* says;
};

class BadSources : public testing::TestWithParam<BadSource> {};

TEST_P(BadSources, AreRefusedWithTheirLine) {
    const BadSource& bad = GetParam();
    const Font font(TLK_FONT);
    std::string source = bad.text;
    if (!source.empty() && source.find("[portrait]") == std::string::npos)
        source += '\n' + std::string(kSmall);
    try {
        (void)CompileSkin(ReadSource(source), font);
        FAIL() << "accepted";
    } catch (const SourceError& error) {
        EXPECT_EQ(error.Faults().size(), 1u) << "and what follows from it";
        EXPECT_EQ(error.Faults()[0].place.line, bad.line) << error.what();
        EXPECT_NE(std::string(error.what()).find(bad.says), std::string::npos) << error.what();
    }
}

#define PORTRAIT "[portrait]\nsize = [60, 32]\n"
INSTANTIATE_TEST_SUITE_P(
    All, BadSources,
    testing::Values(
        BadSource{"Empty", "", 1, "add [portrait]"},
        BadSource{"NotToml", "[portrait]\nsize = [60,\n=", 3, ""},
        BadSource{"NotUtf8", "[portrait]\nsize = \"\xFF\"", 2, ""},
        BadSource{"UnknownSetting", "\ncolour = 1\n", 2, "'colour'"},
        BadSource{"UnknownKeyOfTable", "[font]\nsize = 9\nbold = true\n", 3, "'font.bold'"},
        BadSource{"TableIsNumber", "font = 3", 1, "[font]"},
        BadSource{"UnknownArrangement", "arrangement = \"dvorak\"", 1, "full, keypad, letters, rows"},
        BadSource{"BadColour", "[colors]\nletter = [\"#FFFFFF\", \"white\"]", 2, "'colors.letter'"},
        BadSource{"HugeSize", "[portrait]\nsize = [240, 99999999999]\nrows = [\"q\"]", 2, "16 to 2048"},
        BadSource{"NoRows", PORTRAIT, 1, "add rows"},
        BadSource{"BlankRow", PORTRAIT "rows = [\"q\",\n\"  \"]", 4, "without keys"},
        BadSource{"UnknownKey", PORTRAIT "rows = [\"q\",\n\"shift ä\"]", 4, "'ä'"},
        BadSource{"UnknownFunction", PORTRAIT "rows = [\"alt\"]", 3, "shift, ctrl"},
        BadSource{"BadWeight", PORTRAIT "rows = [\"q:nan\"]", 3, "weight"},
        BadSource{"NoWeight", PORTRAIT "rows = [\"q:\"]", 3, "weight"},
        BadSource{"KeyTwice", PORTRAIT "rows = [\"q w e\", \"a s q\"]", 3, "'q'"},
        BadSource{"TooNarrow", PORTRAIT "rows = [\"q w:20\"]", 3, "'q'"},
        BadSource{"GlyphTooWide", PORTRAIT "rows = [\"back:1 q:6\"]", 3, "'back'"},
        BadSource{"DigitRowTorn", PORTRAIT "rows = [\"1 2\", \"q w\", \"- p\"]", 3, "caps_rect = false"},
        BadSource{"DigitsWithoutReturn", PORTRAIT "rows = [\"q\"]\n[digits]\nrows = [\"1 2\"]", 4,
                  "'digits'"},
        BadSource{"NoSuchKeyInLanguage", PORTRAIT "rows = [\"q lang\"]\n[language2.keys]\nqq = \"x\"", 5,
                  "'qq'"},
        BadSource{"ThreeCases", PORTRAIT "rows = [\"q lang\"]\n[language2.keys]\nq = \"xyz\"", 5, "small"},
        BadSource{"BeyondPlane", PORTRAIT "rows = [\"q lang\"]\n[language2.keys]\nq = \"😀\"", 5, "U+FFFF"},
        BadSource{"BadScreen", "screens = [\"240x320\",\n\"320x240\"]", 2, "upright"},
        BadSource{"ScreenNotListed", "screens = [\"240x320\"]\n[screen.480x640.font]\nsize = 9", 2,
                  "480x640"},
        BadSource{"UnknownPalette", "\npalette = \"pink\"", 2, "light, dark, contrast"},
        BadSource{"NoSuchBase", "based_on = \"none.toml\"", 1, "none.toml"},
        BadSource{"UnknownIcon", "[labels]\nback = {icon = \"bin\"}", 2, "shift, caps, back"},
        BadSource{"LabelOfCharacter", "[labels]\nq = \"Q\"", 2, "shift, ctrl"},
        BadSource{"ChangeOfNoKey", PORTRAIT "rows = [\"q\"]\n[[key]]\nmove = [1, 1]", 4, "add key"},
        BadSource{"ChangeOfAbsentKey", PORTRAIT "rows = [\"q\"]\n[[key]]\nkey = \"w\"", 5, "'w'"},
        BadSource{"KeyOutside", PORTRAIT "rows = [\"q\"]\n[[key]]\nkey = \"q\"\nmove = [9, 0]", 4, "outside"},
        BadSource{"UnknownArt", PORTRAIT "rows = [\"q\"]\n[art]\nfoto = \"a.png\"", 5, "portrait, landscape"},
        BadSource{"NoArt", PORTRAIT "rows = [\"q\"]\n[art]\nportrait = \"none.png\"", 5, "none.png"},
        BadSource{"ArtOfNoBoard", PORTRAIT "rows = [\"q\"]\n[art]\ndigits = \"none.png\"", 5,
                  "add the keyboard"},
        BadSource{"NoGlyph", PORTRAIT "rows = [\"q lang\"]\n[language2.keys]\nq = \"\\uE123\"", 5, "U+E123"}),
    [](const auto& bad) { return std::string(bad.param.name); });

TEST(Source, HasDefaultsForEverythingElse) {
    const Skin skin = ReadSource(std::string(kSmall) +
                                 "[landscape]\nsize = [90, 32]\n"
                                 "[language2.umlaut]\nw = \"ßẞ\"\n2 = \"²\"\n");
    ASSERT_TRUE(skin.landscape);
    EXPECT_EQ(skin.landscape->rows.size(), 2u);
    EXPECT_EQ(skin.landscape->size, (Size{90, 32}));
    EXPECT_FALSE(skin.digits);
    EXPECT_EQ(skin.characters[83], (CharacterEntry{u'w', u'W', u'á', u'Á', u'w', u'W', u'ß', u'ẞ'}));
    EXPECT_EQ(skin.characters[71][7], u'²');
}

TEST(Source, WeightsShareTheRow) {
    const Skin skin = ReadSource(kSmall);
    const Layout layout = LayOut(skin, skin.portrait);
    ASSERT_EQ(layout.keys.size(), 5u);
    EXPECT_EQ(layout.keys[0].key, 70);
    EXPECT_EQ(layout.keys[3].key, 83);
    EXPECT_EQ(layout.keys[3].rects, std::vector<Rect>({{16, 17, 44, 31}}));
    EXPECT_EQ(FindCapsRect(skin, layout), (Rect{1, 1, 59, 16}));
}

// Sources that name other files, in their own folder.
class SourceFiles : public testing::Test {
protected:
    SourceFiles() {
        std::string name = (std::filesystem::temp_directory_path() / "tlk-XXXXXX").string();
        if (mkdtemp(name.data())) m_Folder = name;
    }
    ~SourceFiles() override { std::filesystem::remove_all(m_Folder); }

    std::string Path(const std::string& name) const { return (m_Folder / name).string(); }
    void Write(const std::string& name, const std::string& text) const {
        std::filesystem::create_directories((m_Folder / name).parent_path());
        std::ofstream(Path(name)) << text;
    }
    Skin Read(const std::string& name, const std::string& screen = {}) const {
        return ReadSource(ReadText(Path(name)), Path(name), screen);
    }
    // "file:line: text" for each fault.
    std::string FaultsOf(const std::string& name) const {
        std::string faults;
        try {
            (void)CompileSkin(Read(name), Font(TLK_FONT));
        } catch (const SourceError& error) {
            for (const auto& [place, text] : error.Faults())
                faults += std::filesystem::path(place.file).filename().string() + ":" +
                          std::to_string(place.line) + ": " + text + "\n";
        }
        return faults;
    }

    std::filesystem::path m_Folder;
};

TEST_F(SourceFiles, OverrideTheirBases) {
    Write("base/a.toml",
          "screens = [\"240x320\", \"480x480\"]\npalette = \"mine.toml\"\n[font]\nsize = 12\nwords = 8\n"
          "[portrait]\nrows = [\"q w\"]\n[[key]]\nkey = \"q\"\nlabel = \"Q!\"\n"
          "[screen.480x480.font]\nsize = 30\n");
    Write("base/mine.toml", "style = \"flat\"\nletter = \"#102030\"\n");
    Write("b.toml",
          "based_on = [\"base/a.toml\", \"words.toml\"]\n[[key]]\nkey = \"w\"\nface = \"function\"\n");
    Write("words.toml", "[font]\nwords = 9\n");
    const Skin small = Read("b.toml");
    EXPECT_EQ(small.font.characters, 12);
    EXPECT_EQ(small.font.words, 9);
    EXPECT_EQ(small.palette.style, FaceStyle::Flat);
    EXPECT_EQ(small.palette.symbol.bottom, (Color{0x10, 0x20, 0x30}));
    EXPECT_EQ(small.portrait.changes.size(), 2u);
    EXPECT_EQ(small.portrait.size, (Size{240, 80}));
    ASSERT_TRUE(small.landscape);
    EXPECT_EQ(small.landscape->size, (Size{320, 80}));
    EXPECT_EQ(small.places.at({BoardKind::Landscape, 82}).file, Path("base/a.toml"));
    const Skin square = Read("b.toml", "480x480");
    EXPECT_EQ(square.font.characters, 30);
    EXPECT_EQ(square.portrait.size, (Size{480, 120}));
    EXPECT_FALSE(square.landscape);
}

TEST_F(SourceFiles, FaultsNameTheirFile) {
    Write("a.toml", "based_on = \"b.toml\"\n");
    Write("b.toml", "\nbased_on = \"a.toml\"\n");
    EXPECT_EQ(FaultsOf("a.toml").find("b.toml:2: 'based_on' leads back"), 0u) << FaultsOf("a.toml");
    Write("b.toml", "[portrait]\nsize = [60, 32]\nrows = [\"q lang\"]\n[language2.keys]\nq = \"\\uE123\"\n");
    EXPECT_EQ(FaultsOf("a.toml").find("b.toml:5: the font has no glyph"), 0u) << FaultsOf("a.toml");
    // Doubles the number at each step.
    Write("b.toml", "based_on = [\"b0.toml\", \"b0.toml\"]\n");
    for (int number = 0; number < 30; ++number) {
        const std::string next = "\"b" + std::to_string(number + 1) + ".toml\"";
        Write("b" + std::to_string(number) + ".toml", "based_on = [" + next + ", " + next + "]\n");
    }
    Write("b30.toml", "");
    EXPECT_NE(FaultsOf("a.toml").find("more than 100 sources"), std::string::npos) << FaultsOf("a.toml");
    Write("b.toml", "[portrait\n");
    EXPECT_EQ(FaultsOf("a.toml").find("b.toml:1: "), 0u) << FaultsOf("a.toml");
}

// Each line names its fault. All are reported at once, without consequences of others.
TEST_F(SourceFiles, AllFaultsAreReportedInLineOrderWithSuggestions) {
    Write("a.toml",
          "screens = [\"240x320\"]\npalette = \"drak\"\n[colours]\n[colors]\nleter = \"#FFFFFF\"\n"
          "function = \"C0D0E0\"\n[screen.240x230]\n[labels]\nentre = \"E\"\nback = {icon = \"bcak\"}\n"
          "[portrait]\nrows = [\"q sapce:x\", \n\"w:x SHIFT\"]\n[digits]\nrows = [\"1\"]\n"
          "[[key]]\nkey = \"p\"\nfcae = \"x\"\nboard = \"digit\"\n[art]\nlang1_smal_ls = \"a.png\"\n"
          "[language2.keys]\nqq = \"x\"\nw = \"xyz\"\n");
    const std::string faults = FaultsOf("a.toml");
    std::size_t at = 0;
    for (const char* expected :
         {"2: there is no palette 'drak': name a file such as \"mine.toml\", or did you mean 'dark'?",
          "3: there is no table 'colours': did you mean 'colors'?", "5: there is no setting 'colors.leter'",
          "6: 'colors.function' must be a colour such as \"#C0D0E0\": did you mean '#C0D0E0'?",
          "7: 'screens' does not list '240x230': did you mean '240x320'?",
          "9: there is no function key 'entre': did you mean 'enter'?",
          "10: there is no icon 'bcak': did you mean 'back'?",
          "12: there is no key 'sapce' here: did you mean 'space'?", "13: key 'w' needs a weight",
          "13: there is no key 'SHIFT' here: did you mean 'shift'?",
          "14: the digit keyboard has no key that leads back",
          "18: there is no setting 'key.fcae': did you mean 'face'?",
          "19: there is no keyboard 'digit': did you mean 'digits'?",
          "21: there is no picture or mask 'lang1_smal_ls': did you mean 'lang1_small_ls'?",
          "23: there is no key 'qq'", "24: a key must type"}) {
        const std::size_t found = faults.find(std::string("a.toml:") + expected);
        ASSERT_NE(found, std::string::npos) << expected << "\n" << faults;
        EXPECT_GE(found, at) << expected;
        at = found;
    }
    EXPECT_EQ(std::ranges::count(faults, '\n'), 16) << faults;
}

TEST_F(SourceFiles, ASourceCanHaveFewerScreensThanItsBase) {
    Write("a.toml",
          "screens = [\"240x320\", \"480x640\"]\n[screen.480x640.font]\nsize = 20\n"
          "[portrait]\nrows = [\"q lang\", \"w\"]\n[language2.keys]\nq = \"\\uE123\"\nw = \"\\uE124\"\n");
    Write("b.toml",
          "based_on = \"a.toml\"\nscreens = [\"240x320\"]\n[language2.keys]\nq = \"x\"\nw = \"x\"\n");
    EXPECT_EQ(FaultsOf("b.toml"), "");
    EXPECT_EQ(std::ranges::count(FaultsOf("a.toml"), '\n'), 2) << "each glyph that is missing, once";
    Write("b.toml", "based_on = \"a.toml\"\nscreens = [\"240x320\"]\n[screen.480x640.font]\nsize = 9\n");
    EXPECT_EQ(FaultsOf("b.toml").find("b.toml:3: 'screens' does not list '480x640'"), 0u);
}

TEST_F(SourceFiles, OwnArtReplacesAPictureOfTheSameSize) {
    Picture picture({60, 32}, Color{1, 2, 3});
    WriteFile(Path("own.png"), EncodePng(picture));
    WriteFile(Path("wide.png"), EncodePng(Picture({61, 32}, Color{})));
    const std::string source = "[portrait]\nsize = [60, 32]\nrows = [\"q\"]\n[art]\n";
    Write("a.toml", source + "portrait = \"own.png\"\n");
    for (const Resource& resource : CompileSkin(Read("a.toml"), Font(TLK_FONT)))
        if (resource.name == "CHAR_KEYBOARD_BITMAP") {
            EXPECT_EQ(resource.data, EncodePicture(picture));
        }
    Write("a.toml", source + "portrait = \"wide.png\"\n");
    EXPECT_NE(FaultsOf("a.toml").find("61x32"), std::string::npos);
    Write("a.toml", source + "lang1_small = \"own.png\"\n");
    EXPECT_NE(FaultsOf("a.toml").find("neither black nor white at 0, 0"), std::string::npos);
    Write("a.toml", source + "lang1_small = \"a.toml\"\n");
    EXPECT_NE(FaultsOf("a.toml").find("save it as PNG"), std::string::npos);
}

TEST(Source, SingleKeysAreMovedResizedAndBuiltFromRectangles) {
    const Skin skin = ReadSource(PORTRAIT
                                 "rows = [\"q w\"]\n[[key]]\nkey = \"q\"\nmove = [2, 1]\nsize = [20, 10]\n"
                                 "[[key]]\nkey = \"e\"\nrects = [[0, 20, 10, 12], [10, 22, 9, 10]]\n");
    const Layout layout = LayOut(skin, skin.portrait);
    ASSERT_EQ(layout.keys.size(), 3u);
    EXPECT_EQ(layout.keys[0].rects, std::vector<Rect>({{3, 2, 22, 11}}));
    EXPECT_EQ(layout.keys[2].rects, (std::vector<Rect>{{0, 20, 9, 31}, {10, 22, 18, 31}}));
}

TEST(Source, PlanesThatNoKeySelectsAreOmitted) {
    const Font font(TLK_FONT);
    const auto masks = [&font](const std::string& row) {
        std::string names;
        for (const Resource& resource : CompileSkin(ReadSource(PORTRAIT "rows = [\"" + row + "\"]"), font))
            if (resource.name.ends_with("_MASK"))
                names += resource.name.substr(0, resource.name.size() - 5) + " ";
        return names;
    };
    EXPECT_EQ(masks("q"), "LANG1_SMALL ");
    EXPECT_EQ(masks("q shift"), "LANG1_SMALL LANG1_LARGE ");
    EXPECT_EQ(masks("q umlaut"), "LANG1_SMALL UML1_SMALL ");
    EXPECT_EQ(masks("q lang"), "LANG1_SMALL UML1_SMALL LANG2_SMALL UML2_SMALL ");
}

// The engine paints black where the mask is 0: light glyphs are the rest of a black face.
TEST(Source, LightGlyphsAreTheOnesOfTheMask) {
    const std::string rows = PORTRAIT "rows = [\"q\"]\n";
    const Font font(TLK_FONT);
    const auto draw = [&](const std::string& text) {
        const Skin skin = ReadSource(text);
        Lettering lettering(font);
        return DrawMasks(skin, LayOut(skin, skin.portrait), lettering, std::array{Plane{}}).front();
    };
    const Mask dark = draw(rows);
    const Mask light = draw("palette = \"dark\"\n" + rows);
    for (int y = 2; y < 29; ++y)
        for (int x = 2; x < 57; ++x)
            EXPECT_NE(dark.At(x, y), light.At(x, y)) << x << ", " << y;
    EXPECT_EQ(light.At(59, 5), 1) << "the line between two keys";
}

// Hints would turn these marks into bars, which belong to other letters.
TEST(Source, MarksAboveBoldLettersAreNoBars) {
    const Font font(std::filesystem::path(TLK_FONT).replace_filename("DejaVuSans-Bold.ttf").string());
    for (const int pixels : {11, 14, 16, 27, 30})
        for (const std::u16string text : {u"ñ", u"ğ", u"й", u"ëï"}) {
            const Mask ink = Lettering(font).Fit(text, pixels, {200, 200}, 1)->ink;
            std::size_t parts = 0;
            for (int x = 0; x < ink.GetSize().width; ++x)
                if (ink.At(x, 0) && (x == 0 || !ink.At(x - 1, 0))) ++parts;
            EXPECT_GE(parts, 2 * text.size()) << pixels << ", U+" << std::hex << int{text[0]};
        }
}

TEST(Source, KeyInTwoRowsIsOneTallKeyOrTwoRectangles) {
    const Skin skin = ReadSource(PORTRAIT "rows = [\"q enter\", \"w enter\"]");
    EXPECT_EQ(LayOut(skin, skin.portrait).keys[1].rects, std::vector<Rect>({{31, 1, 59, 31}}));
    const Skin bent = ReadSource(PORTRAIT "rows = [\"q enter\", \"w enter:2\"]");
    EXPECT_EQ(LayOut(bent, bent.portrait).keys[1].rects,
              (std::vector<Rect>{{31, 1, 59, 17}, {21, 17, 59, 31}}));
    const Picture picture = DrawPicture(bent, LayOut(bent, bent.portrait));
    EXPECT_NE(picture.At(45, 15), bent.palette.background) << "torn where its parts meet";
    EXPECT_EQ(picture.At(25, 14), picture.At(5, 14)) << "the key beside it ends above";
}

}  // namespace
}  // namespace tlk
