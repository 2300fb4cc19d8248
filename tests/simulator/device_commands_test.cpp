// SPDX-License-Identifier: MIT
// The registry, the files and the edit field of the device.

#include "simulator_run.h"

namespace {

using DeviceCommandsTest = SimulatorTest;

TEST_F(DeviceCommandsTest, EveryKindOfValueReadsBackAsWritten) {
    const std::string key = "HKCU\\Software\\Some\\Key";
    const auto roundTrip = [&](const std::string& name, const std::string& value) {
        return Trace("reg set " + key + ' ' + name + ' ' + value + "\nreg get " + key + ' ' + name + '\n');
    };
    const std::string prefix = "Reg " + key + ' ';
    EXPECT_EQ(roundTrip("Text", "sz \"a \\\"b\\\" \\\\ ü😀\""), prefix + "Text sz \"a \\\"b\\\" \\\\ ü😀\"\n");
    EXPECT_EQ(roundTrip("\"\"", "sz \"\""), prefix + "\"\" sz \"\"\n");
    EXPECT_EQ(roundTrip("N", "dword 0xFFFFFFFF"), prefix + "N dword 4294967295\n");
    EXPECT_EQ(roundTrip("N", "dword -1"), prefix + "N dword 4294967295\n");
    EXPECT_EQ(roundTrip("M", "multi a \"b c\""), prefix + "M multi \"a\" \"b c\"\n");
    EXPECT_EQ(roundTrip("M", "multi"), prefix + "M multi\n");
    EXPECT_EQ(roundTrip("M", "hex 7 61000000620000000000"), prefix + "M multi \"a\" \"b\"\n");
    EXPECT_EQ(roundTrip("H", "hex 3 00ff10"), prefix + "H hex 3 00ff10\n");
    EXPECT_EQ(roundTrip("H", "hex 0 \"\""), prefix + "H hex 0\n");
    EXPECT_EQ(roundTrip("H", "hex 1 61006200"), prefix + "H sz \"ab\"\n");
    EXPECT_EQ(roundTrip("H", "hex 1 3dd8"), prefix + "H sz \"\\ud83d\"\n");
    EXPECT_EQ(roundTrip("H", "hex 1 610062"), prefix + "H hex 1 610062\n");
    EXPECT_EQ(roundTrip("H", "hex 4 0100"), prefix + "H hex 4 0100\n");
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

class EditFieldTest : public SimulatorTest {
protected:
    EditFieldTest() { InstallSkin(); }
    // The content of the field after these commands.
    std::string Typed(const std::string& commands) {
        return LastLine(Trace("select\n" + commands + "text\n"), "Text").substr(5);
    }
};

TEST_F(EditFieldTest, FunctionKeysAct) {
    EXPECT_EQ(Typed(TapKey("ab ") + kTapEnter + TapKey("c") + kTapTab + kTapEscape), "\"ab \\nc\\u0009\"");
    EXPECT_EQ(Typed(TapKey("abc") + kTapBack), "\"ab\"");
    // Shift with Backspace means Delete, with Tab nothing.
    EXPECT_EQ(Typed(TapKey("abc") + kTapLeft + kTapLeft + kTapShift + kTapBack), "\"ac\"");
    EXPECT_EQ(Typed(TapKey("a") + kTapShift + kTapTab), "\"a\"");
    EXPECT_EQ(Typed("down 9 23\nmove 9 -10\nup 9 -10\n"), "\"\"");
}

TEST_F(EditFieldTest, ArrowsMoveAndSelect) {
    EXPECT_EQ(Typed(TapKey("ab") + kTapLeft + TapKey("x") + kTapRight + TapKey("y")), "\"axby\"");
    EXPECT_EQ(Typed(TapKey("ab") + kTapShift + kTapLeft + TapKey("x")), "\"ax\"");
    EXPECT_EQ(Typed(TapKey("ab") + kTapEnter + TapKey("ab") + kTapUp + TapKey("x") + kTapDown + TapKey("y")),
              "\"abx\\naby\"");
}

TEST_F(EditFieldTest, ControlEditsAndInsertsNothing) {
    const auto control = [](const std::string& key) { return kTapControl + TapKey(key); };
    EXPECT_EQ(Typed(TapKey("ab") + control("a") + control("c") + kTapRight + control("v")), "\"abab\"");
    EXPECT_EQ(Typed(TapKey("ab") + control("a") + control("x")), "\"\"");
    EXPECT_EQ(Typed(TapKey("ab") + control("a") + control("x") + control("z")), "\"ab\"");
    EXPECT_EQ(Typed(TapKey("a") + control("q") + control(" ") + kTapControl + kTapTab + TapKey("b")),
              "\"ab\"");
}

TEST_F(EditFieldTest, ThePenPutsTheCaret) {
    // The field is above the panel: its first line is 180 pixels up.
    EXPECT_EQ(Typed(TapKey("ab") + "tap 2 -180\n" + TapKey("x") + "tap 200 -100\n" + TapKey("y")),
              "\"xaby\"");
}

}  // namespace
