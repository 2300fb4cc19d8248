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

    // The text without its null; "?" if there is none.
    static std::basic_string<WCHAR> Text(const std::vector<BYTE>& block, LPCWSTR path) {
        void* text = nullptr;
        UINT length = 0;
        if (!VerQueryValueW(block.data(), path, &text, &length)) return TEXT("?");
        const std::basic_string<WCHAR> value = static_cast<const WCHAR*>(text);
        EXPECT_EQ(length, value.size() + 1);
        return value;
    }
};

// The words at the path; none if there is nothing.
template <typename Word>
std::vector<Word> Words(const std::vector<BYTE>& block, LPCWSTR path) {
    void* value = nullptr;
    UINT size = 0;
    if (!VerQueryValueW(block.data(), path, &value, &size)) return {};
    const auto* words = static_cast<const Word*>(value);
    return {words, words + size / sizeof(Word)};
}

TEST_F(VersionInfo, RootIsTheFixedPartAndTranslationsAreLanguageAndCodePage) {
    const std::vector<BYTE> block = ReadBlock();
    EXPECT_EQ(Words<DWORD>(block, TEXT("\\")),
              (std::vector<DWORD>{0xFEEF04BD, 0x10000, 0x10002, 0x30004, 0x50006, 0x70008, 0x3F, 0, 4, 2, 0,
                                  0, 0}));
    EXPECT_EQ(Words<WORD>(block, TEXT("\\VarFileInfo\\Translation")),
              (std::vector<WORD>{0x409, 0x4B0, 0x407, 0x4E4}));
}

TEST_F(VersionInfo, StringsAreFoundByPathIgnoringCase) {
    const std::vector<BYTE> block = ReadBlock();
    const std::pair<LPCWSTR, LPCWSTR> texts[] = {
        {TEXT("\\StringFileInfo\\040904b0\\FileDescription"), TEXT("Odd")},
        {TEXT("\\StringFileInfo\\040904b0\\FileVersion"), TEXT("1, 2, 3, 4")},
        {TEXT("\\StringFileInfo\\040904b0\\Comments"), TEXT("")},
        {TEXT("\\stringfileinfo\\040904B0\\ORIGINALFILENAME"), TEXT("test_version.dll")},
        {TEXT("\\StringFileInfo\\040704e4\\FileDescription"), TEXT("Zweite Sprache")},
        {TEXT("\\StringFileInfo\\040904b0\\CompanyName"), TEXT("?")},
        {TEXT("\\StringFileInfo\\040904b0\\File"), TEXT("?")},
        {TEXT("\\StringFileInfo\\040704b0\\FileVersion"), TEXT("?")},
        {TEXT("\\FileVersion"), TEXT("?")},
        {TEXT("\\StringFileInfo\\040904b0\\FileVersion\\More"), TEXT("?")},
    };
    for (const auto& [path, text] : texts) {
        EXPECT_EQ(Text(block, path), text);
    }
}

TEST_F(VersionInfo, FilesWithoutOneHaveSizeZero) {
    ASSERT_NE(ReadBlock().size(), 0u);
    test::WriteDeviceFile("Windows/test.dll", "replaced");
    for (LPCWSTR path : {kLibrary, TEXT("\\Windows\\absent.dll"), TEXT("\\absent\\test.dll")}) {
        DWORD ignored = 0;
        BYTE block[16];
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(GetFileVersionInfoSizeW(path, &ignored), 0u);
        EXPECT_NE(GetLastError(), static_cast<DWORD>(ERROR_SUCCESS));
        EXPECT_FALSE(GetFileVersionInfoW(path, 0, sizeof block, block));
    }
}

}  // namespace
