// SPDX-License-Identifier: MIT
#include "test_support.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>

#include "device_side.h"
#include "differences.h"
#include "framework/handles.h"
#include "windows/test_system.h"

namespace test {
namespace {

namespace fs = std::filesystem;

const fs::path g_folder(kDeviceDrive);

// Marks the tests' drive, so that no other is ever emptied.
constexpr WCHAR kMark[] = L"tests-empty-this-drive";

bool ClaimDrive() {
    const std::wstring drive = kDeviceDrive;
    const std::wstring mark = drive + kMark;
    if (GetFileAttributesW(mark.c_str()) == INVALID_FILE_ATTRIBUTES) {
        WIN32_FIND_DATAW entry;
        const CFindOwner find(FindFirstFileW((drive + L"*").c_str(), &entry));
        bool isEmpty = true;
        for (BOOL more = !!find; more; more = FindNextFileW(find.Get(), &entry))
            isEmpty = isEmpty && entry.cFileName[0] == L'.';
        if (!isEmpty) return false;
        std::ofstream{fs::path(mark)};
    }
    return SetCurrentDirectoryW(kDeviceDrive) != FALSE;
}

// Also deletes read-only files. Does not use the standard library, whose directory iterator fails here.
void EmptyFolder(const std::wstring& folder) {
    WIN32_FIND_DATAW entry;
    const CFindOwner find(FindFirstFileW((folder + L"*").c_str(), &entry));
    if (!find) return;
    do {
        const std::wstring name = entry.cFileName;
        if (name == L"." || name == L".." || name == kMark) continue;
        const std::wstring path = folder + name;
        if (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
            EmptyFolder(path + L"\\");
            RemoveDirectoryW(path.c_str());
        } else {
            SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
            DeleteFileW(path.c_str());
        }
    } while (FindNextFileW(find.Get(), &entry));
}

class DeviceForEachTest : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override {
        EmptyFolder(kDeviceDrive);
        EmptyRegistry();
        SetCurrentDirectoryW(kDeviceDrive);
        // Modules named without a folder are those of the device.
        SetDllDirectoryW((std::wstring(kDeviceDrive) + L"Windows").c_str());
        SetScreenSize(240, 320);
    }

    void OnTestEnd(const testing::TestInfo&) override {
        RestoreSystemColors();
        EmptyRegistry();
    }
};

}  // namespace

bool IsHandheld() { return false; }

const fs::path& DeviceFolder() { return g_folder; }

LPCWSTR DeviceDrive() {
    static const std::wstring drive(kDeviceDrive, 2);
    return drive.c_str();
}

bool IsAskedByProgram() { return true; }  // the platform's libraries have their own allocators

// A loaded file cannot be overwritten, but it can be renamed.
void MakeRoomFor(const fs::path& path) {
    static int count = 0;
    const fs::path old = g_folder / "old";
    CreateDirectoryW(old.c_str(), nullptr);
    MoveFileW((g_folder / path).c_str(), (old / std::to_wstring(++count)).c_str());
}

void CopyToDevice(const fs::path& hostFile, const fs::path& path) {
    fs::create_directories((g_folder / path).parent_path());
    MakeRoomFor(path);
    ASSERT_TRUE(CopyFileW(hostFile.c_str(), (g_folder / path).c_str(), FALSE))
        << hostFile << ": error " << GetLastError();
}

void CopyLibraryToDevice(const fs::path&, const fs::path& code, const fs::path& path) {
    CopyToDevice(code, path);
}

void MakeReadOnly(const fs::path& path) {
    ASSERT_TRUE(SetFileAttributesW((g_folder / path).c_str(), FILE_ATTRIBUTE_READONLY));
}

// A restart only keeps the files and the registry, which are kept here anyway.
void RestartDevice() {}

// With free threading COM would wait ten minutes; the first call marks unused libraries, the second one
// unloads them.
void UnloadUnusedLibraries() {
    for (int time = 0; time < 2; ++time)
        CoFreeUnusedLibrariesEx(0, 0);
}

std::vector<std::string> TakeReports() { return {}; }

}  // namespace test

int main(int argumentCount, char** arguments) {
    testing::InitGoogleTest(&argumentCount, arguments);
    if (!test::ClaimDrive() || !test::PrepareRegistry()) {
        std::fputs("These tests run on drive T:, an empty folder; scripts/test-windows provides it.\n",
                   stderr);
        return 2;
    }
    // Free threading, as on the handheld: in an apartment, COM would return a proxy.
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    for (const HMODULE module : {GetModuleHandleW(nullptr), GetModuleHandleW(L"aygshell.dll")})
        if (module) test::RedirectScreenSize(module);
    // The framework owns the listener.
    testing::UnitTest::GetInstance()->listeners().Append(new test::DeviceForEachTest);
    return RUN_ALL_TESTS();
}
