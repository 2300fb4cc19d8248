// SPDX-License-Identifier: MIT
#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "art.h"
#include "command.h"
#include "compile_source.h"
#include "errors.h"
#include "file.h"
#include "png_file.h"
#include "skin_module.h"

namespace tlk {
namespace {

namespace fs = std::filesystem;

constexpr const char* kSourceName = "art.toml";

struct Arguments {
    std::string skin;
    std::string output;
    std::string font = TLK_FONT;
    std::string screen;
};

// If a source has several screens, its pictures are for one of them.
struct Subject {
    Module module;
    std::string table;
};

Subject Open(const Arguments& arguments) {
    if (AsText(ReadFile(arguments.skin)).starts_with("MZ")) return {OpenModule(arguments.skin), "[art]"};
    const CompiledSource compiled = CompileSource(arguments.skin, arguments.screen, arguments.font);
    const Skin& skin = compiled.skin;
    return {Module::Parse(WriteModule(compiled.resources)),
            skin.screens.size() > 1 ? "[screen." + Text(*skin.screen) + ".art]" : "[art]"};
}

void MakeFolder(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (error)
        throw FileError(folder.string() + ": cannot be made (" + error.message() + "): name another folder");
}

struct Output {
    fs::path path;
    Bytes bytes;
};

// The author may have painted on it since it was written.
void RequireUnpainted(const Output& output) {
    if (fs::exists(output.path) && ReadFile(output.path.string()) != output.bytes)
        throw FileError(
            output.path.string() +
            ": exists already and differs; nothing was written: name another folder, or remove it");
}

std::vector<Output> MakeOutputs(const Subject& subject, const fs::path& folder) {
    const SkinModule skin = ReadSkin(subject.module);
    std::vector<Output> outputs;
    std::string lines = "# Paint on these pictures. Lines of those that you do not change can be removed.\n" +
                        subject.table + "\n";
    for (const std::string& name : AllArtNames()) {
        const SkinBitmap bitmap = skin.engine->Bitmap(FindArtResource(name));
        if (!bitmap.isPresent) continue;
        if (!bitmap.IsReadable()) {
            std::cerr << "warning: " << name << " is left out: it is damaged or compressed\n";
            continue;
        }
        outputs.push_back({folder / (name + ".png"), EncodePng(bitmap.pixels)});
        lines += name + " = \"" + name + ".png\"\n";
    }
    if (outputs.empty()) throw FileError("there is no picture in it");
    outputs.push_back({folder / kSourceName, {lines.begin(), lines.end()}});
    return outputs;
}

Status Run(const Arguments& arguments) {
    const fs::path folder = arguments.output;
    const std::vector<Output> outputs = MakeOutputs(Open(arguments), folder);
    MakeFolder(folder);
    for (const Output& output : outputs)
        RequireUnpainted(output);
    for (const Output& output : outputs)
        WriteFile(output.path.string(), output.bytes);
    std::cout << AsText(outputs.back().bytes) << "\nThese lines are in " << outputs.back().path.string()
              << ": name it last in 'based_on' of the skin, or copy them and add the folder to the names.\n";
    return Done;
}

}  // namespace

Command DescribeArt(CLI::App& app) {
    CLI::App* options =
        app.add_subcommand("art", "Write the pictures and masks of a skin as PNG files to paint on");
    auto arguments = std::make_shared<Arguments>();
    options->add_option("skin", arguments->skin, "A skin's source, or a skin file")->required();
    options->add_option("-o,--output", arguments->output, "The folder to write to, created if missing")
        ->required();
    options->add_option("--screen", arguments->screen,
                        "For a source: the upright screen, such as 240x320; default: the first one");
    options->add_option("--font", arguments->font, "Font file for all glyphs, unless the source names one")
        ->capture_default_str();
    return {options, [arguments] { return Run(*arguments); }};
}

}  // namespace tlk
