// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <map>
#include <memory>
#include <vector>

#include "check.h"
#include "command.h"
#include "compile_source.h"
#include "errors.h"
#include "file.h"
#include "name_list.h"
#include "source.h"

namespace tlk {
namespace {

constexpr const char* kWarning = "warning: ";

struct Arguments {
    std::vector<std::string> sources;
    // Builds each source for all its screens; `output` is then a folder.
    bool all = false;
    std::string source;
    std::string output;
    std::string font = TLK_FONT;
    std::string screen;
    std::string processor = "arm";
};

const std::map<std::string, Processor>& Processors() {
    static const std::map<std::string, Processor> kProcessors = {
        {"x86-64", Processor::X64}, {"x86", Processor::X86}, {"arm", Processor::Arm}};
    return kProcessors;
}

void ReportUnusedLanguage(const Skin& skin, std::ostream& out) {
    if (!skin.language2 || skin.HasKey(function_key::kLanguage)) return;
    Remark remark;
    remark.text = "[language2] is left out, as no key leads to it: add the key \"lang\" to the rows";
    remark.place = skin.language2;
    out << FormatRemark(remark, {}, kWarning) << '\n';
}

// Returns the name of the processor.
std::string Build(const Arguments& arguments) {
    auto [skin, resources] = CompileSource(arguments.source, arguments.screen, arguments.font);
    const Bytes file = WriteModule(std::move(resources), Processors().at(arguments.processor));
    WriteFile(arguments.output, file);
    const Module module = Module::Parse(file);
    const std::string screen = skin.screen ? Text(*skin.screen) : std::string();
    ReportUnusedLanguage(skin, std::cerr);
    PrintRemarks({module, arguments.output, screen, &skin.places}, kWarning, std::cerr);
    const std::string processor = ProcessorName(module.GetFacts().machine);
    if (arguments.all) return processor;
    std::cout << arguments.output << ": for " << (screen.empty() ? "" : "a screen of " + screen + " and ")
              << processor << '\n';
    return processor;
}

std::vector<std::string> ReadScreens(const std::string& source) {
    const Bytes text = ReadFile(source);
    try {
        const Skin skin = ReadSource(AsText(text), source);
        if (skin.screens.empty())
            throw SourceError({source, 0}, "this skin lists no screens: add screens = [\"240x320\"]");
        return skin.screens;
    } catch (const SourceError& error) {
        FailAt(error, source);
    }
}

void BuildEachScreen(const Arguments& arguments) {
    namespace fs = std::filesystem;
    Arguments one = arguments;
    std::string built;
    std::string processor;
    for (const std::string& screen : ReadScreens(arguments.source)) {
        const fs::path folder = fs::path(arguments.output) / screen;
        std::error_code error;
        fs::create_directories(folder, error);
        if (error)
            throw FileError(folder.string() + ": cannot be made (" + error.message() +
                            "): name another folder");
        one.screen = screen;
        one.output = (folder / fs::path(one.source).stem()).string() + '-' + screen + ".tlk";
        processor = Build(one);
        AppendName(built, screen);
    }
    std::cout << arguments.source << ": for screens of " << built << " and " << processor << ", in "
              << arguments.output << '\n';
}

// A source that cannot be built does not stop the others.
Status Run(Arguments arguments) {
    if (!arguments.all && arguments.sources.size() > 1)
        throw FileError("build: name one source, or use --all and name a folder for the skins");
    Status status = Done;
    for (const std::string& source : arguments.sources) {
        arguments.source = source;
        try {
            if (arguments.all)
                BuildEachScreen(arguments);
            else
                Build(arguments);
        } catch (const FileError& error) {
            std::cerr << error.what() << '\n';
            status = Failed;
        }
    }
    return status;
}

}  // namespace

Command DescribeBuild(CLI::App& app) {
    CLI::App* options = app.add_subcommand("build", "Build a skin file from a source");
    auto arguments = std::make_shared<Arguments>();
    options->add_option("source", arguments->sources, "The skin's TOML text")->required();
    options->add_option("-o,--output", arguments->output, "The skin file to write; with --all a folder")
        ->required();
    CLI::Option* screen = options->add_option("--screen", arguments->screen,
                                              "Width and height of the upright screen, such as 240x320; "
                                              "default: the first one that the source lists");
    options
        ->add_flag("--all", arguments->all,
                   "Build one or more sources for all their screens, as 240x320/NAME-240x320.tlk")
        ->excludes(screen);
    options->add_option("--font", arguments->font, "Font file for all glyphs, unless the source names one")
        ->capture_default_str();
    options
        ->add_option(
            "--processor", arguments->processor,
            "The processor that loads the file: arm (a handheld; the simulator loads any), x86 or x86-64 "
            "(Windows)")
        ->check(CLI::IsMember(Processors()))
        ->capture_default_str();
    return {options, [arguments] { return Run(*arguments); }};
}

}  // namespace tlk
