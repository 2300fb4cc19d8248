// SPDX-License-Identifier: MIT
// The sessions in sessions/: scripts, and the traces that they give. A file holds several, each on a device
// of its own:
//
//     # comment
//     == Name
//     $ skin NAME [FOLDER]     the standard skin, under this name; in "Windows" if no folder is named
//     $ file PATH              a file that is no skin
//     $ other input method     the code of \Windows\other.dll
//     $ run [OPTION...]        another run of the simulator on the same device, or options for the first
//     $ type KEYS              taps on the standard skin: "ab<enter>"
//     $ pen PLACE...           taps of the pen on the menu bar and its menus, by kPlaces
//     > COMMAND                a line of the script
//     Showing 0x0              a line of the trace; "*" stands for any characters
//     ...                      any lines of the trace, or none
//     $ status 2               the exit status of the run, otherwise 0
//     $ errors TEXT            the messages, otherwise none; "*" stands for any characters
//     $ has PATH               a file that the device has afterwards
//     $ lacks PATH             and one that it has not
#include <fstream>
#include <iomanip>
#include <map>
#include <sstream>

#include "simulator_run.h"
#include "tests/cases.h"

namespace fs = std::filesystem;

namespace {

// Those of all files, each under the name of its file and its own.
std::vector<Case> ReadSessions() {
    std::vector<Case> sessions;
    for (const auto& entry : fs::directory_iterator(SESSIONS))
        for (Case& session : ReadCases(entry.path()))
            sessions.push_back({entry.path().stem().string() + '_' + session.name, session.lines});
    return sessions;
}

// Upright, 240 x 320. The menu of input methods has "Other" too.
const std::map<std::string, std::string> kPlaces = {
    {"New", "15 308"},       {"Edit", "60 308"},     {"Keyboard", "212 308"}, {"Arrow", "232 308"},
    {"SelectAll", "60 284"}, {"Paste", "60 260"},    {"Copy", "60 241"},      {"Cut", "60 222"},
    {"Undo", "60 198"},      {"Options", "220 284"}, {"Tolka", "220 260"},    {"Other", "220 241"}};

std::string PenTaps(const std::string& places) {
    std::istringstream words(places);
    std::string script;
    for (std::string place; words >> place;)
        script += "pen down " + kPlaces.at(place) + "\npen up " + kPlaces.at(place) + '\n';
    return script;
}

// The text from behind the first word and its blank.
std::string Rest(const std::string& line, const std::string& word) {
    return line.substr(std::min(line.size(), word.size() + 1));
}

// Whether a text is as this pattern says, in which "*" stands for any characters.
testing::AssertionResult Matches(const std::string& text, const std::string& pattern) {
    std::vector<std::string> parts(1);
    for (const char c : pattern)
        if (c == '*')
            parts.emplace_back();
        else
            parts.back() += c;
    return HasParts(text, parts);
}

class SessionTest : public SimulatorTest, public testing::WithParamInterface<Case> {
protected:
    void Directive(const std::string& line) {
        std::istringstream words(line);
        std::string word, path, folder = "Windows";
        words >> word >> path;
        if (word == "skin") {
            words >> std::quoted(folder);
            InstallSkin(path, folder);
        } else if (word == "file") {
            std::ofstream(Device() / path) << "no skin";
        } else if (word == "other") {
            fs::copy_file(LIBRARY, Device() / "Windows" / "other.dll");
            fs::copy_file(OTHER_INPUT_METHOD, Device() / "Windows" / "other.dll.so");
        } else if (word == "run") {
            Finish();
            m_options = Rest(line, word);
        } else if (word == "type") {
            m_script += KeyTaps(Rest(line, word));
        } else if (word == "pen") {
            m_script += PenTaps(Rest(line, word));
        } else if (word == "status") {
            m_status = std::stoi(path);
        } else if (word == "errors") {
            m_errors = Rest(line, word);
        } else if (word == "has" || word == "lacks") {
            Finish();
            EXPECT_EQ(fs::exists(Device() / path), word == "has") << path;
        } else {
            ADD_FAILURE() << "there is no directive " << line;
        }
    }
    void Command(const std::string& line) { m_script += line + '\n'; }
    // Lines begin with their break, so that what follows "..." begins a line.
    void Expect(const std::string& line) { m_trace += line == "..." ? "*" : '\n' + line; }

    // Runs what has been read, if that is anything.
    void Finish() {
        if (m_script.empty()) return;
        const SimulatorResult result = Run(m_script, m_options);
        EXPECT_EQ(result.status, m_status);
        EXPECT_TRUE(Matches('\n' + result.trace, m_trace + '\n'));
        EXPECT_TRUE(Matches(result.errors, m_errors.empty() ? "" : m_errors + '\n'));
        m_script = m_trace = m_options = m_errors = "";
        m_status = 0;
    }

private:
    std::string m_options, m_script, m_trace, m_errors;
    int m_status = 0;
};

TEST_P(SessionTest, GivesItsTrace) {
    for (const std::string& line : GetParam().lines) {
        if (line.empty() || line[0] == '#') continue;
        if (line[0] == '$')
            Directive(Rest(line, "$"));
        else if (line[0] == '>')
            Command(Rest(line, ">"));
        else
            Expect(line);
    }
    Finish();
}

INSTANTIATE_TEST_SUITE_P(Sessions, SessionTest, testing::ValuesIn(ReadSessions()),
                         [](const auto& session) { return session.param.name; });

}  // namespace
