// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "bitmap.h"
#include "errors.h"
#include "skin_module.h"

namespace tlk {
namespace {

Bytes SmallModule(Processor processor = Processor::X64) {
    return WriteModule({{ResourceKind::Bitmap, "zebra", Bytes{1, 2, 3}},
                        {ResourceKind::Bitmap, "Ant", Bytes(5000, 9)},
                        {ResourceKind::Data, "SWIPE_ONLY", {}},
                        {ResourceKind::Data, "caps_rect", Bytes(16, 7)}},
                       processor);
}

// The differences between processors: the machine, the kind of optional header and the place of its
// directories.
struct Expected {
    Processor processor;
    unsigned machine;
    unsigned magic;
    std::size_t directories;
};

TEST(Module, HeadersDescribeALibraryOfResourcesOnlyForEachProcessor) {
    for (const Expected& expected :
         {Expected{Processor::X64, 0x8664, 0x20B, 112}, Expected{Processor::X86, 0x14C, 0x10B, 96},
          Expected{Processor::Arm, 0x1C0, 0x10B, 96}}) {
        SCOPED_TRACE(expected.machine);
        const Bytes file = SmallModule(expected.processor);
        const std::size_t header = *Get32(file, 0x3C);
        EXPECT_EQ(Get16(file, 0), 0x5A4D);
        ASSERT_EQ(Get32(file, header), 0x00004550u);
        EXPECT_EQ(Get16(file, header + 4), expected.machine);
        EXPECT_EQ(Get32(file, header + 8), 0u) << "a time stamp";
        EXPECT_EQ(*Get16(file, header + 22) & 0x2002, 0x2002) << "an image that is a library";
        const std::size_t optional = header + 24;
        EXPECT_EQ(Get16(file, optional), expected.magic);
        EXPECT_EQ(Get32(file, optional + 16), 0u) << "an entry point";
        EXPECT_EQ(Get32(file, optional + expected.directories - 4), 16u) << "directories";
        const std::size_t section = optional + *Get16(file, header + 20);
        const std::uint32_t size = *Get32(file, section + 8);
        const std::uint32_t address = *Get32(file, section + 12);
        EXPECT_EQ(Get32(file, optional + expected.directories + 16), address);
        EXPECT_EQ(Get32(file, optional + expected.directories + 20), size);
        EXPECT_EQ(*Get32(file, optional + 56) % 0x1000, 0u);
        EXPECT_GE(*Get32(file, optional + 56), address + size);
        EXPECT_EQ(*Get32(file, section + 20) + *Get32(file, section + 16), file.size());
        EXPECT_GE(*Get32(file, section + 16), size);
        EXPECT_EQ(Module::Parse(file).Find(ResourceKind::Bitmap, "ant")->size(), 5000u);
    }
}

TEST(Module, NamesAreInTheOrderOfLookups) {
    const Module module = Module::Parse(SmallModule());
    std::vector<std::string> names;
    for (const auto& entry : module.Entries())
        names.push_back(entry.type + " " + entry.name);
    EXPECT_EQ(names,
              (std::vector<std::string>{"RC_DATA CAPS_RECT", "RC_DATA SWIPE_ONLY", "#2 ANT", "#2 ZEBRA"}));
    EXPECT_EQ(module.Find(ResourceKind::Bitmap, "ant")->size(), 5000u);
    EXPECT_EQ(module.Find(ResourceKind::Bitmap, "Zebra")->back(), 3);
    EXPECT_EQ(module.Find(ResourceKind::Data, "SWIPE_ONLY")->size(), 0u);
    EXPECT_FALSE(module.Find(ResourceKind::Data, "ANT"));
}

// Unlike devices, the host loads skins for any processor.
TEST(Module, LoadsForAnyProcessor) {
    const Bytes picture = EncodePicture(Picture({240, 80}, Color{}));
    for (const auto processor : {Processor::Arm, Processor::X86, Processor::X64}) {
        const Bytes file = WriteModule({{ResourceKind::Bitmap, "char_keyboard_bitmap", picture}}, processor);
        EXPECT_TRUE(ReadSkin(Module::Parse(file)).engine->Upright().TakesSkin());
    }
}

// Only checks that reading ends; sanitizers check that it stays inside the bytes.
TEST(Module, DamagedFilesAreRefusedOrReadWithinTheirBytes) {
    const Bytes whole = SmallModule();
    for (std::size_t size = 0; size < 0x200 + 0x200; ++size)
        EXPECT_THROW(Module::Parse(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size))),
                     FileError);
    for (std::size_t place = 0; place < 0x200 + 0x180; ++place) {
        for (unsigned value : {0x00U, 0x7FU, 0x80U, 0xFFU}) {
            Bytes damaged = whole;
            damaged[place] = static_cast<std::uint8_t>(value);
            try {
                const Module module = Module::Parse(std::move(damaged));
                for (const auto& entry : module.Entries())
                    EXPECT_LE(entry.data.size(), whole.size());
            } catch (const FileError&) {
            }
        }
    }
}

}  // namespace
}  // namespace tlk
