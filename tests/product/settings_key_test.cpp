// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "store/settings_key.h"

namespace {

constexpr WCHAR kPath[] = TEXT("Software\\Store\\Test");
constexpr WCHAR kName[] = TEXT("Value");

std::string Bytes(const WideString& text) {
    return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(WCHAR)};
}

CSettingsKey Open(SettingsAccess access) { return CSettingsKey(HKEY_CURRENT_USER, kPath, access); }

// Something other than nulls follows the bytes: a null there counts as the string's end on desktop Windows.
void StoreRaw(DWORD type, std::string bytes) {
    const std::size_t size = bytes.size();
    bytes += "##";
    CRegistryKeyOwner key;
    RegCreateKeyExW(HKEY_CURRENT_USER, kPath, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, key.Receive(), nullptr);
    ASSERT_EQ(RegSetValueExW(key.Get(), kName, 0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                             static_cast<DWORD>(size)),
              ERROR_SUCCESS);
}

std::pair<DWORD, std::string> LoadRaw() {
    CRegistryKeyOwner key;
    RegOpenKeyExW(HKEY_CURRENT_USER, kPath, 0, KEY_READ, key.Receive());
    char bytes[16384];
    DWORD size = sizeof bytes;
    DWORD type = 0;
    if (RegQueryValueExW(key.Get(), kName, nullptr, &type, reinterpret_cast<BYTE*>(bytes), &size)) return {};
    return {type, std::string(bytes, size)};
}

TEST(SettingsStore, OnlyCreatingMakesTheKey) {
    for (const SettingsAccess access : {SettingsAccess::Read, SettingsAccess::Write}) {
        const CSettingsKey key = Open(access);
        EXPECT_FALSE(key.IsOpen());
        key.WriteDword(kName, 5);
        key.WriteString(kName, TEXT("text"));
        key.WriteStringList(kName, {TEXT("text")});
        DWORD number = 7;
        StoredText text = TEXT("as it was");
        WideStringList list = {TEXT("as it was")};
        EXPECT_FALSE(key.ReadDword(kName, number));
        EXPECT_FALSE(key.ReadString(kName, text));
        EXPECT_TRUE(key.ReadStringList(kName, list)) << "as one that holds none";
        EXPECT_EQ(number, 7u);
        EXPECT_EQ(WideString(text), TEXT("as it was"));
        EXPECT_EQ(list, WideStringList{TEXT("as it was")});
    }
    EXPECT_TRUE(Open(SettingsAccess::Create).IsOpen());
    EXPECT_TRUE(Open(SettingsAccess::Read).IsOpen());
    CSettingsKey key = Open(SettingsAccess::Write);
    key.Close();
    EXPECT_FALSE(key.IsOpen());
    key.WriteDword(kName, 5);
    EXPECT_EQ(LoadRaw().first, 0u);
}

TEST(SettingsStore, ReadAccessWritesNothing) {
    Open(SettingsAccess::Create).WriteDword(kName, 1);
    Open(SettingsAccess::Read).WriteDword(kName, 2);
    EXPECT_EQ(LoadRaw().second, std::string("\1\0\0\0", 4));
    Open(SettingsAccess::Write).WriteDword(kName, 3);
    EXPECT_EQ(LoadRaw().second, std::string("\3\0\0\0", 4));
}

TEST(SettingsStore, ValuesAreWrittenByteForByte) {
    const CSettingsKey key = Open(SettingsAccess::Create);
    key.WriteDword(kName, 0x12345678);
    EXPECT_EQ(LoadRaw(), std::pair(DWORD{REG_DWORD}, std::string("\x78\x56\x34\x12")));
    key.WriteString(kName, TEXT("ab"));
    EXPECT_EQ(LoadRaw(), std::pair(DWORD{REG_SZ}, std::string("a\0b\0\0\0", 6)));
    key.WriteString(kName, TEXT(""));
    EXPECT_EQ(LoadRaw(), std::pair(DWORD{REG_SZ}, std::string(2, '\0')));
    key.WriteStringList(kName, {TEXT("a"), TEXT("bc")});
    EXPECT_EQ(LoadRaw(), std::pair(DWORD{REG_MULTI_SZ}, std::string("a\0\0\0b\0c\0\0\0\0\0\0\0", 14)))
        << "two nulls after that of the last string";
    key.WriteStringList(kName, {});
    EXPECT_EQ(LoadRaw(), std::pair(DWORD{REG_MULTI_SZ}, std::string(4, '\0')));
}

