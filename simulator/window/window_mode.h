// SPDX-License-Identifier: MIT
// The handheld in a window of the PC's desktop. Nothing else of the simulator knows of a display.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "acts.h"
#include "session.h"

struct WindowOptions {
    Session::Options session;
    SkinOptions skins;
    std::optional<std::filesystem::path> record;  // gets a script of everything that the person does
    int scale = 0;                                // 0: the greatest that fits the monitor
    enum class Commands { None, FromStandardInput } commands = Commands::None;  // their end closes the window
    enum class Trace { Hidden, Shown } trace = Trace::Hidden;
};

// Runs until the window is closed. False when something of the device could not be written, which the person
// has been told. Throws std::exception with a message for the user.
[[nodiscard]] bool RunInWindow(const WindowOptions& options);

// The window's keys for --help, a line each.
std::string DescribeKeys();
