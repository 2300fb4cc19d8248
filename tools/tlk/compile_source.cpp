// SPDX-License-Identifier: MIT
#include "compile_source.h"

#include <filesystem>

#include "compile.h"
#include "errors.h"
#include "file.h"
#include "file_watch.h"
#include "source.h"

namespace tlk {
namespace {

// The source's own font is at its path, or beside the default one.
Font OpenFont(const Skin& skin, const std::string& usual) {
    namespace fs = std::filesystem;
    if (!skin.fontFile) return Font(usual);
    const fs::path own = skin.fontFile->path;
    ReadsWatched::Note(own.string());
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

}  // namespace

CompiledSource CompileSource(const std::string& path, const std::string& screen, const std::string& font) {
    const Bytes text = ReadFile(path);
    try {
        FaultList faults;
        CompiledSource compiled{ReadSource(AsText(text), path, screen, faults), {}};
        // Drawing may find more mistakes than reading did.
        if (faults.IsEmpty() || !compiled.skin.portrait.rows.empty())
            faults.Try(
                [&] { compiled.resources = CompileSkin(compiled.skin, OpenFont(compiled.skin, font)); });
        faults.Throw();
        return compiled;
    } catch (const SourceError& error) {
        FailAt(error, path);
    }
}

}  // namespace tlk
