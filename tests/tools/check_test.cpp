// SPDX-License-Identifier: MIT
#include "check.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <sstream>

#include "bitmap.h"
#include "dump.h"
#include "errors.h"
#include "ink.h"
#include "module_writer.h"
#include "preview.h"
#include "tests/cases.h"

namespace tlk {
namespace {

constexpr Size kScreen{240, 320};
constexpr Color kWhite{0xFF, 0xFF, 0xFF};

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

// What follows the name in a line of check.cases.
using Numbers = std::span<const int>;

// A skin without faults, for tests to damage: every key shows a square, the digit row is the CAPS rectangle.
class DamagedSkin {
public:
    DamagedSkin() {
        AddBoard(BoardKind::Portrait, kCharacterKeys, 40);
        AddBoard(BoardKind::Landscape, kCharacterKeys, kLandscapeCell);
        AddBoard(BoardKind::Digits, kDigitKeys, 40);
        Damage("data CAPS_RECT 0 0 239 19");
        Bytes& locale = Data("LOCALE_CHARSET");
        for (int unit = 0; unit < 1 + 4 * 60; ++unit)
            Put16(locale, 'a');
    }

    Bytes& Data(const std::string& name) { return Add(ResourceKind::Data, name); }

    // Carries out a line of check.cases.
    void Damage(const std::string& line) {
        static const std::map<std::string, void (DamagedSkin::*)(const std::string& name, Numbers numbers)>
            kDamages = {{"move", &DamagedSkin::Move},       {"renumber", &DamagedSkin::Renumber},
                        {"paint", &DamagedSkin::PaintMask}, {"fill", &DamagedSkin::FillPicture},
                        {"picture", &DamagedSkin::Whiten},  {"mask", &DamagedSkin::Clear},
                        {"crop", &DamagedSkin::Crop},       {"data", &DamagedSkin::Replace},
                        {"byte", &DamagedSkin::ChangeByte}, {"lengthen", &DamagedSkin::Lengthen},
                        {"remove", &DamagedSkin::Remove}};
        std::istringstream words(line);
        std::string damage, name;
        words >> damage >> name;
        const std::vector<int> numbers(std::istream_iterator<int>(words), {});
        (this->*kDamages.at(damage))(name, numbers);
    }

    Bytes File() const {
        std::vector<Resource> resources;
        for (const auto& [name, resource] : m_resources)
            resources.push_back(resource);
        return WriteModule(resources);
    }
    Module Build() const { return Module::Parse(File()); }

private:
    Bytes& Add(ResourceKind kind, const std::string& name) {
        return m_resources.try_emplace(name, Resource{kind, name, {}}).first->second.data;
    }
    void SetPicture(const std::string& name, const Picture& picture) {
        Add(ResourceKind::Bitmap, name) = EncodePicture(m_pictures[name] = picture);
    }
    void SetMask(const std::string& name, const Mask& mask) {
        Add(ResourceKind::Bitmap, name) = EncodeMask(m_masks[name] = mask);
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
        SetPicture(std::string(PictureResource(board)), Picture(size, kWhite));
        for (std::size_t plane = 0; plane < kPlaneCount; ++plane)
            if ((plane == kDigitPlane) == (board == BoardKind::Digits))
                SetMask(MaskResource(board, plane), mask);
    }

    void Move(const std::string& layout, Numbers numbers) {
        Change(layout, numbers[0], 4, numbers.subspan(1));
    }
    void Renumber(const std::string& layout, Numbers numbers) {
        Change(layout, numbers[0], 0, numbers.subspan(1));
    }
    // Writes the values into every record of the key.
    void Change(const std::string& layout, int key, std::size_t offset, Numbers values) {
        Bytes changed;
        for (const int value : values)
            PutBig16(changed, value);
        Bytes& bytes = Data(layout);
        for (std::size_t at = 0; at + 16 <= bytes.size(); at += 16)
            if ((bytes[at] << 8 | bytes[at + 1]) == key) std::ranges::copy(changed, &bytes[at + offset]);
    }

