// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <iterator>
#include <memory>

#include "check.h"
#include "command.h"
#include "errors.h"
#include "file.h"
#include "skin_module.h"
#include "source.h"

namespace tlk {
namespace {

struct Arguments {
    std::string skin;
    std::string screen;
    std::string source;
};

Size ReadScreen(const std::string& text) {
    if (const auto size = ParseScreen(text)) return *size;
    throw FileError("--screen " + text + ": give width and height in pixels, as in 240x320");
}

Size ScreenFor(const Checked& checked) {
    if (!checked.screen.empty()) return ReadScreen(checked.screen);
    // Any screen serves to say that the skin has no picture.
    return GuessScreen(checked.module).value_or(Size{240, 320});
}

SourcePlaces ReadPlaces(const std::string& source, Size screen) {
    if (source.empty()) return {};
    const Bytes text = ReadFile(source);
    try {
        const Size upright{std::min(screen.width, screen.height), std::max(screen.width, screen.height)};
        return ReadSource(AsText(text), source, Text(upright)).places;
    } catch (const SourceError& error) {
        FailAt(error, source);
    }
}

Status Run(const Arguments& arguments) {
    const Module module = OpenModule(arguments.skin);
    Checked checked{module, arguments.skin, arguments.screen};
    const Size screen = ScreenFor(checked);
    const SourcePlaces places = ReadPlaces(arguments.source, screen);
    if (!arguments.source.empty()) checked.places = &places;
    const std::size_t count = PrintRemarks(checked, "", std::cout);
    std::cout << arguments.skin << ": "
              << (count == 0   ? "good"
                  : count == 1 ? "1 remark"
                               : std::to_string(count) + " remarks")
              << " for a screen of " << screen.width << 'x' << screen.height
              << (arguments.screen.empty() ? ", taken from its pictures," : "") << " and "
              << ProcessorName(module.GetFacts().machine) << '\n';
    return count == 0 ? Done : Remarks;
}

}  // namespace

std::size_t PrintRemarks(const Checked& checked, const std::string& label, std::ostream& out) {
    std::vector<Remark> remarks = Check(checked.module, ScreenFor(checked), checked.places);
    std::ranges::move(CheckName(checked.file), std::back_inserter(remarks));
    for (const Remark& remark : remarks)
        out << FormatRemark(remark, checked.file, label) << '\n';
    return remarks.size();
}

Command DescribeCheck(CLI::App& app) {
    CLI::App* options = app.add_subcommand("check", "Check a skin file; exit status 1 if something is wrong");
    auto arguments = std::make_shared<Arguments>();
    options->add_option("skin", arguments->skin, "The skin file")->required();
    options->add_option("--screen", arguments->screen,
                        "Size of the screen, as in 240x320; both orientations are checked");
    options->add_option("--source", arguments->source, "The skin's source, for the lines that name the keys");
    return {options, [arguments] { return Run(*arguments); }};
}

}  // namespace tlk
