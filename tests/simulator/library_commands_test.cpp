// SPDX-License-Identifier: MIT
// Installing, registering, the class factory and unloading.

#include "simulator_run.h"

namespace {

using LibraryCommandsTest = SimulatorTest;

const std::string kClassKey = "HKCR\\CLSID\\{5C1E0B7A-93D4-4F28-B6A1-2D7E4C9F8A30}";
const std::string kGetServer = "reg get " + kClassKey + "\\InprocServer32 \"\"\n";

TEST_F(LibraryCommandsTest, TheLibraryIsInstalledWhenItIsFirstNeeded) {
    const std::string trace = Trace(kGetServer + "windows\n" + kGetServer + "unloadable\n" + kGetServer);
    const std::string prefix = "Reg " + kClassKey + "\\InprocServer32 \"\" ";
    EXPECT_EQ(trace, prefix + "absent\nWindow sip 0 214 240 80 shown=0\nWindow panel none\n" + prefix +
                         "absent\nCanUnloadNow 0x0\n" + prefix + "sz \"\\\\Windows\\\\tolka.dll\"\n");
    EXPECT_TRUE(std::filesystem::exists(Device() / "Windows" / "tolka.dll"));
}

TEST_F(LibraryCommandsTest, RegistrationIsWrittenAndRemoved) {
    const std::string trace = Trace("register\nreg keys " + kClassKey + "\nunregister\nreg keys " +
                                    kClassKey + "\nreg get " + kClassKey + " \"\"\nregister\n" + kGetServer);
    EXPECT_EQ(trace.rfind("Register 0x0\nKey ", 0), 0u) << trace;
    EXPECT_TRUE(Has(trace, "Unregister 0x0\nReg " + kClassKey + " \"\" absent\nRegister 0x0\n"));
    EXPECT_TRUE(Has(LastLine(trace, "Reg "), "tolka.dll"));
}

TEST_F(LibraryCommandsTest, TheRegistryOutlivesTheRun) {
    Trace("register\nunload\nreg set HKLM\\Software\\Tolka\\7.0 Swipe dword 2\n");
    const std::string trace = Trace("reg get HKLM\\SOFTWARE\\tolka\\7.0 swipe\n" + kGetServer);
    EXPECT_EQ(trace.rfind("Reg HKLM\\SOFTWARE\\tolka\\7.0 swipe dword 2\n", 0), 0u) << trace;
    EXPECT_TRUE(Has(trace, "tolka.dll"));
}

TEST_F(LibraryCommandsTest, ReferencesAndLocksKeepTheLibrary) {
    const std::string trace = Trace(
        "factory get\nfactory get\nunloadable\nfactory release\nunloadable\nfactory release\nunloadable\n"
        "factory lock\nunload\nunloadable\nfactory unlock\nunload\nunload\n");
    EXPECT_EQ(trace,
              "Factory 0x0 same=1\nFactory 0x0 same=1\nCanUnloadNow 0x1\nCanUnloadNow 0x1\nCanUnloadNow 0x0\n"
              "LockServer 0x0\nUnload 0x1\nCanUnloadNow 0x1\nLockServer 0x0\nUnload 0x0\nUnload 0x0\n");
}

TEST_F(LibraryCommandsTest, InstancesComeThroughTheFactory) {
    const std::string trace = Trace(
        "factory create {42429666-ae04-11d0-a4f8-00aa00a749b9}\n"
        "factory create {00000000-0000-0000-C000-000000000046} aggregated\n"
        "factory create {0576f2e1-aa6b-11d2-a146-0000f8757270} aggregated\n"
        "factory create {6F3A9D27-4B81-4E5C-9A16-D2C8B05E7F93}\nunloadable\n");
    EXPECT_EQ(trace,
              "CreateInstance 0x0\nCreateInstance 0x0\nCreateInstance 0x80040110\nCreateInstance 0x80004002\n"
              "CanUnloadNow 0x0\n");
}

TEST_F(LibraryCommandsTest, ARegisteredLibraryIsNotReplaced) {
    const SimulatorResult result = Run(
        "reg set " + kClassKey + "\\InprocServer32 \"\" sz \\Windows\\other.dll\nregister\n" + kGetServer);
    EXPECT_EQ(result.status, 1);
    EXPECT_FALSE(std::filesystem::exists(Device() / "Windows" / "tolka.dll"));
}

TEST_F(LibraryCommandsTest, ALibraryThatIsMissingIsReported) {
    const SimulatorResult result = Run("select\n", "--library nowhere/Tolka.DLL");
    EXPECT_EQ(result.status, 2);
    EXPECT_TRUE(Has(result.errors, "s:1: cannot read"));
}

}  // namespace
