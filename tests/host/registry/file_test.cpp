// SPDX-License-Identifier: MIT
// The text format, then the file and its failures.
#include "registry/file.h"

#include <host_control.h>
#include <test_support.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <numeric>

namespace {

using namespace host;

const std::string kHeader = "Windows Registry Editor Version 5.00\r\n";
const std::string kKey = "[HKEY_LOCAL_MACHINE\\Test]\r\n";

// The value of HKEY_LOCAL_MACHINE\Test as type and bytes; a test failure if the text is damaged.
RegistryValue Parse(const std::string& text, std::u16string_view name = u"v") {
    const auto parsed = ParseRegistryFile(text);
    if (const auto* error = std::get_if<RegistryFileError>(&parsed)) {
        ADD_FAILURE() << text << "\nline " << error->line << ": " << error->what;
        return {};
    }
    const auto key = FindKey(std::get<RegistryTree>(parsed).Root(RegistryRoot::LocalMachine), u"Test");
    const RegistryValue* value = key ? FindValue(*key, name) : nullptr;
    return value ? *value : RegistryValue{u"absent", REG_NONE, {}};
}

// The damaged line, 0 for none.
std::size_t DamagedLine(const std::string& text) {
    const auto parsed = ParseRegistryFile(text);
    const auto* error = std::get_if<RegistryFileError>(&parsed);
    return error ? error->line : 0;
}

std::vector<BYTE> UnitBytes(std::u16string_view text) {
    const auto* bytes = reinterpret_cast<const BYTE*>(text.data());
    return {bytes, bytes + text.size() * sizeof(WCHAR)};
}

void WriteNumber(DWORD number) {
    HKEY key = nullptr;
    RegCreateKeyExW(HKEY_LOCAL_MACHINE, TEXT("Test"), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr);
    RegSetValueExW(key, TEXT("v"), 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof(number));
    EXPECT_EQ(RegCloseKey(key), ERROR_SUCCESS);
}

TEST(RegistryText, UnderstandsWhatEditorsWrite) {
    const std::string start = kHeader + "\r\n; a comment\r\n" + kKey;
    EXPECT_EQ(Parse(start + "\"v\"=\"a\\\\b\\\"\xE2\x82\xAC\"").data, UnitBytes({u"a\\b\"\u20AC", 6}));
    EXPECT_EQ(Parse(start + "@=\"x\"\r\n", u"").type, static_cast<DWORD>(REG_SZ));
    EXPECT_EQ(Parse(start + "\"V\"=dword:0000ABcd").data, (std::vector<BYTE>{0xCD, 0xAB, 0, 0}));
    EXPECT_EQ(Parse(start + "\"v\"=hex:"), (RegistryValue{u"v", REG_BINARY, {}}));
    EXPECT_EQ(Parse(start + "\"v\"=hex(7):01,\\\r\n  02,\\\r\n  ff\r\n"),
              (RegistryValue{u"v", REG_MULTI_SZ, {1, 2, 255}}));
    EXPECT_EQ(Parse("\xEF\xBB\xBF" + start + "  \"v\" = hex(ffffffff):0A  \n"),
              (RegistryValue{u"v", 0xFFFFFFFF, {10}}));
    EXPECT_EQ(Parse(kHeader + "[hkey_local_machine\\TEST]\n\"v\"=hex:00").data.size(), 1u);
}

TEST(RegistryText, LaterLinesWinAndDeletionsDelete) {
    const std::string start = kHeader + kKey + "\"v\"=dword:1\r\n";
    EXPECT_EQ(Parse(start + "\"V\"=dword:2").data[0], 2);
    EXPECT_EQ(Parse(start + "\"v\"=-").name, u"absent");
    EXPECT_EQ(Parse(start + "[-HKEY_LOCAL_MACHINE\\Test]").name, u"absent");
    EXPECT_EQ(Parse(start + "[-HKEY_CURRENT_USER\\Test]").data[0], 1);
}

TEST(RegistryText, NamesTheFirstInvalidLine) {
    EXPECT_EQ(DamagedLine(""), 1u);
    EXPECT_EQ(DamagedLine("\r\nREGEDIT4\r\n"), 2u);
    EXPECT_EQ(DamagedLine(kHeader + "\"v\"=dword:1"), 2u);
    for (const std::string bad : {"[HKEY_LOCAL_MACHINE\\Test",
                                  "[HKEY_UNKNOWN\\Test]",
                                  "[-HKEY_LOCAL_MACHINE]",
                                  "[HKEY_LOCAL_MACHINE\\\xC3]",
                                  "[HKEY_LOCAL_MACHINE\\a\tb]",
                                  "\"v\"",
                                  "\"v=1",
                                  "v=1",
                                  "\"v\"=",
                                  "\"v\"=\"open",
                                  "\"v\"=\"a\" b",
                                  "\"v\"=\"a\\n\"",
                                  "\"v\"=\"\xED\xA0\x80\"",
                                  "\"v\"=dword:",
                                  "\"v\"=dword:123456789",
                                  "\"v\"=dword:xyz",
                                  "\"v\"=hex:0",
                                  "\"v\"=hex:123",
                                  "\"v\"=hex:00,",
                                  "\"v\"=hex:00,,01",
                                  "\"v\"=hex:00,\\",
                                  "\"v\"=hex(:00",
                                  "\"v\"=hex():00",
                                  "\"v\"=hex(123456789):00",
                                  "\"v\"=text"}) {
        // A single hexadecimal digit is a byte, too.
        const std::size_t expected = bad == "\"v\"=hex:0" ? 0 : 3;
        EXPECT_EQ(DamagedLine(kHeader + kKey + bad), expected) << bad;
    }
    EXPECT_EQ(DamagedLine(kHeader + kKey + "\"v\"=hex:00,\\\r\n01\r\nbad"), 5u);
    EXPECT_EQ(DamagedLine(kHeader + "[HKEY_LOCAL_MACHINE\\" + std::string(256, 'k') + "]"), 2u);
    std::string deep = "[HKEY_LOCAL_MACHINE";
    for (int i = 0; i < 513; ++i)
        deep += "\\k";
    EXPECT_EQ(DamagedLine(kHeader + deep + "]"), 2u);
}

TEST(RegistryText, ReadsBackWhatItWrites) {
    RegistryTree tree;
    bool created = false;
    const auto key = MakeKey(tree.Root(RegistryRoot::ClassesRoot), u"CLSID\\[a] ;b\"c ", created);
    MakeKey(tree.Root(RegistryRoot::CurrentUser), u"Empty", created);
    std::vector<BYTE> allBytes(256);
    std::iota(allBytes.begin(), allBytes.end(), BYTE{0});
    const std::vector<RegistryValue> values = {
        {u"", REG_SZ, UnitBytes({u"C:\\x \"\u00E4\"", 9})},
        {u"plain=\"\\", REG_SZ, UnitBytes({u"", 1})},
        {u"unterminated", REG_SZ, UnitBytes(u"abc")},
        {u"twice terminated", REG_SZ, UnitBytes({u"abc\0", 5})},
        {u"odd", REG_SZ, {1, 2, 0}},
        {u"empty", REG_SZ, {}},
        {u"line break", REG_SZ, UnitBytes({u"a\nb", 4})},
        {u"lone surrogate", REG_SZ, UnitBytes({u"a\xD800z", 4})},
        {u"pair", REG_SZ, UnitBytes({u"\U0001F600", 3})},
        {u"short number", REG_DWORD, {1, 2, 3}},
        {u"number", REG_DWORD, {1, 2, 3, 0xF0}},
        {u"list", REG_MULTI_SZ, UnitBytes({u"a\0b\0\0", 5})},
        {u"bytes", REG_BINARY, allBytes},
        {u"strange type", 0xFFFF0000, allBytes},
    };
    for (const RegistryValue& value : values)
        SetValue(*key, value);
    const std::string text = FormatRegistryFile(tree);
    const auto parsed = ParseRegistryFile(text);
    ASSERT_TRUE(std::holds_alternative<RegistryTree>(parsed)) << text;
    const RegistryTree& read = std::get<RegistryTree>(parsed);
    const auto readKey = FindKey(read.Root(RegistryRoot::ClassesRoot), u"CLSID\\[a] ;b\"c ");
    ASSERT_NE(readKey, nullptr) << text;
    EXPECT_EQ(readKey->values, key->values) << text;
    EXPECT_NE(FindKey(read.Root(RegistryRoot::CurrentUser), u"Empty"), nullptr);
    EXPECT_EQ(FormatRegistryFile(read), text);
}

TEST(RegistryFile, IsWrittenAtEachCloseAfterAChange) {
    WriteNumber(7);
    const std::string text = test::ReadDeviceFile("device.reg");
    EXPECT_EQ(text, kHeader + "\r\n[HKEY_LOCAL_MACHINE]\r\n\r\n" + kKey + "\"v\"=dword:00000007\r\n");
    std::filesystem::remove(test::DeviceFolder() / "device.reg");
    WriteNumber(7);
    EXPECT_TRUE(std::filesystem::is_empty(test::DeviceFolder())) << "written, or a temporary file is left";
}

TEST(RegistryFile, SurvivesAWriteThatFails) {
    WriteNumber(1);
    const std::string before = test::ReadDeviceFile("device.reg");
    FailCall(Call::WriteRegistryFile);
    WriteNumber(2);
    const std::vector<std::string> reports = test::TakeReports();
    ASSERT_EQ(reports.size(), 1u);
    EXPECT_NE(reports[0].find("device.reg: cannot be written"), std::string::npos) << reports[0];
    EXPECT_EQ(test::ReadDeviceFile("device.reg"), before);
    // The next write contains both changes.
    EXPECT_TRUE(FlushRegistry());
    EXPECT_EQ(Parse(test::ReadDeviceFile("device.reg")).data[0], 2);
}

// A folder in place of the new file: a real failure, even for root.
TEST(RegistryFile, SurvivesAFolderInItsPlace) {
    WriteNumber(1);
    std::filesystem::create_directories(test::DeviceFolder() / "device.reg.new");
    WriteNumber(2);
    EXPECT_EQ(test::TakeReports().size(), 1u);
    EXPECT_EQ(Parse(test::ReadDeviceFile("device.reg")).data[0], 1);
    std::filesystem::remove(test::DeviceFolder() / "device.reg.new");
    EXPECT_TRUE(FlushRegistry());
}

TEST(RegistryFile, IsRenamedIfDamaged) {
    const std::string damaged = kHeader + kKey + "\"v\"=oops\r\n";
    const std::string file = (std::filesystem::canonical(test::DeviceFolder()) / "device.reg").string();
    for (const std::string aside : {".damaged", ".damaged-2"}) {
        test::WriteDeviceFile("device.reg", damaged);
        test::RestartDevice();
        const std::vector<std::string> reports = test::TakeReports();
        ASSERT_EQ(reports.size(), 1u);
        EXPECT_EQ(
            reports[0].find(file + ":3: the data of a value cannot be understood; kept as " + file + aside),
            0u)
            << reports[0];
        EXPECT_EQ(test::ReadDeviceFile("device.reg" + aside), damaged);
        EXPECT_FALSE(std::filesystem::exists(file));
    }
    WriteNumber(1);
    EXPECT_EQ(test::ReadDeviceFile("device.reg.damaged"), damaged);
}

TEST(RegistryFile, IsRenamedIfItIsNoFile) {
    std::filesystem::create_directories(test::DeviceFolder() / "device.reg");
    test::RestartDevice();
    EXPECT_EQ(test::TakeReports().size(), 1u);
    WriteNumber(1);
    EXPECT_EQ(Parse(test::ReadDeviceFile("device.reg")).data[0], 1);
}

}  // namespace
