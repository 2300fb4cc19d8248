// SPDX-License-Identifier: MIT
// The handheld in a window of the PC's desktop. Only this folder uses a display.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "actions.h"
#include "session.h"

struct WindowOptions {
    Session::Options session;
    SkinOptions skins;
    std::optional<std::filesystem::path> record;  // the script to record to
    int scale = 0;                                // 0: the greatest that fits the monitor
    enum class Commands {
        None,
        FromStandardInput
    } commands = Commands::None;  // the end of input closes the window
    enum class Trace { Hidden, Shown } trace = Trace::Hidden;
};

// Runs until the window is closed. False if something of the device could not be written, after telling the
// user. Throws std::exception with a message for the user.
[[nodiscard]] bool RunInWindow(const WindowOptions& options);

// The window's keys for --help, one per line.
std::string DescribeKeys();
