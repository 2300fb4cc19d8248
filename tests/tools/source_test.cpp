// SPDX-License-Identifier: MIT
#include "source.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

#include "bitmap.h"
#include "compile.h"
#include "drawing.h"
#include "errors.h"
#include "file.h"
#include "png_file.h"
#include "tests/cases.h"

namespace tlk {
namespace {

constexpr const char* kSmall = "[portrait]\nsize = [60, 32]\nrows = [\"1 2\", \"q w:2 shift\"]\n";

#define PORTRAIT "[portrait]\nsize = [60, 32]\n"
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
    std::string Path(const std::string& name) const { return m_folder.Path(name); }
    void Write(const std::string& name, const std::string& text) const {
        std::filesystem::create_directories(std::filesystem::path(Path(name)).parent_path());
        std::ofstream(Path(name)) << text;
    }
    Skin Read(const std::string& name, const std::string& screen = {}) const {
        return ReadSource(AsText(ReadFile(Path(name))), Path(name), screen);
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

    TemporaryFolder m_folder;
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

class CheckedSources : public SourceFiles, public testing::WithParamInterface<Case> {
protected:
    // Writes the files; returns the faults in their comments, each with its place as FaultsOf() gives it.
    std::vector<std::pair<std::string, std::string>> WriteFiles() const {
        static const std::regex kComment("#! (.*?) *(?=#!|$)");
        std::vector<std::pair<std::string, std::string>> faults;
        std::string file = "a.toml", text;
        int number = 0;
        for (const std::string& line : GetParam().lines) {
            if (line.starts_with("@ ")) {
                file = line.substr(2);
                text.clear();
                number = 0;
                continue;
            }
            Write(file, text += line + '\n');
            ++number;
            for (std::sregex_iterator found(line.begin(), line.end(), kComment), end; found != end; ++found)
                faults.emplace_back(file + ':' + std::to_string(number) + ": ", (*found)[1]);
        }
        return faults;
    }
};

TEST_P(CheckedSources, HaveTheFaultsInTheirCommentsAndNoOthers) {
    Write("small.toml", kSmall);
    const auto expected = WriteFiles();
    std::istringstream faults(FaultsOf("a.toml"));
    std::string fault;
    for (const auto& [place, text] : expected) {
        EXPECT_TRUE(std::getline(faults, fault));
        EXPECT_TRUE(fault.starts_with(place)) << fault << '\n' << place;
        EXPECT_NE(fault.find(text), std::string::npos) << fault << '\n' << text;
    }
    EXPECT_FALSE(std::getline(faults, fault)) << fault;
}

INSTANTIATE_TEST_SUITE_P(All, CheckedSources, testing::ValuesIn(ReadCases(SOURCE_CASES)),
                         [](const auto& source) { return source.param.name; });

TEST_F(SourceFiles, MustBeUtf8) {
    Write("a.toml", "[portrait]\nsize = \"\xFF\"");
    EXPECT_TRUE(FaultsOf("a.toml").starts_with("a.toml:2: ")) << FaultsOf("a.toml");
}

TEST_F(SourceFiles, TooManyBasesAreRefused) {
    // Doubles the number at each step.
    for (int number = 0; number < 30; ++number) {
        const std::string next = "\"b" + std::to_string(number + 1) + ".toml\"";
        Write("b" + std::to_string(number) + ".toml", "based_on = [" + next + ", " + next + "]\n");
    }
    Write("b30.toml", "");
    EXPECT_NE(FaultsOf("b0.toml").find("more than 100 sources"), std::string::npos) << FaultsOf("b0.toml");
}

TEST_F(SourceFiles, OwnArtReplacesAPictureOfTheSameSize) {
    Picture picture({60, 32}, Color{1, 2, 3});
    WriteFile(Path("own.png"), EncodePng(picture));
    WriteFile(Path("wide.png"), EncodePng(Picture({61, 32}, Color{})));
    const std::string source = "[portrait]\nsize = [60, 32]\nrows = [\"q\"]\n[art]\n";
    Write("a.toml", source + "portrait = \"own.png\"\n");
    for (const Resource& resource : CompileSkin(Read("a.toml"), Font(TLK_FONT)))
        if (resource.name == "CHAR_KEYBOARD_BITMAP") EXPECT_EQ(resource.data, EncodePicture(picture));
    Write("a.toml", source + "portrait = \"wide.png\"\n");
    EXPECT_NE(FaultsOf("a.toml").find("61x32"), std::string::npos);
    Write("a.toml", source + "lang1_small = \"own.png\"\n");
    EXPECT_NE(FaultsOf("a.toml").find("neither black nor white at 0, 0"), std::string::npos);
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
