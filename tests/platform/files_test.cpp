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

DWORD DeleteError(LPCWSTR path) { return DeleteFileW(path) ? ERROR_SUCCESS : GetLastError(); }

TEST(Files, AreFoundByExtensionInOrder) {
    for (const char* name : {"b.tlk", "C.TLK", "a.Tlk", "a.tlk2", "atlk", "tlk", ".tlk", "d.tlk.bak"}) {
        test::WriteDeviceFile(std::filesystem::path("Windows") / name, "");
    }
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
    EXPECT_EQ(FindError(TEXT("\\Program Files\\Fancy")), static_cast<DWORD>(ERROR_SUCCESS));
    EXPECT_EQ(FindError(TEXT("\\Program Files\\Fancy\\b.tlk")), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(FindError(TEXT("\\Program Files\\Fancy\\")), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(FindError(TEXT("\\Absent\\*.tlk")), static_cast<DWORD>(ERROR_PATH_NOT_FOUND));
    EXPECT_EQ(FindError(TEXT("\\Program Files\\*.tlk")), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
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
    EXPECT_EQ(DeleteError(TEXT("\\windows\\A.tlk")), static_cast<DWORD>(ERROR_SUCCESS));
    EXPECT_EQ(DeleteError(TEXT("\\windows\\a.tlk")), static_cast<DWORD>(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(DeleteError(TEXT("\\absent\\a.tlk")), static_cast<DWORD>(ERROR_PATH_NOT_FOUND));
    EXPECT_EQ(DeleteError(TEXT("\\windows\\fixed.tlk")), static_cast<DWORD>(ERROR_ACCESS_DENIED));
    EXPECT_EQ(DeleteError(TEXT("\\windows")), static_cast<DWORD>(ERROR_ACCESS_DENIED));
    EXPECT_EQ(FindError(TEXT("\\windows\\fixed.tlk")), static_cast<DWORD>(ERROR_SUCCESS));
}

}  // namespace
