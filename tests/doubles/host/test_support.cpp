// SPDX-License-Identifier: MIT
#include "test_support.h"

#include <host_control.h>

#include <gtest/gtest.h>
#include <objbase.h>

#include <cstdlib>
#include <utility>

#include "device_side.h"
#include "differences.h"

namespace test {
namespace {

namespace fs = std::filesystem;

fs::path g_folder;
std::vector<std::string> g_reports;

void Start() {
    host::DeviceOptions options;
    options.folder = g_folder;
    options.durable = false;  // the simulator's tests use the default
    options.report = [](const std::string& line) { g_reports.push_back(line); };
    host::StartDevice(options);
}

class DeviceForEachTest : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override {
        std::string folder = (fs::temp_directory_path() / "device-XXXXXX").string();
        ASSERT_NE(mkdtemp(folder.data()), nullptr);
        g_folder = folder;
        g_reports.clear();
        Start();
    }

    void OnTestEnd(const testing::TestInfo&) override {
        ExpectNoHandleLeft();
        host::StopDevice();
        for (const std::string& report : g_reports)
            ADD_FAILURE() << "unread report: " << report;
        std::error_code error;
        fs::remove_all(g_folder, error);
        EXPECT_FALSE(error) << g_folder << ": " << error.message();
    }

    // Image lists do not count, as their users never destroy them.
    static void ExpectNoHandleLeft() {
        const host::LiveHandles left = host::CountHandles();
        EXPECT_EQ(left.bitmaps, 0) << "bitmaps left";
        EXPECT_EQ(left.dcs, 0) << "device contexts left";
        EXPECT_EQ(left.fonts, 0) << "fonts left";
        EXPECT_EQ(left.brushes, 0) << "brushes left";
        EXPECT_EQ(left.windows, 0) << "windows left";
        EXPECT_EQ(left.modules, 0) << "modules left";
        EXPECT_EQ(left.keys, 0) << "registry keys left";
        EXPECT_EQ(left.finds, 0) << "file searches left";
    }
};

}  // namespace

bool IsHandheld() { return true; }

const fs::path& DeviceFolder() { return g_folder; }

LPCWSTR DeviceDrive() { return u""; }

void MakeRoomFor(const fs::path&) {}

void CopyToDevice(const fs::path& hostFile, const fs::path& path) {
    fs::create_directories((g_folder / path).parent_path());
    // Written under another name first: a loaded library must not change.
    const fs::path copy = (g_folder / path).string() + ".copy";
    fs::copy_file(hostFile, copy, fs::copy_options::overwrite_existing);
    fs::rename(copy, g_folder / path);
}

void CopyLibraryToDevice(const fs::path& resources, const fs::path& code, const fs::path& path) {
    CopyToDevice(resources, path);
    CopyToDevice(code, path.string() + ".so");
}

void MakeReadOnly(const fs::path& path) {
    constexpr fs::perms write = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    fs::permissions(g_folder / path, write, fs::perm_options::remove);
}

void SetScreenSize(LONG width, LONG height) { host::SetScreenSize({width, height}); }

void ChangeSystemColor(int index, COLORREF color) { ASSERT_TRUE(host::SetSystemColor(index, color)); }

void RestartDevice() {
    host::StopDevice();
    Start();
}

void LetComSeeClasses() {}

void UnloadUnusedLibraries() { CoFreeUnusedLibraries(); }

std::vector<std::string> TakeReports() { return std::exchange(g_reports, {}); }

}  // namespace test

int main(int argumentCount, char** arguments) {
    testing::InitGoogleTest(&argumentCount, arguments);
    // The framework owns the listener.
    testing::UnitTest::GetInstance()->listeners().Append(new test::DeviceForEachTest);
    return RUN_ALL_TESTS();
}
