// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "registry_values.h"
#include "store/settings_key.h"

namespace {

constexpr WCHAR kPath[] = TEXT("Software\\Store\\Test");
constexpr WCHAR kName[] = TEXT("Value");

using test::NumberValue;
using test::RegistryValue;
using test::TextBytes;
using test::TextValue;

CSettingsKey Open(SettingsAccess access) { return CSettingsKey(HKEY_CURRENT_USER, kPath, access); }

void StoreRaw(const RegistryValue& value) { test::WriteValue(HKEY_CURRENT_USER, kPath, kName, value); }
RegistryValue LoadRaw() { return test::ReadValue(HKEY_CURRENT_USER, kPath, kName); }

TEST(SettingsStore, OnlyCreateAccessCreatesTheKeyAndOnlyReadAccessWritesNothing) {
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
    Open(SettingsAccess::Create).WriteDword(kName, 1);
    Open(SettingsAccess::Read).WriteDword(kName, 2);
    EXPECT_EQ(LoadRaw(), NumberValue(1));
    CSettingsKey key = Open(SettingsAccess::Write);
    key.WriteDword(kName, 3);
    key.Close();
    EXPECT_FALSE(key.IsOpen());
    key.WriteDword(kName, 5);
    EXPECT_EQ(LoadRaw(), NumberValue(3));
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
        StoreRaw({c.type, c.bytes});
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
        {TextBytes(TEXT("ab")) + std::string(2, '\0'), true, TEXT("ab")},
        {TextBytes(TEXT("ab")), true, TEXT("ab")},
        {TextBytes(TEXT("ab")) + "c", true, TEXT("ab")},
        {TextBytes(TEXT("ab")) + std::string(2, '\0') + TextBytes(TEXT("cd")), true, TEXT("ab")},
        {"", true, {}},
        {TextBytes(longest) + std::string(2, '\0'), true, longest},
        {TextBytes(longest + TEXT("y")), true, longest + TEXT("y")},  // 260 characters without a null
        {TextBytes(longest + TEXT("y")) + std::string(2, '\0'), false, TEXT("as it was")},
    };
    for (const auto& c : cases) {
        StoreRaw({REG_SZ, c.bytes});
        StoredText text = TEXT("as it was");
        EXPECT_EQ(Open(SettingsAccess::Read).ReadString(kName, text), c.isRead) << c.bytes.size();
        EXPECT_EQ(WideString(text), c.text) << c.bytes.size();
    }
}

TEST(SettingsStore, ListsEndAtAnEmptyStringOrTheEndOfTheData) {
    const std::string null(2, '\0');
    const std::string one = TextBytes(TEXT("one"));
    const std::string two = TextBytes(TEXT("two"));
    const std::pair<std::string, WideStringList> cases[] = {
        {"", {}},
        {null + null, {}},
        {null + one + null, {}},
        {one, {TEXT("one")}},
        {one + null + two + "x", {TEXT("one"), TEXT("two")}},  // an odd byte
        {one + null + one + null + null + two + null, {TEXT("one"), TEXT("one")}},
        {one + std::string(kUserSkinsBytes - one.size(), '\0'), {TEXT("one")}},
        {one + std::string(kUserSkinsBytes - one.size() + 1, '\0'), {}},
    };
    for (const auto& [bytes, list] : cases) {
        StoreRaw({REG_MULTI_SZ, bytes});
        WideStringList back;
        EXPECT_TRUE(Open(SettingsAccess::Read).ReadStringList(kName, back));
        EXPECT_EQ(back, list) << bytes.size() << " bytes";
    }
}

}  // namespace
