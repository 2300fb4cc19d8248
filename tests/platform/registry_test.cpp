// SPDX-License-Identifier: MIT
#include "registry_key.h"

#include <differences.h>
#include <test_support.h>

#include <utility>

namespace {

LONG Open(HKEY key, LPCWSTR path, REGSAM access, HKEY& result) {
    return RegOpenKeyExW(key, path, 0, access, &result);
}

LONG Create(HKEY key, LPCWSTR path, HKEY& result, DWORD* disposition = nullptr) {
    return RegCreateKeyExW(key, path, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &result, disposition);
}

std::vector<WideString> Subkeys(HKEY key) {
    std::vector<WideString> names;
    for (DWORD i = 0;; ++i) {
        WCHAR name[256];
        DWORD characters = 256;
        const LONG result = RegEnumKeyExW(key, i, name, &characters, nullptr, nullptr, nullptr, nullptr);
        if (result != ERROR_SUCCESS) {
            EXPECT_EQ(result, ERROR_NO_MORE_ITEMS);
            return names;
        }
        names.emplace_back(name, characters);
    }
}

TEST(Registry, KeysAreCreatedWithTheirParentsAndFoundIgnoringCase) {
    HKEY key = nullptr;
    DWORD disposition = 0;
    EXPECT_EQ(Open(HKEY_LOCAL_MACHINE, TEXT("Software\\Test\\7.0"), KEY_READ, key), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(key, nullptr);
    for (const auto& [path, expected] : {std::pair(TEXT("Software\\Test\\7.0"), REG_CREATED_NEW_KEY),
                                         {TEXT("SOFTWARE\\test\\7.0"), REG_OPENED_EXISTING_KEY}}) {
        ASSERT_EQ(Create(HKEY_LOCAL_MACHINE, path, key, &disposition), ERROR_SUCCESS);
        EXPECT_EQ(disposition, static_cast<DWORD>(expected));
        RegCloseKey(key);
    }
    EXPECT_EQ(Open(HKEY_CURRENT_USER, TEXT("Software\\Test"), KEY_READ, key), ERROR_FILE_NOT_FOUND);
}

TEST(Registry, ValuesKeepTypeAndBytes) {
    const TestKey key(TEXT("Test"));
    const std::vector<std::pair<DWORD, Bytes>> values = {{REG_SZ, {}},
                                                         {REG_SZ, {'a', 0, 'b'}},
                                                         {REG_DWORD, {1, 2, 3}},
                                                         {REG_MULTI_SZ, {0, 0, 0, 0}},
                                                         {REG_BINARY, Bytes(100000, 0x5A)},
                                                         {0x12345678, {0xFF}}};
    for (const auto& value : values) {
        ASSERT_EQ(key.Set(TEXT("Value"), value.first, value.second), ERROR_SUCCESS);
        EXPECT_EQ(key.Get(TEXT("VALUE")), value);
    }
    EXPECT_EQ(key.SetText(nullptr, TEXT("default")), ERROR_SUCCESS);
    EXPECT_EQ(key.GetText(TEXT("")), TEXT("default"));
}

TEST(Registry, QueriesNeverExceedTheBuffer) {
    const TestKey key(TEXT("Test"));
    ASSERT_EQ(key.Set(TEXT("Value"), REG_BINARY, {1, 2, 3, 4, 5}), ERROR_SUCCESS);
    Bytes buffer(8, 0xEE);
    DWORD type = 0;
    DWORD size = 4;
    EXPECT_EQ(RegQueryValueExW(key, TEXT("Value"), nullptr, &type, buffer.data(), &size), ERROR_MORE_DATA);
    EXPECT_EQ(size, 5u);
    EXPECT_EQ(type, static_cast<DWORD>(REG_BINARY));
    EXPECT_EQ(buffer, Bytes(8, 0xEE));
    EXPECT_EQ(RegQueryValueExW(key, TEXT("Value"), nullptr, nullptr, buffer.data(), &size), ERROR_SUCCESS);
    EXPECT_EQ(buffer, (Bytes{1, 2, 3, 4, 5, 0xEE, 0xEE, 0xEE}));
    EXPECT_EQ(RegQueryValueExW(key, TEXT("Value"), nullptr, nullptr, nullptr, nullptr), ERROR_SUCCESS);
    EXPECT_EQ(RegQueryValueExW(key, TEXT("Value"), nullptr, nullptr, buffer.data(), nullptr),
              ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegQueryValueExW(key, TEXT("Absent"), nullptr, nullptr, nullptr, &size), ERROR_FILE_NOT_FOUND);
}

TEST(Registry, AKeyAllowsOnlyItsAccess) {
    {
        const TestKey key(TEXT("Test\\Sub"));
        key.SetNumber(TEXT("Value"), 1);
    }
    const TestKey reader(TEXT("Test\\Sub"), HKEY_LOCAL_MACHINE, KEY_READ);
    HKEY result = nullptr;
    EXPECT_EQ(reader.GetNumber(TEXT("Value")), 1u);
    EXPECT_EQ(reader.SetNumber(TEXT("Value"), 2), ERROR_ACCESS_DENIED);
    EXPECT_EQ(RegDeleteValueW(reader, TEXT("Value")), ERROR_ACCESS_DENIED);
    // Whether subkeys can be created does not depend on the handle.
    EXPECT_EQ(Create(reader, TEXT("New"), result), ERROR_SUCCESS);
    EXPECT_EQ(RegCloseKey(result), ERROR_SUCCESS);
    const TestKey writer(TEXT("Test\\Sub"), HKEY_LOCAL_MACHINE, KEY_WRITE);
    EXPECT_EQ(writer.SetNumber(TEXT("Value"), 2), ERROR_SUCCESS);
    EXPECT_EQ(RegQueryValueExW(writer, TEXT("Value"), nullptr, nullptr, nullptr, nullptr),
              ERROR_ACCESS_DENIED);
    EXPECT_EQ(RegQueryInfoKeyW(writer, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                               nullptr, nullptr, nullptr),
              test::Either(test::Difference::QueryRights, ERROR_ACCESS_DENIED, ERROR_SUCCESS));
}

TEST(Registry, HandlesGoStale) {
    HKEY key = nullptr;
    ASSERT_EQ(Create(HKEY_LOCAL_MACHINE, TEXT("Test"), key), ERROR_SUCCESS);
    EXPECT_EQ(RegCloseKey(key), ERROR_SUCCESS);
    for (const HKEY bad : {key, HKEY(nullptr)}) {
        HKEY result = nullptr;
        EXPECT_EQ(RegCloseKey(bad), ERROR_INVALID_HANDLE);
        EXPECT_EQ(RegDeleteValueW(bad, TEXT("Value")), ERROR_INVALID_HANDLE);
        EXPECT_EQ(Open(bad, TEXT("Test"), KEY_READ, result), ERROR_INVALID_HANDLE);
    }
    EXPECT_EQ(RegCloseKey(HKEY_LOCAL_MACHINE), ERROR_SUCCESS);
}

TEST(Registry, DeletingAKeyDeletesItsSubkeys) {
    const TestKey parent(TEXT("Test"));
    const TestKey below(TEXT("Test\\Sub\\Below"));
    const TestKey beside(TEXT("Test\\Sub2"));
    EXPECT_EQ(RegDeleteKeyW(parent, TEXT("absent")), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegDeleteKeyW(parent, nullptr), ERROR_INVALID_PARAMETER);
    const LONG deleted = RegDeleteKeyW(parent, TEXT("sub"));
    EXPECT_EQ(deleted, test::Either(test::Difference::KeyDeletion, ERROR_SUCCESS, ERROR_ACCESS_DENIED));
    if (deleted != ERROR_SUCCESS) {
        EXPECT_EQ(RegDeleteKeyW(parent, TEXT("sub\\below")), ERROR_SUCCESS);
        EXPECT_EQ(RegDeleteKeyW(parent, TEXT("sub")), ERROR_SUCCESS);
    }
    EXPECT_EQ(Subkeys(parent), (std::vector<WideString>{TEXT("Sub2")}));
    EXPECT_EQ(below.SetNumber(TEXT("Value"), 1), ERROR_KEY_DELETED);
    HKEY result = nullptr;
    EXPECT_EQ(Open(below, nullptr, KEY_READ, result), ERROR_KEY_DELETED);
    // A key of the same name is another key.
    const TestKey again(TEXT("Test\\Sub\\Below"));
    EXPECT_EQ(below.SetNumber(TEXT("Value"), 1), ERROR_KEY_DELETED);
    EXPECT_EQ(again.SetNumber(TEXT("Value"), 1), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteValueW(again, TEXT("VALUE")), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteValueW(again, TEXT("Value")), ERROR_FILE_NOT_FOUND);
}

TEST(Registry, KeysAreEnumeratedInOrder) {
    const TestKey key(TEXT("Test"));
    for (const LPCWSTR name : {TEXT("b"), TEXT("Alpha"), TEXT("C")}) {
        TestKey(name, key);
    }
    key.SetText(TEXT("Value"), TEXT("text"));
    EXPECT_EQ(Subkeys(key), (std::vector<WideString>{TEXT("Alpha"), TEXT("b"), TEXT("C")}));
    WCHAR name[6] = {};
    DWORD characters = 5;
    EXPECT_EQ(RegEnumKeyExW(key, 0, name, &characters, nullptr, nullptr, nullptr, nullptr), ERROR_MORE_DATA);
    characters = 6;
    EXPECT_EQ(RegEnumKeyExW(key, 0, name, &characters, nullptr, nullptr, nullptr, nullptr), ERROR_SUCCESS);
    EXPECT_EQ(characters, 5u);
    DWORD subkeys = 0, longestSubkey = 0, values = 0, longestName = 0, longestValue = 0;
    EXPECT_EQ(RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &subkeys, &longestSubkey, nullptr, &values,
                               &longestName, &longestValue, nullptr, nullptr),
              ERROR_SUCCESS);
    EXPECT_EQ(std::vector<DWORD>({subkeys, longestSubkey, values, longestName, longestValue}),
              std::vector<DWORD>({3, 5, 1, 5, 10}));
}

TEST(Registry, NamesHaveLimits) {
    HKEY key = nullptr;
    const WideString longest(255, TEXT('k'));
    const TestKey made(longest.c_str());
    EXPECT_EQ(Subkeys(HKEY_LOCAL_MACHINE), (std::vector<WideString>{longest}));
    EXPECT_EQ(Create(HKEY_LOCAL_MACHINE, (longest + TEXT("k")).c_str(), key),
              test::Either(test::Difference::KeyNameLength, ERROR_INVALID_PARAMETER, ERROR_SUCCESS));
    if (key) RegCloseKey(key);
}

TEST(Registry, OutlivesTheDevice) {
    const Bytes odd = {0xD8, 0x00, 0x00};
    {
        const TestKey key(TEXT("Test\\\u00C4 [x]"), HKEY_CURRENT_USER);
        key.Set(TEXT("a\"b\\c=;"), REG_SZ, odd);
        key.SetText(TEXT(""), TEXT("\\quoted\\ \"text\" \u20AC"));
        key.SetNumber(TEXT("number"), 0x89ABCDEF);
    }
    test::RestartDevice();
    const TestKey key(TEXT("test\\\u00E4 [X]"), HKEY_CURRENT_USER);
    EXPECT_EQ(key.Get(TEXT("a\"b\\c=;")), (std::pair<DWORD, Bytes>{REG_SZ, odd}));
    EXPECT_EQ(key.GetText(TEXT("")), TEXT("\\quoted\\ \"text\" \u20AC"));
    EXPECT_EQ(key.GetNumber(TEXT("number")), 0x89ABCDEFu);
}

}  // namespace
