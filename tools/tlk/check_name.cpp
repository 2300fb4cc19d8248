// SPDX-License-Identifier: MIT
#include <algorithm>
#include <filesystem>

#include "check.h"

namespace tlk {
namespace {

namespace fs = std::filesystem;

bool Contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

// Ignores case, as paths spell the folder differently.
std::string Folded(std::string name) {
    std::ranges::transform(name, name.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
    });
    return name;
}

std::string Quoted(const std::string& name) { return '"' + name + '"'; }

std::string DescribeConfusion(const std::string& part, const std::string& whole) {
    return "the name " + Quoted(part) + " is a part of " + Quoted(whole) +
           ", a skin in the same folder, and the keyboard finds skins by a part of their paths: on a device "
           "that has both, choosing or deleting " +
           Quoted(part) +
           " may hit the other. Give them different names, such as \"mine-240x320\" and \"mine-480x640\"";
}

std::vector<std::string> SkinsBeside(const fs::path& file) {
    std::vector<std::string> names;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(fs::absolute(file).parent_path(), error))
        if (entry.path().extension() == ".tlk" && entry.path().filename() != file.filename())
            names.push_back(entry.path().stem().string());
    std::ranges::sort(names);
    return names;
}

}  // namespace

std::vector<Remark> CheckName(const std::string& path) {
    const std::string name = fs::path(path).stem().string();
    std::vector<Remark> remarks;
    // A source under `watch` is in the folder of its skins.
    if (fs::path(path).extension() == ".toml") return remarks;
    const auto add = [&remarks](std::string text) { remarks.emplace_back().text = std::move(text); };
    if (Contains("\\windows\\", Folded(name)) || Contains(".tlk", name))
        add("the name " + Quoted(name) +
            " is a part of the path of every skin in \\Windows, and the keyboard finds skins by a part of "
            "their paths: choosing or deleting this one may hit another. Give it a longer name");
    for (const std::string& other : SkinsBeside(path)) {
        if (Contains(other, name)) add(DescribeConfusion(name, other));
        if (Contains(name, other)) add(DescribeConfusion(other, name));
    }
    return remarks;
}

}  // namespace tlk
