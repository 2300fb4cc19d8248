// SPDX-License-Identifier: MIT
// Damaged library files. The undamaged one is from SkinBuilder: its one section, at 0x200 in the file, is the
// resource directory.
#include "modules/pe_image.h"

#include <skin_builder.h>

#include <gtest/gtest.h>

#include <cstring>
#include <ios>
#include <utility>

namespace {

using namespace host;

constexpr std::size_t kSection = 0x200;
constexpr std::size_t kSectionHeader = 0x40 + 24 + 240;
constexpr DWORD kHighBit = 0x80000000;

std::string GoodFile() { return test::SkinBuilder().Data("first", "12345").Data("second", "abc").Build(); }

std::string Patch(const std::string& file, std::size_t offset, DWORD value) {
    const std::string bytes(reinterpret_cast<const char*>(&value), sizeof(value));
    return file.substr(0, offset) + bytes + file.substr(offset + sizeof(value));
}

// Copies the file to memory of exactly its size, so that a sanitizer notices a read beyond it.
std::string Find(const std::string& file, LPCWSTR name = u"FIRST") {
    const std::vector<BYTE> bytes(file.begin(), file.end());
    const std::optional<PeImage> image = PeImage::Parse(bytes);
    if (!image) return "no library";
    const Resource* resource =
        image->Find(ResourceId::FromArgument(u"rc_data"), ResourceId::FromArgument(name));
    if (!resource) return "no resource";
    if (!resource->data) return "no data";
    return {resource->data->begin(), resource->data->end()};
}

TEST(PeImage, FindsResourcesOfBothWidths) {
    const std::string file = GoodFile();
    EXPECT_EQ(Find(file), "12345");
    EXPECT_EQ(Find(file, u"Second"), "abc");
    // 32 bits: the directories are 16 bytes earlier.
    std::string narrow = file;
    const std::size_t optional = 0x40 + 24;
    narrow.replace(optional + 92, 132, file.substr(optional + 108, 132));
    EXPECT_EQ(Find(Patch(narrow, optional, 0x10B)), "12345");
}

TEST(PeImage, RefusesDamagedHeaders) {
    const std::string file = GoodFile();
    EXPECT_EQ(Find(""), "no library");
    EXPECT_EQ(Find("MZ"), "no library");
    for (const auto& [offset, value] : std::vector<std::pair<std::size_t, DWORD>>{
             {0, 0},                                       // no signature
             {0x3C, 0x7FFFFFFF},                           // header beyond the end
             {0x3C, static_cast<DWORD>(file.size() - 3)},  // header cut off
             {0x40, 0},                                    // no PE signature
             {0x46, 97},                                   // too many sections
             {0x54, 0xFFFF},                               // optional header beyond the end
             {0x54, 100},                                  // optional header without directories
             {0x58, 0x107},                                // neither 32 nor 64 bit
             {kSectionHeader + 16, 0x10000000},            // section beyond the end
             {kSectionHeader + 20, 0xFFFFFFF0}})           // section wraps around
        EXPECT_EQ(Find(Patch(file, offset, value)), "no library") << std::hex << offset;
}

TEST(PeImage, ATruncatedFileIsNoLibrary) {
    const std::string file = GoodFile();
    for (std::size_t size = 0; size < file.size(); ++size)
        EXPECT_EQ(Find(file.substr(0, size)), "no library") << size;
}

// The section: table of types with an entry at 16, table of names at 24 with entries at 40 and 48, name of
// the type at 136.
TEST(PeImage, OmitsUnreadableResources) {
    const std::string file = GoodFile();
    for (const auto& [offset, value] : std::vector<std::pair<std::size_t, DWORD>>{
             {kSection + 16, kHighBit | 0x7FFFFFF0},  // name of the type outside
             {kSection + 20, kHighBit | 0x7FFFFFF0},  // table of names outside
             {kSection + 20, 136},                    // data in place of a table
             {kSection + 136, 0xFFFF},                // name of the type too long
             {kSection + 40, kHighBit | 0xFFFFF},     // name of the resource outside
             {kSection + 40, 0x10000},                // number of more than 16 bits
             {kSection + 44, kHighBit | 0xFFFFF},     // languages outside
             {kSection + 44, 8}})                     // data in place of languages
        EXPECT_EQ(Find(Patch(file, offset, value)), "no resource") << std::hex << offset << ' ' << value;
    // More types than exist: those that exist count.
    EXPECT_EQ(Find(Patch(file, kSection + 12, 0xFFFF0001)), "12345");
    // The other resource stays readable.
    EXPECT_EQ(Find(Patch(file, kSection + 44, kHighBit | 0xFFFFF), u"second"), "abc");
    EXPECT_EQ(Find(test::SkinBuilder().Data("first", "12345").PointOutside("first").Build()), "no data");
}

// Every table refers to the first one: without a limit the walk would not end.
TEST(PeImage, EndsOnTablesThatReferToThemselves) {
    std::string section(0x8000, '\0');
    section[14] = static_cast<char>(0xFE);
    section[15] = 0x0F;  // 4094 numbered entries
    for (std::size_t entry = 0; entry < 4094; ++entry) {
        const DWORD target = kHighBit;
        std::memcpy(section.data() + 16 + entry * 8 + 4, &target, sizeof(target));
    }
    const std::string good = GoodFile();
    std::string file = Patch(good.substr(0, kSection) + section, kSectionHeader + 16, 0x8000);
    file = Patch(file, 0x40 + 24 + 112 + 2 * 8 + 4, 0x8000);
    EXPECT_EQ(Find(file), "no resource");
}

}  // namespace
