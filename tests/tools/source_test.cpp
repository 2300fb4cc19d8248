// SPDX-License-Identifier: MIT
#include "source.h"

#include <gtest/gtest.h>

#include "compile.h"
#include "errors.h"
#include "layout.h"

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
    try {
        (void)CompileSkin(ReadSource(bad.text), font);
        FAIL() << "accepted";
    } catch (const SourceError& error) {
        EXPECT_EQ(error.Line(), bad.line) << error.what();
        EXPECT_NE(std::string(error.what()).find(bad.says), std::string::npos) << error.what();
    }
}

#define PORTRAIT "[portrait]\nsize = [60, 32]\n"
INSTANTIATE_TEST_SUITE_P(
    All, BadSources,
    testing::Values(
        BadSource{"Empty", "", 0, "add [portrait]"},
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
        BadSource{"GlyphTooWide", PORTRAIT "rows = [\"back:1 q:6\"]", 0, "'back'"},
        BadSource{"DigitRowTorn", PORTRAIT "rows = [\"1 2\", \"q w\", \"- p\"]", 0, "caps_rect = false"},
        BadSource{"DigitsWithoutReturn", PORTRAIT "rows = [\"q\"]\n[digits]\nrows = [\"1 2\"]", 4,
                  "'digits'"},
        BadSource{"NoSuchKeyInLanguage", PORTRAIT "rows = [\"q\"]\n[language2.keys]\nqq = \"x\"", 5, "'qq'"},
        BadSource{"ThreeCases", PORTRAIT "rows = [\"q\"]\n[language2.keys]\nq = \"xyz\"", 5, "small"},
        BadSource{"BeyondPlane", PORTRAIT "rows = [\"q\"]\n[language2.keys]\nq = \"😀\"", 5, "U+FFFF"},
        BadSource{"NoGlyph", PORTRAIT "rows = [\"q\"]\n[language2.keys]\nq = \"\\uE123\"", 5, "U+E123"}),
    [](const auto& bad) { return std::string(bad.param.name); });

TEST(Source, LeavesTheUsualToTheTool) {
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
    EXPECT_EQ(layout.keys[3].rects, std::vector<Rect>({{15, 16, 44, 31}}));
    EXPECT_EQ(FindCapsRect(skin, layout), (Rect{0, 0, 59, 15}));
}

TEST(Source, KeyInTwoRowsIsOneTallKeyOrTwoRectangles) {
    const Skin skin = ReadSource(PORTRAIT "rows = [\"q enter\", \"w enter\"]");
    EXPECT_EQ(LayOut(skin, skin.portrait).keys[1].rects, std::vector<Rect>({{30, 0, 59, 31}}));
    const Skin bent = ReadSource(PORTRAIT "rows = [\"q enter\", \"w enter:2\"]");
    EXPECT_EQ(LayOut(bent, bent.portrait).keys[1].rects,
              (std::vector<Rect>{{30, 0, 59, 15}, {20, 16, 59, 31}}));
}

}  // namespace
}  // namespace tlk
