// SPDX-License-Identifier: MIT
// The look of the skins that ship, and their check. Typing is tested in all_skins_test.cpp.
#include <gtest/gtest.h>
#include <unicode.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

#include "check.h"
#include "drawing.h"
#include "file.h"
#include "skin_module.h"
#include "source.h"
#include "tests/cases.h"

namespace tlk {
namespace {

namespace fs = std::filesystem;

// Skins by screen and name: "240x320/german" is 240x320/german-240x320.tlk.
Skin Read(const std::string& name) {
    const std::string source = SKIN_SOURCES "/" + fs::path(name).filename().string() + ".toml";
    return ReadSource(AsText(ReadFile(source)), source, fs::path(name).parent_path().string());
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

// The pixels that differ from the face, from the leftmost one on.
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

// Checks the drawing of one plane.
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
        if (key.rects.size() == 1 && key.key != function_key::kSpace)
            EXPECT_FALSE(ink.empty()) << where << " key " << KeyName(skin.characters, key.key);
        EXPECT_EQ(InkOf(mask, {face.left, open.top, face.left, open.bottom}, isLight).size(), 0u)
            << where << " key " << KeyName(skin.characters, key.key) << ": ink on the bevel";
        if (IsFunction(key.key)) continue;
        const char16_t character = skin.characters[key.key][slot];
        const auto [same, isNew] = seen.emplace(ink, character);
        EXPECT_TRUE(isNew || same->second == character)
            << where << ": " << unicode::ToUtf8(same->second) << " and " << unicode::ToUtf8(character)
            << " look the same";
    }
}

class Skins : public testing::TestWithParam<std::string> {};

TEST_P(Skins, DifferentCharactersLookDifferentAndStayOnTheirFaces) {
    const Skin skin = Read(GetParam());
    const SkinModule built = ReadSkin(OpenModule(BuiltFile(GetParam())));
    const auto expect = [&](const Board& board, BoardKind kind, std::size_t plane) {
        ExpectLegible(skin, LayOut(skin, board), built.Board(kind).masks[plane].pixels, plane % kSlotCount,
                      GetParam() + " " + MaskResource(kind, plane));
    };
    for (std::size_t plane = 0; plane < kSlotCount; ++plane) {
        expect(skin.portrait, BoardKind::Portrait, plane);
        if (skin.landscape) expect(*skin.landscape, BoardKind::Landscape, plane);
    }
    expect(*skin.digits, BoardKind::Digits, kDigitPlane);
}

TEST_P(Skins, PassTheCheckWithoutARemark) {
    const Module module = OpenModule(BuiltFile(GetParam()));
    const Size screen = *ParseScreen(fs::path(GetParam()).parent_path().string());
    for (const Remark& remark : Check(module, screen))
        ADD_FAILURE() << FormatRemark(remark, GetParam());
}

INSTANTIATE_TEST_SUITE_P(All, Skins, testing::ValuesIn(AllSkins()), [](const auto& skin) {
    std::string name = skin.param;
    std::ranges::replace_if(
        name, [](char letter) { return letter == '/' || letter == '-'; }, '_');
    return name;
});

// The keyboard chooses a skin by a part of its path, and the options delete one so; all skins may be on one
// device.
TEST(Skins, NoNameIsAPartOfAnotherPath) {
    for (const std::string& skin : AllSkins()) {
        const std::string name = fs::path(BuiltFile(skin)).stem().string();
        for (const std::string& other : AllSkins()) {
            const std::string path = "\\windows\\" + fs::path(BuiltFile(other)).filename().string();
            EXPECT_EQ(path.find(name) != std::string::npos, skin == other) << name << " in " << path;
        }
    }
}

struct Language {
    // The full keyboard without Shift, row by row from the key ` on.
    std::u16string rows;
    // Each with its capital.
    std::u16string letters;
};

std::map<std::string, Language> Languages() {
    std::map<std::string, Language> languages;
    for (const auto& [name, lines] : ReadCases(LANGUAGES))
        languages[name] = {*unicode::FromUtf8(lines.at(0)), *unicode::FromUtf8(lines.at(1))};
    return languages;
}

bool Types(const Skin& skin, char16_t small, char16_t large) {
    for (const Row& row : skin.portrait.rows)
        for (const RowKey& key : row.keys)
            for (const std::size_t slot : {4u, 6u})
                if (skin.characters[key.key][slot] == small && skin.characters[key.key][slot + 1] == large)
                    return true;
    return false;
}

TEST(Skins, EachLanguageHasAllItsLettersInBothCases) {
    const auto languages = Languages();
    for (const std::string& name : AllSkins()) {
        if (!name.starts_with("240x320/")) continue;
        const Skin skin = Read(name);
        const std::string language = name.substr(8, name.find('-') - 8);
        const std::u16string& letters = languages.at(language).letters;
        for (std::size_t at = 0; at < letters.size(); at += 2)
            EXPECT_TRUE(Types(skin, letters[at], letters[at + 1]))
                << name << ' ' << unicode::ToUtf8(letters[at]);
        for (const Row& row : skin.portrait.rows)
            for (const RowKey& key : row.keys)
                EXPECT_TRUE(IsFunction(key.key) || skin.characterPlaces.contains(key.key))
                    << name << ' ' << KeyName(skin.characters, key.key);
    }
}

TEST(Skins, FullKeyboardsHaveTheNationalArrangement) {
    const std::u16string keys = u"`1234567890-=qwertyuiop[]asdfghjkl;'\\zxcvbnm,./";
    for (const auto& [name, language] : Languages()) {
        const Skin skin = Read("240x320/" + name);
        std::u16string typed;
        for (const char16_t key : keys)
            typed += skin.characters[*FindCharacter(skin.characters, *skin.arrangement, key)][4];
        EXPECT_EQ(typed, language.rows) << name;
    }
}

}  // namespace
}  // namespace tlk
