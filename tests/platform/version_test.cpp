// SPDX-License-Identifier: MIT
#include <windows.h>

#include <test_support.h>

#include <gtest/gtest.h>

namespace {

constexpr LPCWSTR kLibrary = TEXT("\\Windows\\test.dll");

class VersionInfo : public testing::Test {
protected:
    void SetUp() override { test::CopyToDevice(TEST_VERSION, "Windows/test.dll"); }

    static std::vector<BYTE> ReadBlock() {
        DWORD ignored = 1;
        std::vector<BYTE> block(GetFileVersionInfoSizeW(kLibrary, &ignored));
        EXPECT_EQ(ignored, 0u);
        EXPECT_TRUE(GetFileVersionInfoW(kLibrary, 0, static_cast<DWORD>(block.size()), block.data()));
        return block;
    }

    // The text, without its null; "?" when there is none.
    static std::basic_string<WCHAR> Text(const std::vector<BYTE>& block, LPCWSTR path) {
        void* text = nullptr;
        UINT length = 0;
        if (!VerQueryValueW(block.data(), path, &text, &length)) return TEXT("?");
        const std::basic_string<WCHAR> value = static_cast<const WCHAR*>(text);
        EXPECT_EQ(length, value.size() + 1);
        return value;
    }
};

TEST_F(VersionInfo, RootIsTheFixedPart) {
    const std::vector<BYTE> block = ReadBlock();
    void* value = nullptr;
    UINT size = 0;
    ASSERT_TRUE(VerQueryValueW(block.data(), TEXT("\\"), &value, &size));
    ASSERT_EQ(size, sizeof(VS_FIXEDFILEINFO));
    const auto* fixed = static_cast<const VS_FIXEDFILEINFO*>(value);
    EXPECT_EQ(fixed->dwSignature, 0xFEEF04BDu);
    EXPECT_EQ(fixed->dwStrucVersion, 0x10000u);
    EXPECT_EQ(fixed->dwFileVersionMS, 0x10002u);
    EXPECT_EQ(fixed->dwFileVersionLS, 0x30004u);
    EXPECT_EQ(fixed->dwProductVersionMS, 0x50006u);
    EXPECT_EQ(fixed->dwProductVersionLS, 0x70008u);
    EXPECT_EQ(fixed->dwFileFlagsMask, 0x3Fu);
    EXPECT_EQ(fixed->dwFileFlags, 0u);
    EXPECT_EQ(fixed->dwFileOS, 4u);
    EXPECT_EQ(fixed->dwFileType, 2u);
    EXPECT_EQ(fixed->dwFileSubtype, 0u);
    EXPECT_EQ(fixed->dwFileDateMS, 0u);
    EXPECT_EQ(fixed->dwFileDateLS, 0u);
}

TEST_F(VersionInfo, TranslationsAreLanguageAndCodePage) {
    const std::vector<BYTE> block = ReadBlock();
    void* value = nullptr;
    UINT size = 0;
    ASSERT_TRUE(VerQueryValueW(block.data(), TEXT("\\VarFileInfo\\Translation"), &value, &size));
    const auto* words = static_cast<const WORD*>(value);
    EXPECT_EQ(std::vector<WORD>(words, words + size / sizeof(WORD)),
              (std::vector<WORD>{0x409, 0x4B0, 0x407, 0x4E4}));
}

TEST_F(VersionInfo, StringsAreFoundByPathIgnoringCase) {
    const std::vector<BYTE> block = ReadBlock();
    EXPECT_EQ(Text(block, TEXT("\\StringFileInfo\\040904b0\\FileDescription")), TEXT("Odd"));
    EXPECT_EQ(Text(block, TEXT("\\StringFileInfo\\040904b0\\FileVersion")), TEXT("1, 2, 3, 4"));
    EXPECT_EQ(Text(block, TEXT("\\StringFileInfo\\040904b0\\Comments")), TEXT(""));
    EXPECT_EQ(Text(block, TEXT("\\stringfileinfo\\040904B0\\ORIGINALFILENAME")), TEXT("test_version.dll"));
    EXPECT_EQ(Text(block, TEXT("\\StringFileInfo\\040704e4\\FileDescription")), TEXT("Zweite Sprache"));
    for (LPCWSTR absent :
         {TEXT("\\StringFileInfo\\040904b0\\CompanyName"), TEXT("\\StringFileInfo\\040904b0\\File"),
          TEXT("\\StringFileInfo\\040704b0\\FileVersion"), TEXT("\\FileVersion"),
          TEXT("\\StringFileInfo\\040904b0\\FileVersion\\More")}) {
        EXPECT_EQ(Text(block, absent), TEXT("?"));
    }
}

TEST_F(VersionInfo, FilesWithoutOneHaveSizeZero) {
    test::WriteDeviceFile("Windows/text.dll", "no library at all");
    for (LPCWSTR path :
         {TEXT("\\Windows\\text.dll"), TEXT("\\Windows\\absent.dll"), TEXT("\\absent\\test.dll")}) {
        DWORD ignored = 0;
        BYTE block[16];
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(GetFileVersionInfoSizeW(path, &ignored), 0u);
        EXPECT_NE(GetLastError(), static_cast<DWORD>(ERROR_SUCCESS));
        EXPECT_FALSE(GetFileVersionInfoW(path, 0, sizeof block, block));
    }
}

TEST_F(VersionInfo, IsThatOfTheFileNow) {
    ASSERT_NE(ReadBlock().size(), 0u);
    test::WriteDeviceFile("Windows/test.dll", "replaced");
    DWORD ignored = 0;
    EXPECT_EQ(GetFileVersionInfoSizeW(kLibrary, &ignored), 0u);
}

}  // namespace
