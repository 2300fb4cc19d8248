// SPDX-License-Identifier: MIT
// The commands. Each describes its options to the parser and runs after they have been read.
#pragma once

#include <functional>
#include <iosfwd>
#include <string>

#include "module_reader.h"
#include "places.h"

namespace CLI {
class App;
}

namespace tlk {

// Exit status of all commands: success, `check` has remarks, failure.
enum Status { Done = 0, Remarks = 1, Failed = 2 };

struct Command {
    // Owned by the application; true if the command line names this command.
    CLI::App* options;
    // Throws FileError. Writes results to standard output.
    std::function<Status()> run;
};

[[nodiscard]] Command DescribeArt(CLI::App& app);
[[nodiscard]] Command DescribeBuild(CLI::App& app);
[[nodiscard]] Command DescribeCheck(CLI::App& app);
[[nodiscard]] Command DescribeDump(CLI::App& app);
[[nodiscard]] Command DescribeShow(CLI::App& app);
[[nodiscard]] Command DescribeWatch(CLI::App& app);

// A skin to be checked.
struct Checked {
    const Module& module;
    // The name for remarks whose place in the source is unknown.
    std::string file;
    // "240x320"; if empty, guessed from the pictures.
    std::string screen;
    const SourcePlaces* places = nullptr;
};

// Writes a line for each remark, with the label before its text; returns their number. Throws FileError if
// the screen cannot be read.
std::size_t PrintRemarks(const Checked& checked, const std::string& label, std::ostream& out);

}  // namespace tlk
