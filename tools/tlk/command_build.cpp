// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <map>
#include <memory>

#include "check.h"
#include "command.h"
#include "compile.h"
#include "errors.h"
#include "file.h"
#include "source.h"

namespace tlk {
namespace {

constexpr const char* kWarning = "warning: ";

struct Arguments {
    std::string source;
    std::string output;
    std::string font = TLK_FONT;
    std::string screen;
    std::string processor = "x86-64";
};

const std::map<std::string, Processor>& Processors() {
    static const std::map<std::string, Processor> processors = {
        {"x86-64", Processor::X64}, {"x86", Processor::X86}, {"arm", Processor::Arm}};
    return processors;
}

// The source's own font lies where it says, or beside the usual one.
Font OpenFont(const Skin& skin, const std::string& usual) {
    namespace fs = std::filesystem;
    if (!skin.fontFile) return Font(usual);
    const fs::path own = skin.fontFile->path;
    const fs::path beside = fs::path(usual).parent_path() / own;
    try {
        if (!fs::exists(own) && !fs::exists(beside))
            throw FileError("there is no font " + own.string() + ", neither beside the source nor in " +
                            beside.parent_path().string() + ": name another one");
        return Font((fs::exists(own) ? own : beside).string());
    } catch (const FileError& error) {
        throw SourceError(skin.fontFile->place, error.what());
    }
}

void TellUnusedLanguage(const Skin& skin, std::ostream& out) {
    if (!skin.language2 || skin.HasKey(function_key::kLanguage)) return;
    Remark remark;
    remark.text = "[language2] is left out, as no key leads to it: add the key \"lang\" to the rows";
    remark.place = skin.language2;
    out << FormatRemark(remark, {}, kWarning) << '\n';
}

Status Build(const Arguments& arguments) {
    const Bytes text = ReadFile(arguments.source);
    try {
        const Skin skin = ReadSource(AsText(text), arguments.source, arguments.screen);
        const Font font = OpenFont(skin, arguments.font);
        const Bytes file = WriteModule(CompileSkin(skin, font), Processors().at(arguments.processor));
        WriteFile(arguments.output, file);
        const Module module = Module::Parse(file);
        const std::string screen = skin.screen ? Text(*skin.screen) : std::string();
        TellUnusedLanguage(skin, std::cerr);
        TellRemarks({module, arguments.output, screen, &skin.places}, kWarning, std::cerr);
    } catch (const SourceError& error) {
        FailAt(error, arguments.source);
    }
    return kDone;
}

}  // namespace

Command DescribeBuild(CLI::App& app) {
    CLI::App* pOptions = app.add_subcommand("build", "Write a skin file from a source");
    auto arguments = std::make_shared<Arguments>();
    pOptions->add_option("source", arguments->source, "The skin's TOML text")->required();
    pOptions->add_option("-o,--output", arguments->output, "The skin file to write")->required();
    pOptions->add_option("--screen", arguments->screen,
                         "Width and height of the upright screen, such as 240x320; without it the first one "
                         "that the source lists");
    pOptions->add_option("--font", arguments->font, "Font file for all glyphs, unless the source names one")
        ->capture_default_str();
    pOptions
        ->add_option("--processor", arguments->processor,
                     "Whose loader takes the file: x86-64 (the simulator, Windows), x86, or arm (a handheld)")
        ->check(CLI::IsMember(Processors()))
        ->capture_default_str();
    return {pOptions, [arguments] { return Build(*arguments); }};
}

}  // namespace tlk
