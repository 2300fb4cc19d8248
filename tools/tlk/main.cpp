// SPDX-License-Identifier: MIT
// tlk: writes skin files from their source and shows how they look.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

#include "compile.h"
#include "errors.h"
#include "module_reader.h"
#include "png_file.h"
#include "preview.h"
#include "source.h"

namespace {

constexpr int kFailed = 2;
// Far more than any source or skin has.
constexpr std::uintmax_t kLargestFile = 64 << 20;

tlk::Bytes ReadFile(const std::string& path) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (error) throw tlk::FileError(path + ": cannot be read (" + error.message() + ")");
    if (size > kLargestFile) throw tlk::FileError(path + ": too large");
    std::ifstream file(path, std::ios::binary);
    tlk::Bytes bytes{std::istreambuf_iterator<char>(file), {}};
    if (!file) throw tlk::FileError(path + ": cannot be read");
    return bytes;
}

// A file that could not be written whole is not left behind, and an older one not lost.
void WriteFile(const std::string& path, const tlk::Bytes& bytes) {
    const std::string part = path + ".part";
    std::ofstream file(part, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    file.close();
    std::error_code error;
    if (file) std::filesystem::rename(part, path, error);
    if (!file || error) {
        std::filesystem::remove(part, error);
        throw tlk::FileError(path + ": cannot be written; is the folder there and writable?");
    }
}

struct BuildArguments {
    std::string source;
    std::string output;
    std::string font = TLK_FONT;
};

void Build(const BuildArguments& arguments) {
    const tlk::Bytes text = ReadFile(arguments.source);
    const tlk::Font font(arguments.font);
    try {
        const tlk::Skin skin = tlk::ReadSource({reinterpret_cast<const char*>(text.data()), text.size()});
        WriteFile(arguments.output, tlk::WriteModule(tlk::CompileSkin(skin, font)));
    } catch (const tlk::SourceError& error) {
        const std::string line = error.Line() == 0 ? "" : ":" + std::to_string(error.Line());
        throw tlk::FileError(arguments.source + line + ": " + error.what());
    }
}

struct ShowArguments {
    std::string skin;
    std::string plane = "lang1_small";
    std::vector<int> pressed;
    std::string output;
    int zoom = 1;
};

void Show(const ShowArguments& arguments) {
    tlk::Bytes file = ReadFile(arguments.skin);
    tlk::Picture picture;
    try {
        const tlk::Module skin = tlk::Module::Parse(std::move(file));
        picture = tlk::ShowPlane(skin, arguments.plane, arguments.pressed);
    } catch (const tlk::FileError& error) {
        throw tlk::FileError(arguments.skin + ": " + error.what());
    }
    tlk::WritePng(picture, arguments.zoom, arguments.output);
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app{"Writes skin files (.tlk) from their source and shows how they look."};
    app.require_subcommand(1);

    BuildArguments build;
    CLI::App* pBuild = app.add_subcommand("build", "Write a skin file from a source");
    pBuild->add_option("source", build.source, "The skin's TOML text")->required();
    pBuild->add_option("-o,--output", build.output, "The skin file to write")->required();
    pBuild->add_option("--font", build.font, "Font file for all glyphs")->capture_default_str();

    ShowArguments show;
    CLI::App* pShow = app.add_subcommand("show", "Draw one plane of a skin file into a PNG file");
    pShow->add_option("skin", show.skin, "The skin file")->required();
    pShow->add_option("--plane", show.plane, "lang1_small, uml2_large_ls, digit, ...")->capture_default_str();
    pShow->add_option("--pressed", show.pressed, "Index of a key to draw pressed");
    pShow->add_option("-o,--output", show.output, "The PNG file to write")->required();
    pShow->add_option("--zoom", show.zoom, "Size of a pixel")->check(CLI::Range(1, 8));

    try {
        app.parse(argc, argv);
        if (*pBuild) Build(build);
        if (*pShow) Show(show);
        return 0;
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : kFailed;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return kFailed;
    }
}
