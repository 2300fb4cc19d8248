// SPDX-License-Identifier: MIT
// What this layer's loader guarantees beyond the platform: checked handles, read-only images, code beside the
// library file.
#include <host_control.h>
#include <skin_builder.h>
#include <test_support.h>

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>

#include "framework/handles.h"

namespace {

std::string Skin(const std::string& bytes) { return test::SkinBuilder().Data("content", bytes).Build(); }

std::string Content(HMODULE module) {
    const HRSRC resource = FindResourceW(module, u"content", u"RC_DATA");
    const auto* bytes = static_cast<const char*>(LoadResource(module, resource));
    return bytes ? std::string(bytes, SizeofResource(module, resource)) : "none";
}

DWORD LoadError(LPCWSTR path) { return CModuleOwner(LoadLibraryW(path)) ? ERROR_SUCCESS : GetLastError(); }

std::u16string FileName(HMODULE module, DWORD characters = 400) {
    std::u16string path(400, u'#');
    const DWORD length = GetModuleFileNameW(module, path.data(), characters);
    return std::u16string(path.c_str()) + (length == characters ? u"+" : u"");
}

TEST(Modules, AreOnePerFileAndCounted) {
    test::WriteDeviceFile("Windows/a.tlk", Skin("old"));
    const HMODULE module = LoadLibraryW(u"\\windows\\a.tlk");
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(LoadLibraryW(u"A.TLK"), module);
    EXPECT_EQ(FileName(module), u"\\windows\\a.tlk");
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(Content(module), "old");
    EXPECT_EQ(host::CountHandles().modules, 1);
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_FALSE(FreeLibrary(module));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_HANDLE));
    EXPECT_EQ(FindResourceW(module, u"content", u"RC_DATA"), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_HANDLE));
}

TEST(Modules, KeepTheirImageWhateverHappensToTheFile) {
    test::WriteDeviceFile("Windows/a.tlk", Skin("old"));
    const HMODULE module = LoadLibraryW(u"a.tlk");
    EXPECT_FALSE(DeleteFileW(u"\\windows\\a.tlk"));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ACCESS_DENIED));
    test::WriteDeviceFile("Windows/a.tlk", "");
    EXPECT_EQ(Content(module), "old");
    test::WriteDeviceFile("Windows/a.tlk", Skin("new"));
    EXPECT_EQ(LoadLibraryW(u"a.tlk"), module) << "still the same module";
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(Content(module), "old");
    EXPECT_TRUE(FreeLibrary(module));
    const HMODULE renewed = LoadLibraryW(u"a.tlk");
    EXPECT_EQ(Content(renewed), "new");
    EXPECT_TRUE(FreeLibrary(renewed));
    EXPECT_TRUE(DeleteFileW(u"\\windows\\a.tlk"));
}

TEST(Modules, ReportWhyTheyDoNotLoad) {
    test::WriteDeviceFile("Windows/text.dll", "This is no library.");
    test::WriteDeviceFile("Windows/empty.dll", "");
    std::filesystem::create_directories(test::DeviceFolder() / "Windows/folder.dll");
    for (const LPCWSTR path : {u"text", u"empty", u"folder.dll"})
        EXPECT_EQ(LoadError(path), static_cast<DWORD>(ERROR_BAD_EXE_FORMAT));
    // After a dot no extension is added.
    for (const LPCWSTR path : {u"absent.tlk", u"", LPCWSTR{}, u"text."})
        EXPECT_EQ(LoadError(path), static_cast<DWORD>(ERROR_MOD_NOT_FOUND));
}

TEST(Modules, ATooLongFileNameFillsTheBuffer) {
    test::WriteDeviceFile("Windows/b.dll", Skin(""));
    const HMODULE module = LoadLibraryW(u"b");
    EXPECT_EQ(FileName(module), u"\\Windows\\b.dll");
    EXPECT_EQ(FileName(module, 15), u"\\Windows\\b.dll");
    EXPECT_EQ(FileName(module, 14), u"\\Windows\\b.dl+");
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
    EXPECT_EQ(FileName(nullptr, 14).substr(0, 1), u"#");
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_HANDLE));
    FreeLibrary(module);
}

TEST(Modules, ResourceHandlesBelongToTheirModule) {
    test::WriteDeviceFile("Windows/a.tlk", Skin("a"));
    test::WriteDeviceFile("Windows/b.tlk", Skin("b"));
    const HMODULE a = LoadLibraryW(u"a.tlk");
    const HMODULE b = LoadLibraryW(u"b.tlk");
    const HRSRC resource = FindResourceW(a, u"content", u"RC_DATA");
    const auto inside = reinterpret_cast<HRSRC>(reinterpret_cast<std::uintptr_t>(resource) + 4);
    for (const HRSRC bad : {FindResourceW(b, u"content", u"RC_DATA"), inside, HRSRC(nullptr)}) {
        SetLastError(0);
        EXPECT_EQ(LoadResource(a, bad), nullptr);
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_HANDLE));
        EXPECT_EQ(SizeofResource(a, bad), 0u);
    }
    EXPECT_EQ(LoadResource(nullptr, resource), nullptr);
    FreeLibrary(a);
    EXPECT_EQ(LoadResource(a, resource), nullptr);
    FreeLibrary(b);
}

TEST(Modules, ExportsAreTheLibrarysOwn) {
    test::WriteDeviceFile("Windows/server.dll", Skin(""));
    test::CopyToDevice(TEST_SERVER, "Windows/server.dll.so");
    const HMODULE module = LoadLibraryW(u"server");
    ASSERT_NE(module, nullptr);
    EXPECT_NE(GetProcAddress(module, "DllGetClassObject"), nullptr);
    for (const char* name : {"Absent", "FindFirstFileW", "malloc", ""}) {
        EXPECT_EQ(GetProcAddress(module, name), nullptr) << name;
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_PROC_NOT_FOUND));
    }
    EXPECT_EQ(GetProcAddress(module, reinterpret_cast<LPCSTR>(1)), nullptr);
    FreeLibrary(module);
}

TEST(Modules, CodeThatCannotBeLoadedIsReported) {
    test::WriteDeviceFile("Windows/server.dll", Skin(""));
    test::WriteDeviceFile("Windows/server.dll.so", "This is no code.");
    EXPECT_EQ(LoadError(u"server"), static_cast<DWORD>(ERROR_MOD_NOT_FOUND));
    const std::vector<std::string> reports = test::TakeReports();
    ASSERT_EQ(reports.size(), 1u);
    EXPECT_NE(reports[0].find("server.dll.so: cannot be loaded"), std::string::npos) << reports[0];
}

}  // namespace
