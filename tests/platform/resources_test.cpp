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

TEST_F(Resources, AreFoundByNumberAndByNameIgnoringCase) {
    const std::string noType = "none " + std::to_string(ERROR_RESOURCE_TYPE_NOT_FOUND);
    const std::string noName = "none " + std::to_string(ERROR_RESOURCE_NAME_NOT_FOUND);
    const struct {
        LPCWSTR name, type;
        std::string content;
    } cases[] = {
        {TEXT("MixedCase_Name"), TEXT("RC_DATA"), "\x01\x02\x03"},
        {TEXT("MIXEDcase_nAME"), TEXT("rc_data"), "\x01\x02\x03"},
        {TEXT("other"), TEXT("RC_DATA"), "other"},
        {TEXT("empty"), TEXT("RC_DATA"), ""},
        {MAKEINTRESOURCEW(ID_NUMBERED), MAKEINTRESOURCEW(300), "numbered"},
        {TEXT("other"), MAKEINTRESOURCEW(10), noType},  // not the type with this name
        {TEXT("absent"), TEXT("RC_DATA"), noName},
        {TEXT(""), TEXT("RC_DATA"), noName},
        {MAKEINTRESOURCEW(ID_NUMBERED + 1), MAKEINTRESOURCEW(300), noName},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Read(c.name, c.type), c.content);
}

TEST_F(Resources, StringsComeFromTheirBlockAndAreCutToTheBuffer) {
    const struct {
        UINT id;
        int characters;
        WideString text;
    } cases[] = {{ID_FIRST_STRING, 20, TEXT("first")},
                 {ID_LAST_OF_BLOCK, 20, TEXT("last of its block")},
                 {ID_FIRST_OF_BLOCK, 20, TEXT("first of its block")},
                 {ID_ABSENT_STRING, 20, {}},
                 {1, 20, {}},
                 {ID_FIRST_STRING, 6, TEXT("first")},
                 {ID_FIRST_STRING, 5, TEXT("firs")},
                 {ID_FIRST_STRING, 1, {}}};
    for (const auto& c : cases)
        EXPECT_EQ(ReadString(c.id, c.characters), c.text) << c.id << ", " << c.characters;
}

}  // namespace