TEST(SettingsStore, NumbersAreFourBytesOfAnyType) {
    const struct {
        DWORD type;
        std::string bytes;
        bool isRead;
        DWORD value;
    } cases[] = {
        {REG_DWORD, std::string("\xFE\xFF\xFF\xFF"), true, 0xFFFFFFFE},
        {REG_SZ, std::string("1\0\0\0", 4), true, 0x31},
        {REG_DWORD, "12345", false, 7},
        {REG_BINARY, "\x09", true, 9},  // fewer bytes replace as many
    };
    for (const auto& c : cases) {
        StoreRaw(c.type, c.bytes);
        DWORD value = 7;
        EXPECT_EQ(Open(SettingsAccess::Read).ReadDword(kName, value), c.isRead) << c.bytes;
        EXPECT_EQ(value, c.value) << c.bytes;
    }
}

TEST(SettingsStore, StringsEndAtANullOrTheEndOfTheData) {
    const WideString longest(259, 'x');
    const struct {
        std::string bytes;
        bool isRead;
        WideString text;
    } cases[] = {
        {Bytes(TEXT("ab")) + std::string(2, '\0'), true, TEXT("ab")},
        {Bytes(TEXT("ab")), true, TEXT("ab")},
        {Bytes(TEXT("ab")) + "c", true, TEXT("ab")},
        {Bytes(TEXT("ab")) + std::string(2, '\0') + Bytes(TEXT("cd")), true, TEXT("ab")},
        {"", true, {}},
        {Bytes(longest) + std::string(2, '\0'), true, longest},
        {Bytes(longest + TEXT("y")), true, longest + TEXT("y")},  // 260 characters without a null
        {Bytes(longest + TEXT("y")) + std::string(2, '\0'), false, TEXT("as it was")},
    };
    for (const auto& c : cases) {
        StoreRaw(REG_SZ, c.bytes);
        StoredText text = TEXT("as it was");
        EXPECT_EQ(Open(SettingsAccess::Read).ReadString(kName, text), c.isRead) << c.bytes.size();
        EXPECT_EQ(WideString(text), c.text) << c.bytes.size();
    }
}

TEST(SettingsStore, ListsReadBackAsWritten) {
    const WideStringList lists[] = {
        {}, {TEXT("one")}, {TEXT("\\card\\my skin.tlk"), TEXT("x"), WideString(1000, 'y')}};
    for (const WideStringList& list : lists) {
        Open(SettingsAccess::Create).WriteStringList(kName, list);
        WideStringList back;
        EXPECT_TRUE(Open(SettingsAccess::Read).ReadStringList(kName, back));
        EXPECT_EQ(back, list);
    }
    WideStringList back;
    StoreRaw(REG_MULTI_SZ, std::string(kUserSkinsBytes, 'x'));
    EXPECT_TRUE(Open(SettingsAccess::Read).ReadStringList(kName, back));
    EXPECT_EQ(back.size(), 1u);
    StoreRaw(REG_MULTI_SZ, std::string(kUserSkinsBytes + 1, 'x'));
    EXPECT_TRUE(Open(SettingsAccess::Read).ReadStringList(kName, back));
    EXPECT_EQ(back.size(), 1u) << "one that is too long holds none";
}

TEST(SettingsStore, TheSettingsKeyIsTheSystems) {
    CSettingsKey(SettingsAccess::Create).WriteDword(kSwipeValue, 1);
    CRegistryKeyOwner key;
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, TEXT("Software\\Tolka\\7.0"), 0, KEY_READ, key.Receive()),
              ERROR_SUCCESS);
    DWORD value = 0;
    DWORD size = sizeof value;
    EXPECT_EQ(
        RegQueryValueExW(key.Get(), TEXT("Swipe"), nullptr, nullptr, reinterpret_cast<BYTE*>(&value), &size),
        ERROR_SUCCESS);
    EXPECT_EQ(value, 1u);
}

}  // namespace
