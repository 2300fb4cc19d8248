// SPDX-License-Identifier: MIT
// The registry, the files and the edit field of the device.

#include "simulator_run.h"

namespace {

using DeviceCommandsTest = SimulatorTest;

TEST_F(DeviceCommandsTest, EveryKindOfValueReadsBackAsWritten) {
    const std::string key = "HKCU\\Software\\Some\\Key";
    std::string script, expected;
    for (const auto& [value, printed] : std::initializer_list<std::pair<std::string, std::string>>{
             {"Text sz \"a \\\"b\\\" \\\\ ü😀\"", ""},
             {"\"\" sz \"\"", ""},
             {"N dword 0xFFFFFFFF", "N dword 4294967295"},
             {"N dword -1", "N dword 4294967295"},
             {"M multi a \"b c\"", "M multi \"a\" \"b c\""},
             {"M multi", ""},
             {"M hex 7 61000000620000000000", "M multi \"a\" \"b\""},
             {"H hex 3 00ff10", ""},
             {"H hex 0 \"\"", "H hex 0"},
             {"H hex 1 61006200", "H sz \"ab\""},
             {"H hex 1 3dd8", "H sz \"\\ud83d\""},
             {"H hex 1 610062", ""},
             {"H hex 4 0100", ""}}) {
        const std::string name = value.substr(0, value.find(' '));
        script += "reg set " + key + ' ' + value + "\nreg get " + key + ' ' + name + '\n';
        expected += "Reg " + key + ' ' + (printed.empty() ? value : printed) + '\n';
    }
    EXPECT_EQ(Trace(script), expected);
}

TEST_F(DeviceCommandsTest, KeysAndValuesAreDeleted) {
    const std::string trace = Trace(
        "reg set HKLM\\A\\B v sz x\nreg set HKLM\\A\\C v sz x\nreg keys HKLM\\A\nreg delete HKLM\\A\\B v\n"
        "reg get HKLM\\A\\B v\nreg delete HKLM\\A\nreg keys HKLM\\A\nreg get HKLM\\A\\C v\n");
    EXPECT_EQ(trace, "Key B\nKey C\nReg HKLM\\A\\B v absent\nReg HKLM\\A\\C v absent\n");
}

TEST_F(DeviceCommandsTest, LoadedFilesAreReplacedProtectedAndDeleted) {
    InstallSkin();
    std::filesystem::copy_file(STANDARD_SKIN, Folder() / "other.tlk");
    const std::string trace =
        Trace("select\nrenew \\Windows\\STANDARD.tlk other.tlk\nreadonly \\Windows\\standard.tlk\n" +
              TapKey("a") + "delete \\windows\\standard.tlk\n" + TapKey("b") + "text\n");
    EXPECT_EQ(LastLine(trace, "Text"), "Text \"ab\"");
    EXPECT_FALSE(std::filesystem::exists(Device() / "Windows" / "standard.tlk"));
}

TEST_F(DeviceCommandsTest, ReadOnlyFilesBecomeWritableAgain) {
    InstallSkin();
    using std::filesystem::perms;
    const auto writable = [this] {
        return (status(Device() / "Windows" / "standard.tlk").permissions() & perms::owner_write) !=
               perms::none;
    };
    Trace("readonly \\Windows\\standard.tlk\n");
    EXPECT_FALSE(writable());
    Trace("writable \\Windows\\standard.tlk\n");
    EXPECT_TRUE(writable());
}

// The content of the field after these commands.
TEST_F(DeviceCommandsTest, KeysAndPenEditTheText) {
    InstallSkin();
    const auto control = [](const std::string& key) { return kTapControl + TapKey(key); };
    for (const auto& [commands, text] : std::initializer_list<std::pair<std::string, std::string>>{
             {TapKey("ab ") + kTapEnter + TapKey("c") + kTapTab + kTapEscape, "ab \\nc\\u0009"},
             {TapKey("abc") + kTapBack, "ab"},
             // Shift with Backspace means Delete, with Tab nothing.
             {TapKey("abc") + kTapLeft + kTapLeft + kTapShift + kTapBack, "ac"},
             {TapKey("a") + kTapShift + kTapTab, "a"},
             {"down 9 23\nmove 9 -10\nup 9 -10\n", ""},
             // Arrows move and select.
             {TapKey("ab") + kTapLeft + TapKey("x") + kTapRight + TapKey("y"), "axby"},
             {TapKey("ab") + kTapShift + kTapLeft + TapKey("x"), "ax"},
             {TapKey("ab") + kTapEnter + TapKey("ab") + kTapUp + TapKey("x") + kTapDown + TapKey("y"),
              "abx\\naby"},
             // Control edits and inserts nothing.
             {TapKey("ab") + control("a") + control("c") + kTapRight + control("v"), "abab"},
             {TapKey("ab") + control("a") + control("x"), ""},
             {TapKey("ab") + control("a") + control("x") + control("z"), "ab"},
             {TapKey("a") + control("q") + control(" ") + kTapControl + kTapTab + TapKey("b"), "ab"},
             // The field is above the panel: its first line is 180 pixels up.
             {TapKey("ab") + "tap 2 -180\n" + TapKey("x") + "tap 200 -100\n" + TapKey("y"), "xaby"}}) {
        const std::string trace = Trace("select\n" + commands + "text\n");
        EXPECT_EQ(LastLine(trace, "Text"), "Text \"" + text + '"') << commands;
    }
}

}  // namespace
