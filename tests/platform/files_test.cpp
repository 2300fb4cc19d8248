// SPDX-License-Identifier: MIT
#include <differences.h>
#include <test_support.h>

#include <gtest/gtest.h>

namespace {

using Names = std::vector<std::basic_string<WCHAR>>;

Names Find(LPCWSTR pattern) {
    Names names;
    WIN32_FIND_DATAW data;
    const HANDLE find = FindFirstFileW(pattern, &data);
    if (find == INVALID_HANDLE_VALUE) return names;
    do {
        names.emplace_back(data.cFileName);
    } while (FindNextFileW(find, &data));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_NO_MORE_FILES));
    EXPECT_TRUE(FindClose(find));
    return names;
}

DWORD FindError(LPCWSTR pattern) {
    WIN32_FIND_DATAW data;
    const HANDLE find = FindFirstFileW(pattern, &data);
    if (find == INVALID_HANDLE_VALUE) return GetLastError();
    FindClose(find);
    return ERROR_SUCCESS;
}

TEST(Files, AreFoundByExtensionInOrder) {
    for (const char* name : {"b.tlk", "C.TLK", "a.Tlk", "a.tlk2", "atlk", "tlk", ".tlk", "d.tlk.bak"})
        test::WriteDeviceFile(std::filesystem::path("Windows") / name, "");
    EXPECT_EQ(Find(TEXT("\\windows\\*.tlk")),
              test::Either(test::Difference::ShortNames,
                           Names{TEXT(".tlk"), TEXT("a.Tlk"), TEXT("b.tlk"), TEXT("C.TLK")},
                           Names{TEXT(".tlk"), TEXT("a.Tlk"), TEXT("a.tlk2"), TEXT("b.tlk"), TEXT("C.TLK")}));
    EXPECT_EQ(Find(TEXT("/WINDOWS/?t?k")), (Names{TEXT(".tlk"), TEXT("atlk")}));
    EXPECT_EQ(Find(TEXT("windows\\*t*k")).size(), test::Either(test::Difference::ShortNames, 7u, 8u));
    EXPECT_EQ(Find(TEXT("\\windows\\*.*")).size(), test::Either(test::Difference::FolderItself, 8u, 10u));
}

TEST(Files, WithoutWildcardsTestExistence) {
    test::WriteDeviceFile(u8"Program Files/Fancy/\u00C4.tlk", "12345");
    WIN32_FIND_DATAW data;
    const HANDLE find = FindFirstFileW(TEXT("\\program files\\FANCY\\\u00E4.TLK"), &data);
    ASSERT_NE(find, INVALID_HANDLE_VALUE);
    EXPECT_EQ(lstrcmpW(data.cFileName, TEXT("\u00C4.tlk")), 0);
    EXPECT_EQ(data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY, 0u);
    EXPECT_FALSE(FindNextFileW(find, &data));
    EXPECT_TRUE(FindClose(find));
    for (const WCHAR* folder : {TEXT("\\Program Files"), TEXT("\\Program*")}) {
        const HANDLE findFolder = FindFirstFileW(folder, &data);
        ASSERT_NE(findFolder, INVALID_HANDLE_VALUE);
        EXPECT_NE(data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY, 0u);
        EXPECT_TRUE(FindClose(findFolder));
    }
    const std::pair<LPCWSTR, int> errors[] = {
        {TEXT("\\Program Files\\Fancy"), ERROR_SUCCESS},
        {TEXT("\\Program Files\\Fancy\\b.tlk"), ERROR_FILE_NOT_FOUND},
        {TEXT("\\Program Files\\Fancy\\"), ERROR_FILE_NOT_FOUND},
        {TEXT("\\Program Files\\*.tlk"), ERROR_FILE_NOT_FOUND},
        {TEXT("\\Absent\\*.tlk"), ERROR_PATH_NOT_FOUND},
    };
    for (const auto& [pattern, error] : errors)
        EXPECT_EQ(FindError(pattern), static_cast<DWORD>(error)) << testing::PrintToString(pattern);
}

TEST(Files, SearchHandlesGoStale) {
    test::WriteDeviceFile("a", "");
    WIN32_FIND_DATAW data;
    const HANDLE find = FindFirstFileW(TEXT("\\a"), &data);
    EXPECT_TRUE(FindClose(find));
    for (const HANDLE bad : {HANDLE(nullptr), INVALID_HANDLE_VALUE}) {
        EXPECT_FALSE(FindClose(bad));
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_HANDLE));
    }
    if (!test::ActsAsHandheld(test::Difference::StaleSearches)) return;
    EXPECT_FALSE(FindNextFileW(find, &data));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_HANDLE));
    EXPECT_FALSE(FindClose(find));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_HANDLE));
}

TEST(Files, AreDeletedUnlessForbidden) {
    test::WriteDeviceFile("Windows/a.tlk", "");
    test::WriteDeviceFile("Windows/fixed.tlk", "");
    test::MakeReadOnly("Windows/fixed.tlk");
    const std::pair<LPCWSTR, int> errors[] = {{TEXT("\\windows\\A.tlk"), ERROR_SUCCESS},
                                              {TEXT("\\windows\\a.tlk"), ERROR_FILE_NOT_FOUND},
                                              {TEXT("\\absent\\a.tlk"), ERROR_PATH_NOT_FOUND},
                                              {TEXT("\\windows\\fixed.tlk"), ERROR_ACCESS_DENIED},
                                              {TEXT("\\windows"), ERROR_ACCESS_DENIED}};
    for (const auto& [path, error] : errors) {
        const DWORD result = DeleteFileW(path) ? ERROR_SUCCESS : GetLastError();
        EXPECT_EQ(result, static_cast<DWORD>(error)) << testing::PrintToString(path);
    }
    EXPECT_EQ(FindError(TEXT("\\windows\\fixed.tlk")), static_cast<DWORD>(ERROR_SUCCESS));
}

}  // namespace
