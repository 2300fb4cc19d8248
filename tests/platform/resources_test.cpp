// SPDX-License-Identifier: MIT
#include "test_ids.h"

#include <test_support.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using WideString = std::basic_string<WCHAR>;

class Resources : public testing::Test {
protected:
    void SetUp() override {
        test::CopyToDevice(TEST_RESOURCES, "Windows/resources.dll");
        m_module = LoadLibraryW(TEXT("\\windows\\resources.dll"));
        ASSERT_NE(m_module, nullptr);
    }
    void TearDown() override { EXPECT_TRUE(FreeLibrary(m_module)); }

    std::string Read(LPCWSTR name, LPCWSTR type) {
        const HRSRC resource = FindResourceW(m_module, name, type);
        if (!resource) return "none " + std::to_string(GetLastError());
        const auto* bytes = static_cast<const char*>(LoadResource(m_module, resource));
        EXPECT_NE(bytes, nullptr);
        return {bytes, SizeofResource(m_module, resource)};
    }

    WideString ReadString(UINT id, int characters) {
        WideString text(20, TEXT('#'));
        const int length = LoadStringW(m_module, id, text.data(), characters);
        if (length == 0) return {};  // the buffer is emptied or unchanged
        EXPECT_EQ(text[static_cast<std::size_t>(length)], WCHAR());
        EXPECT_EQ(text.find_last_not_of(TEXT('#')), static_cast<std::size_t>(length));
        return text.substr(0, static_cast<std::size_t>(length));
    }

    HMODULE m_module = nullptr;
};

TEST_F(Resources, AreFoundByNameIgnoringCase) {
    EXPECT_EQ(Read(TEXT("MixedCase_Name"), TEXT("RC_DATA")), "\x01\x02\x03");
    EXPECT_EQ(Read(TEXT("MIXEDcase_nAME"), TEXT("rc_data")), "\x01\x02\x03");
    EXPECT_EQ(Read(TEXT("other"), TEXT("RC_DATA")), "other");
    EXPECT_EQ(Read(TEXT("empty"), TEXT("RC_DATA")), "");
}

TEST_F(Resources, AreFoundByNumber) {
    EXPECT_EQ(Read(MAKEINTRESOURCEW(ID_NUMBERED), MAKEINTRESOURCEW(300)), "numbered");
    EXPECT_EQ(Read(TEXT("#7"), TEXT("#300")), "numbered");
}

TEST_F(Resources, ReportWhatIsMissing) {
    const std::string noType = "none " + std::to_string(ERROR_RESOURCE_TYPE_NOT_FOUND);
    const std::string noName = "none " + std::to_string(ERROR_RESOURCE_NAME_NOT_FOUND);
    // The numeric standard type is not the type with this name.
    EXPECT_EQ(Read(TEXT("other"), MAKEINTRESOURCEW(10)), noType);
    EXPECT_EQ(Read(TEXT("absent"), TEXT("RC_DATA")), noName);
    EXPECT_EQ(Read(TEXT(""), TEXT("RC_DATA")), noName);
    EXPECT_EQ(Read(TEXT("#8"), TEXT("#300")), noName);
}

TEST_F(Resources, StringsComeFromTheirBlock) {
    EXPECT_EQ(ReadString(ID_FIRST_STRING, 20), TEXT("first"));
    EXPECT_EQ(ReadString(ID_LAST_OF_BLOCK, 20), TEXT("last of its block"));
    EXPECT_EQ(ReadString(ID_FIRST_OF_BLOCK, 20), TEXT("first of its block"));
    EXPECT_EQ(ReadString(ID_ABSENT_STRING, 20), TEXT(""));
    EXPECT_EQ(ReadString(1, 20), TEXT(""));
}

TEST_F(Resources, StringsAreCutToTheBuffer) {
    EXPECT_EQ(ReadString(ID_FIRST_STRING, 6), TEXT("first"));
    EXPECT_EQ(ReadString(ID_FIRST_STRING, 5), TEXT("firs"));
    EXPECT_EQ(ReadString(ID_FIRST_STRING, 1), TEXT(""));
}

}  // namespace
