// SPDX-License-Identifier: MIT
#include "simulator_run.h"

#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>

namespace fs = std::filesystem;

namespace {

std::string ReadFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

}  // namespace

SimulatorTest::SimulatorTest() {
    std::string folder = (fs::temp_directory_path() / "simulator-XXXXXX").string();
    if (mkdtemp(folder.data())) m_folder = folder;
}

SimulatorTest::~SimulatorTest() { fs::remove_all(m_folder); }

SimulatorResult SimulatorTest::Run(const std::string& script, const std::string& options) {
    std::ofstream(m_folder / "s", std::ios::binary) << script;
    const std::string scriptOption = options.find("--script") == std::string::npos ? "--script s " : "";
    const std::string command = "cd '" + m_folder.string() + "' && '" SIMULATOR "' --device device " +
                                scriptOption + options + " >out 2>err";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadFile(m_folder / "out"),
            ReadFile(m_folder / "err")};
}

std::string SimulatorTest::Trace(const std::string& script, const std::string& options) {
    const SimulatorResult result = Run(script, options);
    EXPECT_EQ(result.status, 0) << result.trace;
    EXPECT_EQ(result.errors, "");
    return result.trace;
}

void SimulatorTest::InstallSkin(const std::string& name, const std::string& folder) {
    fs::create_directories(Device() / folder);
    fs::copy_file(STANDARD_SKIN, Device() / folder / (name + ".tlk"));
}

void SimulatorTest::MakeFewSkins() {
    for (const std::string size : {"240x320", "480x640", "240x240"}) {
        fs::create_directories(m_folder / "skins" / size);
        for (const std::string skin : {"german", "greek", "german-thumbs"}) {
            if (skin == "german-thumbs" && size == "240x240") continue;
            const fs::path file = fs::path(size) / (skin + '-' + size + ".tlk");
            fs::copy_file(SKINS / file, m_folder / "skins" / file);
        }
    }
}

std::string KeyTaps(const std::string& keys) {
    struct Row {
        std::string keys;
        int left;  // middle of the first key; each is 17 pixels wide
        int y;
    };
    static const Row kRows[] = {
        {"`1234567890-=", 8, 7}, {"qwertyuiop[]", 27, 23}, {"asdfghjkl;'", 30, 39}, {"zxcvbnm,./", 39, 55}};
    static const std::map<std::string, std::string> kNames = {
        {"shift", "15 55"},  {"control", "11 71"}, {"umlaut", "10 39"},  {"back", "230 7"},
        {"enter", "224 39"}, {"tab", "9 23"},      {"escape", "228 55"}, {"left", "192 71"},
        {"up", "209 55"},    {"down", "209 71"},   {"right", "228 71"}};
    std::string script;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (keys[i] == '<') {
            const std::size_t end = keys.find('>', i);
            script += "tap " + kNames.at(keys.substr(i + 1, end - i - 1)) + '\n';
            i = end;
        }
        if (keys[i] == ' ') script += "tap 129 71\n";
        for (const Row& row : kRows) {
            const std::size_t index = row.keys.find(keys[i]);
            if (index == std::string::npos) continue;
            const int x = row.left + 17 * static_cast<int>(index);
            script += "tap " + std::to_string(x) + ' ' + std::to_string(row.y) + '\n';
        }
    }
    return script;
}

testing::AssertionResult HasParts(const std::string& text, const std::vector<std::string>& parts) {
    std::size_t end = 0;
    for (const std::string& part : parts) {
        const bool isLast = &part == &parts.back();
        const std::size_t at = isLast ? text.size() - std::min(text.size(), part.size()) : end;
        const std::size_t found = text.find(part, at);
        if (found == text.npos || found < end || (&part == &parts.front() && found != 0))
            return testing::AssertionFailure() << "no " << part << " in its place of\n" << text;
        end = found + part.size();
    }
    return testing::AssertionSuccess() << "all is in\n" << text;
}

testing::AssertionResult Has(const std::string& text, const std::string& part) {
    return HasParts(text, {"", part, ""});
}

std::string LastLine(const std::string& trace, const std::string& beginning) {
    std::istringstream lines(trace);
    std::string found;
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with(beginning)) found = line;
    return found;
}