    static void Fill(auto& pixels, Numbers rect, const auto& value) {
        for (int y = rect[1]; y <= rect[3]; ++y)
            for (int x = rect[0]; x <= rect[2]; ++x)
                pixels.At(x, y) = value;
    }
    void PaintMask(const std::string& name, Numbers numbers) {
        Mask mask = m_masks.at(name);
        Fill(mask, numbers, static_cast<std::uint8_t>(numbers[4]));
        SetMask(name, mask);
    }
    void FillPicture(const std::string& name, Numbers numbers) {
        Picture picture = m_pictures.at(name);
        const auto grey = static_cast<std::uint8_t>(numbers[4]);
        Fill(picture, numbers, Color{grey, grey, grey});
        SetPicture(name, picture);
    }
    void Whiten(const std::string& name, Numbers size) {
        SetPicture(name, Picture({size[0], size[1]}, kWhite));
    }
    void Clear(const std::string& name, Numbers size) { SetMask(name, Mask({size[0], size[1]}, 1)); }
    void Crop(const std::string& name, Numbers width) {
        const Mask& wide = m_masks.at(name);
        Mask mask({width[0], wide.GetSize().height}, 1);
        for (int y = 0; y < mask.GetSize().height; ++y)
            for (int x = 0; x < width[0]; ++x)
                mask.At(x, y) = wide.At(x, y);
        SetMask(name, mask);
    }

    void Replace(const std::string& name, Numbers values) {
        Data(name).clear();
        for (const int value : values)
            Put32(Data(name), static_cast<std::uint32_t>(value));
    }
    void ChangeByte(const std::string& name, Numbers numbers) {
        Data(name).at(static_cast<std::size_t>(numbers[0])) = static_cast<std::uint8_t>(numbers[1]);
    }
    void Lengthen(const std::string& name, Numbers) { Data(name).push_back(0); }
    void Remove(const std::string& name, Numbers) { m_resources.erase(name); }

    std::map<std::string, Resource> m_resources;
    std::map<std::string, Mask> m_masks;
    std::map<std::string, Picture> m_pictures;
};

class CheckedSkins : public testing::TestWithParam<Case> {};

TEST_P(CheckedSkins, GiveTheirRemarksAndNoOthers) {
    DamagedSkin skin;
    std::vector<std::string> expected;
    for (const std::string& line : GetParam().lines)
        if (line.starts_with("> "))
            expected.push_back("a.tlk: " + line.substr(2));
        else if (!line.empty() && line[0] != '#')
            skin.Damage(line);
    const auto remarks = Check(skin.Build(), kScreen);
    for (std::size_t i = 0; i < remarks.size(); ++i) {
        const std::string remark = FormatRemark(remarks[i], "a.tlk");
        EXPECT_TRUE(i < expected.size() && remark.starts_with(expected[i])) << remark;
    }
    EXPECT_EQ(remarks.size(), expected.size());
}

INSTANTIATE_TEST_SUITE_P(All, CheckedSkins, testing::ValuesIn(ReadCases(CHECK_CASES)),
                         [](const auto& skin) { return skin.param.name; });

TEST(Check, GuessesTheScreenFromThePictures) {
    DamagedSkin skin;
    EXPECT_EQ(GuessScreen(skin.Build()), kScreen);
    skin.Damage("remove LANSCAPE_KEYBOARD_BITMAP");
    EXPECT_EQ(GuessScreen(skin.Build()), kScreen);
    skin.Damage("remove CHAR_KEYBOARD_BITMAP");
    EXPECT_EQ(GuessScreen(skin.Build()), std::nullopt);
}

TEST(Check, SaysWhereTheSourceNamesTheKey) {
    DamagedSkin skin;
    skin.Damage("renumber CHAR_LAYOUT_STRUCT 61 63");
    const SourcePlaces places{{{BoardKind::Portrait, 63}, {"my.toml", 12}}};
    const auto remarks = Check(skin.Build(), kScreen, &places);
    ASSERT_EQ(remarks.size(), 1u);
    EXPECT_EQ(FormatRemark(remarks[0], "a.tlk").find("my.toml:12: portrait, key 63: "), 0u);
}

TEST(Check, StopsReadingOversizedLayouts) {
    DamagedSkin skin;
    Bytes& layout = skin.Data("CHAR_LAYOUT_STRUCT");
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
