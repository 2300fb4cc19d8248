// SPDX-License-Identifier: MIT
// Invalid scripts, and exit statuses.
#include "simulator_run.h"

namespace {

using CommandLineTest = SimulatorTest;

TEST_F(CommandLineTest, EveryKindOfErrorNamesItsLine) {
    for (const char* line :
         {"select now", "tap 1", "tap 1 x", "tap 0xFFFFFFFF 1", "screen 0 10", "screen 10 5000",
          "reg get HKXX\\A B", "reg set HKLM\\A B sz", "reg set HKLM\\A B dword 4294967296",
          "reg set HKLM\\A B bin 00", "reg set HKLM\\A B hex 3 0", "callback", "callback maybe",
          "factory create nonsense", "\"unclosed", "screenshot", "renew \\a.tlk missing-file",
          "screenshot /nowhere/at/all.png", "TEXT"}) {
        const SimulatorResult result = Run(std::string("text\n") + line + "\ntext\n");
        EXPECT_EQ(result.status, 2) << line;
        EXPECT_EQ(result.trace, "Text \"\"\n") << line;
        EXPECT_EQ(result.errors.rfind("s:2: ", 0), 0u) << line << ": " << result.errors;
    }
}

TEST_F(CommandLineTest, WrongOptionsGiveStatusTwo) {
    for (const char* options :
         {"--screen 240", "--screen 0x320", "--screen 240x320x1", "--nonsense", "--skin missing.tlk"})
        EXPECT_EQ(Run("", options).status, 2) << options;
    EXPECT_EQ(Run("", "--help").status, 0);
}

TEST_F(CommandLineTest, AScriptMayComeFromStandardInput) {
    const SimulatorResult result = Run("\xEF\xBB\xBFtext\r\nbad\r\n", "--script - <s");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.trace, "Text \"\"\n");
    EXPECT_EQ(result.errors, "-:2: there is no command \"bad\"\n");
}

}  // namespace
