// SPDX-License-Identifier: MIT
// The commands of the command line. Each describes its options to the parser and runs once they are read.
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

// Exit status of all commands: nothing was found wrong, `check` has remarks, the work could not be done.
enum Status { kDone = 0, kRemarks = 1, kFailed = 2 };

struct Command {
    // Owned by the application; converts to true when the command line names this command.
    CLI::App* pOptions;
    // Throws FileError. Writes results to the standard output.
    std::function<Status()> run;
};

[[nodiscard]] Command DescribeArt(CLI::App& app);
[[nodiscard]] Command DescribeBuild(CLI::App& app);
[[nodiscard]] Command DescribeCheck(CLI::App& app);
[[nodiscard]] Command DescribeDump(CLI::App& app);
[[nodiscard]] Command DescribeShow(CLI::App& app);
[[nodiscard]] Command DescribeWatch(CLI::App& app);

// A skin to be checked, and what is known of it.
struct Checked {
    const Module& module;
    // Names the skin in remarks whose place in the source is not known.
    std::string file;
    // "240x320"; empty: the screen that the pictures suggest.
    std::string screen;
    const SourcePlaces* pPlaces = nullptr;
};

// Writes a line for each remark, with the label in front of its text; returns their number. Throws FileError
// when the screen cannot be read.
std::size_t TellRemarks(const Checked& checked, const std::string& label, std::ostream& out);

}  // namespace tlk
