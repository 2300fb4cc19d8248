// SPDX-License-Identifier: MIT
#include <windows.h>

#include <differences.h>
#include <registry_values.h>
#include <test_support.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

using test::NumberValue;
using test::RegistryValue;
using test::TextValue;
using WideString = std::basic_string<WCHAR>;

// A key that is open during the test; created if it is missing.
class TestKey {
public:
    explicit TestKey(LPCWSTR path, HKEY root = HKEY_LOCAL_MACHINE, REGSAM access = KEY_ALL_ACCESS) {
        EXPECT_EQ(RegCreateKeyExW(root, path, 0, nullptr, 0, access, nullptr, &m_key, nullptr),
                  ERROR_SUCCESS);
    }
    TestKey(const TestKey&) = delete;
    TestKey& operator=(const TestKey&) = delete;
    ~TestKey() { RegCloseKey(m_key); }
    operator HKEY() const { return m_key; }

    LONG Set(LPCWSTR name, const RegistryValue& value) const {
        return RegSetValueExW(m_key, name, 0, value.first, reinterpret_cast<const BYTE*>(value.second.data()),
                              static_cast<DWORD>(value.second.size()));
    }

private:
    HKEY m_key = nullptr;
};

RegistryValue Get(LPCWSTR path, LPCWSTR name, HKEY root = HKEY_LOCAL_MACHINE) {
    return test::ReadValue(root, path, name);
}

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
    const RegistryValue values[] = {{REG_SZ, ""},
                                    {REG_SZ, std::string("a\0b", 3)},
                                    {REG_DWORD, "\1\2\3"},
                                    {REG_MULTI_SZ, std::string(4, '\0')},
                                    {REG_BINARY, std::string(10000, '\x5A')},
                                    {0x12345678, "\xFF"},
                                    TextValue(TEXT("text"))};
    for (const LPCWSTR name : {TEXT("Value"), TEXT("")}) {
        for (const RegistryValue& value : values) {
            test::WriteValue(HKEY_LOCAL_MACHINE, TEXT("Test"), name, value);
            EXPECT_EQ(Get(TEXT("Test"), *name ? TEXT("VALUE") : nullptr), value);
        }
    }
}

TEST(Registry, QueriesNeverExceedTheBuffer) {
    const TestKey key(TEXT("Test"));
    ASSERT_EQ(key.Set(TEXT("Value"), {REG_BINARY, "12345"}), ERROR_SUCCESS);
    std::vector<BYTE> buffer(8, '#');
    DWORD type = 0;
    DWORD size = 4;
    EXPECT_EQ(RegQueryValueExW(key, TEXT("Value"), nullptr, &type, buffer.data(), &size), ERROR_MORE_DATA);
    EXPECT_EQ(size, 5u);
    EXPECT_EQ(type, static_cast<DWORD>(REG_BINARY));
    EXPECT_EQ(buffer, std::vector<BYTE>(8, '#'));
    EXPECT_EQ(RegQueryValueExW(key, TEXT("Value"), nullptr, nullptr, buffer.data(), &size), ERROR_SUCCESS);
    EXPECT_EQ(buffer, (std::vector<BYTE>{'1', '2', '3', '4', '5', '#', '#', '#'}));
    EXPECT_EQ(RegQueryValueExW(key, TEXT("Value"), nullptr, nullptr, nullptr, nullptr), ERROR_SUCCESS);
    EXPECT_EQ(RegQueryValueExW(key, TEXT("Value"), nullptr, nullptr, buffer.data(), nullptr),
              ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegQueryValueExW(key, TEXT("Absent"), nullptr, nullptr, nullptr, &size), ERROR_FILE_NOT_FOUND);
}

TEST(Registry, AKeyAllowsOnlyItsAccess) {
    test::WriteValue(HKEY_LOCAL_MACHINE, TEXT("Test\\Sub"), TEXT("Value"), NumberValue(1));
    const TestKey reader(TEXT("Test\\Sub"), HKEY_LOCAL_MACHINE, KEY_READ);
    HKEY result = nullptr;
    EXPECT_EQ(RegQueryValueExW(reader, TEXT("Value"), nullptr, nullptr, nullptr, nullptr), ERROR_SUCCESS);
    EXPECT_EQ(reader.Set(TEXT("Value"), NumberValue(2)), ERROR_ACCESS_DENIED);
    EXPECT_EQ(RegDeleteValueW(reader, TEXT("Value")), ERROR_ACCESS_DENIED);
    // Whether subkeys can be created does not depend on the handle.
    EXPECT_EQ(Create(reader, TEXT("New"), result), ERROR_SUCCESS);
    EXPECT_EQ(RegCloseKey(result), ERROR_SUCCESS);
    const TestKey writer(TEXT("Test\\Sub"), HKEY_LOCAL_MACHINE, KEY_WRITE);
    EXPECT_EQ(writer.Set(TEXT("Value"), NumberValue(2)), ERROR_SUCCESS);
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
    EXPECT_EQ(below.Set(TEXT("Value"), NumberValue(1)), ERROR_KEY_DELETED);
    HKEY result = nullptr;
    EXPECT_EQ(Open(below, nullptr, KEY_READ, result), ERROR_KEY_DELETED);
    // A key of the same name is another key.
    const TestKey again(TEXT("Test\\Sub\\Below"));
    EXPECT_EQ(below.Set(TEXT("Value"), NumberValue(1)), ERROR_KEY_DELETED);
    EXPECT_EQ(again.Set(TEXT("Value"), NumberValue(1)), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteValueW(again, TEXT("VALUE")), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteValueW(again, TEXT("Value")), ERROR_FILE_NOT_FOUND);
}

TEST(Registry, KeysAreEnumeratedInOrder) {
    const TestKey key(TEXT("Test"));
    for (const LPCWSTR name : {TEXT("b"), TEXT("Alpha"), TEXT("C")})
        TestKey(name, key);
    key.Set(TEXT("Value"), TextValue(TEXT("text")));
    EXPECT_EQ(Subkeys(key), (std::vector<WideString>{TEXT("Alpha"), TEXT("b"), TEXT("C")}));
    WCHAR name[6] = {};
    DWORD characters = 5;
    EXPECT_EQ(RegEnumKeyExW(key, 0, name, &characters, nullptr, nullptr, nullptr, nullptr), ERROR_MORE_DATA);
    characters = 6;
    EXPECT_EQ(RegEnumKeyExW(key, 0, name, &characters, nullptr, nullptr, nullptr, nullptr), ERROR_SUCCESS);
    EXPECT_EQ(characters, 5u);
    DWORD subkeys = 0, values = 0;
    EXPECT_EQ(RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &subkeys, nullptr, nullptr, &values, nullptr,
                               nullptr, nullptr, nullptr),
              ERROR_SUCCESS);
    EXPECT_EQ(subkeys, 3u);
    EXPECT_EQ(values, 1u);
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
    const std::pair<LPCWSTR, RegistryValue> values[] = {
        {TEXT("a\"b\\c=;"), {REG_SZ, std::string("\xD8\0\0", 3)}},
        {TEXT(""), TextValue(TEXT("\\quoted\\ \"text\" \u20AC"))},
        {TEXT("number"), NumberValue(0x89ABCDEF)},
    };
    for (const auto& [name, value] : values)
        test::WriteValue(HKEY_CURRENT_USER, TEXT("Test\\\u00C4 [x]"), name, value);
    test::RestartDevice();
    for (const auto& [name, value] : values)
        EXPECT_EQ(Get(TEXT("test\\\u00E4 [X]"), name, HKEY_CURRENT_USER), value);
}

}  // namespace
