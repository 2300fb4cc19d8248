// SPDX-License-Identifier: MIT
#include "commands.h"

#include <unicode.h>

#include <algorithm>
#include <iostream>
#include <limits>
#include <utility>

#include "script.h"

namespace {

NoteHandler g_noteHandler;

// If two names begin alike, the longer one comes first.
std::vector<std::span<const Command>> Tables() {
    return {SipCommands(),    PenCommands(),    RegistryCommands(), LibraryCommands(),
            DeviceCommands(), DialogCommands(), HandheldCommands()};
}

// The number of words in the command's name; 0 if these words begin with another name.
std::size_t MatchName(const Command& command, const std::vector<std::string>& words) {
    if (command.name == words[0]) return 1;
    if (words.size() >= 2 && command.name == words[0] + ' ' + words[1]) return 2;
    return 0;
}

void RunWith(Session& session, const Command& command, std::span<const std::string> arguments) {
    if (arguments.size() < command.least || arguments.size() > command.greatest) {
        const std::string_view blank = command.arguments.empty() ? "" : " ";
        throw ScriptError("usage: " + std::string(command.name) + std::string(blank) +
                          std::string(command.arguments));
    }
    command.run(session, Arguments(arguments));
}

}  // namespace

std::u16string Arguments::Wide(std::size_t index) const {
    std::optional<std::u16string> text = unicode::FromUtf8(m_words[index]);
    if (!text) throw ScriptError("\"" + m_words[index] + "\" is not UTF-8");
    return *text;
}

int Arguments::Number(std::size_t index, int least, int greatest) const {
    return static_cast<int>(ParseNumber(m_words[index], least, greatest));
}

int Arguments::Pixels(std::size_t index) const {
    constexpr int limit = std::numeric_limits<int>::max();
    return std::clamp(Number(index, -limit, limit), -0x8000, 0x7FFF);
}

void RunCommand(Session& session, const std::vector<std::string>& words) {
    for (const std::span<const Command> table : Tables()) {
        for (const Command& command : table) {
            const std::size_t length = MatchName(command, words);
            if (length != 0) return RunWith(session, command, std::span(words).subspan(length));
        }
    }
    throw ScriptError("there is no command \"" + words[0] + (words.size() > 1 ? ' ' + words[1] : "") + "\"");
}

void Note(const std::string& text) {
    if (g_noteHandler) return g_noteHandler(text);
    std::cerr << text << '\n';
}

void SetNoteHandler(NoteHandler handler) { g_noteHandler = std::move(handler); }
