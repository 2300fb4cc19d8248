// SPDX-License-Identifier: MIT
#include "settings/module_version.h"

#include <gtest/gtest.h>

#include "test_support.h"

namespace {

constexpr LPCWSTR kLibrary = TEXT("\\Windows\\tolka.dll");
constexpr const char* kFile = "Windows/Tolka.DLL";

class ModuleVersion : public testing::Test {
protected:
    void SetUp() override { test::CopyToDevice(TOLKA_RESOURCES, kFile); }
    WideString Description() const { return m_version.QueryString(TEXT("FileDescription")); }

    CModuleVersion m_version;
};

TEST_F(ModuleVersion, ReadsTheLibrarysOwnResource) {
    EXPECT_TRUE(Description().empty()) << "nothing is read yet";
    ASSERT_TRUE(m_version.Load(kLibrary));
    const auto* fields = &m_version.dwSignature;
    EXPECT_EQ(std::vector<DWORD>(fields, fields + 13),
              (std::vector<DWORD>{0xFEEF04BD, 0x10000, 1, 12, 1, 12, 0x3F, 0, 4, 2, 0, 0, 0}));
    const std::pair<LPCWSTR, LPCWSTR> texts[] = {
        {TEXT("FileDescription"), TEXT("Tolka 7")},    {TEXT("FileVersion"), TEXT("0, 1, 0, 12")},
        {TEXT("ProductVersion"), TEXT("0, 1, 0, 12")}, {TEXT("InternalName"), TEXT("Tolka")},
        {TEXT("OriginalFilename"), TEXT("Tolka.dll")}, {TEXT("Comments"), TEXT("")}};
    for (const auto& [name, text] : texts)
        EXPECT_EQ(m_version.QueryString(name), text);
    for (LPCWSTR named : {TEXT("CompanyName"), TEXT("LegalCopyright"), TEXT("ProductName")})
        EXPECT_FALSE(m_version.QueryString(named).empty());
}

// Without a translation the code page is 1252, and the language the one read before. Without a block the
// previous one is kept.
TEST_F(ModuleVersion, FallsBackToTheDefaultCodePageAndToTheBlockBefore) {
    ASSERT_TRUE(m_version.Load(kLibrary));
    test::CopyToDevice(UNTRANSLATED, kFile);
    ASSERT_TRUE(m_version.Load(kLibrary));
    EXPECT_EQ(Description(), TEXT("Untranslated"));
    EXPECT_TRUE(m_version.QueryString(TEXT("FileVersion")).empty());
    test::WriteDeviceFile(kFile, "no library at all");
    EXPECT_FALSE(m_version.Load(kLibrary));
    EXPECT_EQ(m_version.dwSignature, 0u);
    EXPECT_EQ(Description(), TEXT("Untranslated"));
}

TEST_F(ModuleVersion, TheSignatureDecidesTheResult) {
    std::string library = test::ReadDeviceFile(kFile);
    const std::size_t signature = library.rfind("\xBD\x04\xEF\xFE");
    ASSERT_NE(signature, std::string::npos);
    library[signature] = 'X';
    test::WriteDeviceFile(kFile, library);
    EXPECT_FALSE(m_version.Load(kLibrary));
    EXPECT_EQ(Description(), TEXT("Tolka 7")) << "the strings are there all the same";
}

}  // namespace
