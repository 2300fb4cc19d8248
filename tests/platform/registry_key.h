// SPDX-License-Identifier: MIT
// A key that is open during the test.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

using WideString = std::basic_string<WCHAR>;
using Bytes = std::vector<BYTE>;

class TestKey {
public:
    // Creates the key if it is missing.
    explicit TestKey(LPCWSTR path, HKEY root = HKEY_LOCAL_MACHINE, REGSAM access = KEY_ALL_ACCESS) {
        EXPECT_EQ(RegCreateKeyExW(root, path, 0, nullptr, 0, access, nullptr, &m_key, nullptr),
                  ERROR_SUCCESS);
    }
    TestKey(const TestKey&) = delete;
    TestKey& operator=(const TestKey&) = delete;
    ~TestKey() { RegCloseKey(m_key); }
    operator HKEY() const { return m_key; }

    // Stores bytes that are not followed by a null, which desktop Windows would take for the text's end.
    LONG Set(LPCWSTR name, DWORD type, Bytes data) const {
        const auto size = static_cast<DWORD>(data.size());
        data.insert(data.end(), {'#', '#', '#'});
        return RegSetValueExW(m_key, name, 0, type, data.data(), size);
    }
    LONG SetText(LPCWSTR name, const WideString& text) const {
        return RegSetValueExW(m_key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                              static_cast<DWORD>((text.size() + 1) * sizeof(WCHAR)));
    }
    LONG SetNumber(LPCWSTR name, DWORD number) const {
        return RegSetValueExW(m_key, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number),
                              sizeof(number));
    }

    // Type and bytes; a test failure if there is no such value.
    std::pair<DWORD, Bytes> Get(LPCWSTR name) const {
        DWORD type = 0;
        DWORD size = 0;
        EXPECT_EQ(RegQueryValueExW(m_key, name, nullptr, &type, nullptr, &size), ERROR_SUCCESS);
        Bytes data(size);
        EXPECT_EQ(RegQueryValueExW(m_key, name, nullptr, &type, data.data(), &size), ERROR_SUCCESS);
        return {type, data};
    }
    WideString GetText(LPCWSTR name) const {
        const Bytes data = Get(name).second;
        WideString text(reinterpret_cast<const WCHAR*>(data.data()), data.size() / sizeof(WCHAR));
        return text.substr(0, text.find(WCHAR()));
    }
    DWORD GetNumber(LPCWSTR name) const {
        DWORD number = 0;
        DWORD size = sizeof(number);
        EXPECT_EQ(RegQueryValueExW(m_key, name, nullptr, nullptr, reinterpret_cast<BYTE*>(&number), &size),
                  ERROR_SUCCESS);
        return number;
    }

private:
    HKEY m_key = nullptr;
};
