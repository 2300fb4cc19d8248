// SPDX-License-Identifier: MIT
// Device paths on the host: case, links, and that nothing outside the folder can be reached.
#include <host_control.h>
#include <test_support.h>

#include <gtest/gtest.h>

#include <filesystem>

#include "framework/handles.h"

namespace {

namespace fs = std::filesystem;

// Relative to the device's folder; "none" for no path.
std::string Resolve(const std::u16string& devicePath) {
    const fs::path path = host::HostPath(devicePath);
    if (path.empty()) return "none";
    return path.lexically_relative(fs::canonical(test::DeviceFolder())).string();
}

std::vector<std::u16string> Names(LPCWSTR pattern) {
    std::vector<std::u16string> names;
    WIN32_FIND_DATAW data;
    const CFindOwner find(FindFirstFileW(pattern, &data));
    for (BOOL found = !!find; found; found = FindNextFileW(find.Get(), &data))
        names.emplace_back(data.cFileName);
    return names;
}

TEST(DevicePaths, FollowTheSpellingOfTheFolders) {
    test::WriteDeviceFile("Windows/Sub/File.txt", "");
    EXPECT_EQ(Resolve(u"\\WINDOWS\\sub\\file.TXT"), "Windows/Sub/File.txt");
    EXPECT_EQ(Resolve(u"windows//sub\\.\\file.txt"), "Windows/Sub/File.txt");
    EXPECT_EQ(Resolve(u"\\windows\\New.txt"), "Windows/New.txt");
    EXPECT_EQ(Resolve(u"\\windows\\absent\\New.txt"), "none");
    EXPECT_EQ(Resolve(u"\\windows\\sub\\file.txt\\below"), "none");
    EXPECT_EQ(Resolve(u"\\"), ".");
    EXPECT_EQ(Resolve(u"\\windows\\\xD800"), "none");
}

TEST(DevicePaths, AnExactMatchWins) {
    test::WriteDeviceFile("a.TLK", "1");
    test::WriteDeviceFile("A.tlk", "22");
    test::WriteDeviceFile("a.tlk", "333");
    EXPECT_EQ(Resolve(u"a.tlk"), "a.tlk");
    EXPECT_EQ(Resolve(u"a.TLK"), "a.TLK");
    EXPECT_EQ(Resolve(u"A.TLK"), "A.tlk") << "the first in byte order";
}

TEST(DevicePaths, NeverLeaveTheDevice) {
    const fs::path outside = test::DeviceFolder().string() + "-outside";
    fs::create_directories(outside / "Windows");
    test::WriteDeviceFile("Windows/inside.txt", "");
    const std::string sibling = outside.filename().string();
    EXPECT_EQ(Resolve(u"\\..\\..\\windows\\inside.txt"), "Windows/inside.txt");
    EXPECT_EQ(Resolve(u"..\\" + std::u16string(sibling.begin(), sibling.end())), sibling)
        << "a name at the root";

    fs::create_directory_symlink(outside, test::DeviceFolder() / "out");
    fs::create_symlink(outside / "absent", test::DeviceFolder() / "nowhere");
    fs::create_directory_symlink("Windows", test::DeviceFolder() / "in");
    EXPECT_EQ(Resolve(u"out"), "none");
    EXPECT_EQ(Resolve(u"out\\windows"), "none");
    EXPECT_EQ(Resolve(u"nowhere"), "none");
    EXPECT_EQ(Resolve(u"in\\INSIDE.txt"), "in/inside.txt");
    EXPECT_EQ(Names(u"\\*"), (std::vector<std::u16string>{u"in", u"Windows"}));
    EXPECT_FALSE(DeleteFileW(u"out"));
    EXPECT_TRUE(fs::exists(outside));
    fs::remove_all(outside);
}

TEST(DevicePaths, UnusableNamesAreNotListed) {
    test::WriteDeviceFile("good", "");
    test::WriteDeviceFile("bad\xFF", "");
    test::WriteDeviceFile("bad\\name", "");
    EXPECT_EQ(Names(u"\\*"), (std::vector<std::u16string>{u"good"}));
    EXPECT_EQ(Names(u"\\?ood"), (std::vector<std::u16string>{u"good"}));
}

}  // namespace
