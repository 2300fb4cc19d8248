// SPDX-License-Identifier: MIT
// The skins that ship, as they look. How they type is for the test of all skins, and how they are built for
// the check.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

#include "bitmap.h"
#include "drawing.h"
#include "files.h"
#include "module_reader.h"
#include "source.h"

namespace tlk {
namespace {

namespace fs = std::filesystem;

constexpr std::array<const char*, kSlotCount> kMasks{
    "LANG1_SMALL_MASK", "LANG1_LARGE_MASK", "UML1_SMALL_MASK", "UML1_LARGE_MASK",
    "LANG2_SMALL_MASK", "LANG2_LARGE_MASK", "UML2_SMALL_MASK", "UML2_LARGE_MASK"};

// Skins by screen and name: "240x320/german" is 240x320/german-240x320.tlk.
Skin Read(const std::string& name) {
    const std::string source = SKIN_SOURCES "/" + fs::path(name).filename().string() + ".toml";
    return ReadSource(ReadText(source), source, fs::path(name).parent_path().string());
}

std::string BuiltFile(const std::string& name) {
    return SKINS_FOLDER "/" + name + '-' + fs::path(name).parent_path().string() + ".tlk";
}

std::vector<std::string> AllSkins() {
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(SKINS_FOLDER))
        if (entry.path().extension() == ".tlk") {
            const std::string file = entry.path().lexically_relative(SKINS_FOLDER).string();
            names.push_back(file.substr(0, file.rfind('-')));
        }
    std::ranges::sort(names);
    return names;
}

using Ink = std::set<std::pair<int, int>>;

// What differs from the face, from the leftmost pixel on.
Ink InkOf(const Picture& mask, const Rect& rect, bool isLight) {
    Ink ink;
    for (int y = rect.top; y <= rect.bottom; ++y)
        for (int x = rect.left; x <= rect.right; ++x)
            if ((mask.At(x, y) != Color{}) == isLight) ink.emplace(x, y - rect.top);
    const int left = ink.empty() ? 0 : ink.begin()->first;
    Ink moved;
    for (const auto& [x, y] : ink)
        moved.emplace(x - left, y);
    return moved;
}

// What was drawn in one plane, and what the checks below look for in it.
void ExpectLegible(const Skin& skin, const Layout& layout, const Picture& mask, std::size_t slot,
                   const std::string& where) {
    const bool isLight = skin.palette.glyphs == GlyphTone::Light;
    std::map<Ink, char16_t> seen;
    for (const Key& key : layout.keys) {
        const Rect& rect = key.rects[0];
        const Rect face = FaceOf(rect);
        // Corners of black faces show the background.
        const Rect open{face.left, face.top + skin.scale, face.right, face.bottom - skin.scale};
        const Ink ink = InkOf(mask, InnerOf(skin, rect), isLight);
        if (key.rects.size() == 1 && key.key != function_key::kSpace) {
            EXPECT_FALSE(ink.empty()) << where << " key " << NameKey(skin.characters, key.key);
        }
        EXPECT_EQ(InkOf(mask, {face.left, open.top, face.left, open.bottom}, isLight).size(), 0u)
            << where << " key " << NameKey(skin.characters, key.key) << ": ink on the bevel";
        if (IsFunction(key.key)) continue;
        const char16_t character = skin.characters[key.key][slot];
        const auto [same, isNew] = seen.emplace(ink, character);
        EXPECT_TRUE(isNew || same->second == character)
            << where << ": " << ToUtf8(same->second) << " and " << ToUtf8(character) << " look the same";
    }
}

class Skins : public testing::TestWithParam<std::string> {};

TEST_P(Skins, DifferentCharactersLookDifferentAndStayOnTheirFaces) {
    const Skin skin = Read(GetParam());
    const Module module = Module::Parse(ReadBytes(BuiltFile(GetParam())));
    const auto expect = [&](const Board& board, std::size_t slot, const std::string& name) {
        const Picture mask = *DecodeBitmap(*module.Find(ResourceKind::Bitmap, name));
        ExpectLegible(skin, LayOut(skin, board), mask, slot, GetParam() + " " + name);
    };
    for (std::size_t slot = 0; slot < kSlotCount; ++slot) {
        expect(skin.portrait, slot, kMasks[slot]);
        if (skin.landscape) expect(*skin.landscape, slot, std::string(kMasks[slot]) + "_LS");
    }
    expect(*skin.digits, 0, "DIGIT_MASK");
}

INSTANTIATE_TEST_SUITE_P(All, Skins, testing::ValuesIn(AllSkins()), [](const auto& skin) {
    std::string name = skin.param;
    std::ranges::replace_if(
        name, [](char letter) { return letter == '/' || letter == '-'; }, '_');
    return name;
});

// By a part of its path the keyboard chooses a skin and the options delete one; all sets may lie on one
// device.
TEST(Skins, NoNameIsAPartOfAnothersPath) {
    for (const std::string& skin : AllSkins()) {
        const std::string name = fs::path(BuiltFile(skin)).stem().string();
        for (const std::string& other : AllSkins()) {
            const std::string path = "\\windows\\" + fs::path(BuiltFile(other)).filename().string();
            EXPECT_EQ(path.find(name) != std::string::npos, skin == other) << name << " in " << path;
        }
    }
}

// The character table's entry of a key named by its small character of language 1.
CharacterEntry EntryOf(const Skin& skin, char16_t key) {
    return skin.characters[*FindCharacter(skin.characters, *skin.arrangement, key)];
}

TEST(Skins, FullKeyboardsHaveTheNationalArrangementAndItsAccents) {
    const Skin german = Read("240x320/german");
    EXPECT_EQ(EntryOf(german, u'y'), (CharacterEntry{u'y', u'Y', u'å', u'Å', u'z', u'Z', u'ê', u'Ê'}));
    EXPECT_EQ(EntryOf(german, u'[')[4], u'ü');
    EXPECT_EQ(EntryOf(german, u'-')[4], u'ß');
    EXPECT_EQ(EntryOf(german, u'-')[7], u'ẞ');
    const Skin french = Read("240x320/french");
    EXPECT_EQ(EntryOf(french, u'q')[4], u'a');
    EXPECT_EQ(EntryOf(french, u'2')[4], u'é');
    EXPECT_EQ(EntryOf(french, u'2')[5], u'2');
    EXPECT_EQ(EntryOf(french, u'p')[7], u'Œ');
    const Skin russian = Read("240x320/russian");
    EXPECT_EQ(EntryOf(russian, u'`')[4], u'ё');
    EXPECT_EQ(EntryOf(russian, u'q')[5], u'Й');
    EXPECT_EQ(EntryOf(russian, u'b')[6], u'і');
    const Skin greek = Read("240x320/greek");
    EXPECT_EQ(EntryOf(greek, u'w')[4], u'ς');
    EXPECT_EQ(EntryOf(greek, u'a')[7], u'Ά');
}

TEST(Skins, SecondLanguagesLeaveNoKeyOfTheFirstBehindUnnoticed) {
    for (const char* name : {"240x320/german", "240x320/french", "240x320/russian", "240x320/greek",
                             "240x320/german-thumbs", "240x320/german-swipe"}) {
        const Skin skin = Read(name);
        for (const Row& row : skin.portrait.rows)
            for (const RowKey& key : row.keys)
                EXPECT_TRUE(IsFunction(key.key) || skin.characterPlaces.contains(key.key))
                    << name << " " << NameKey(skin.characters, key.key);
    }
}

}  // namespace
}  // namespace tlk
