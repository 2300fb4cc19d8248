// SPDX-License-Identifier: MIT
// The commands of scripts: a table for each subject. Commands are found by their first words.
#pragma once

#include <windows.h>

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

class Session;

// The words after a command's name. Each access throws ScriptError if the word is not of that kind.
class Arguments {
public:
    explicit Arguments(std::span<const std::string> words) : m_words(words) {}

    std::size_t Count() const { return m_words.size(); }
    const std::string& Text(std::size_t index) const { return m_words[index]; }
    std::u16string Wide(std::size_t index) const;
    int Number(std::size_t index, int least, int greatest) const;
    // A position on the screen in pixels, limited to what a message can hold.
    int Pixels(std::size_t index) const;
    POINT Point(std::size_t index) const { return {Pixels(index), Pixels(index + 1)}; }

private:
    std::span<const std::string> m_words;
};

struct Command {
    std::string_view name;       // one or two words
    std::string_view arguments;  // for messages
    std::size_t least;           // number of arguments
    std::size_t greatest;
    void (*run)(Session& session, const Arguments& arguments);
};
constexpr std::size_t kAnyNumber = static_cast<std::size_t>(-1);

// Runs the command that these words (at least one) name. Throws ScriptError.
void RunCommand(Session& session, const std::vector<std::string>& words);

// Tells the user that a command had nothing to act on; the script goes on.
void Note(const std::string& text);
// Where notes go; null: to the terminal.
using NoteHandler = std::function<void(const std::string&)>;
void SetNoteHandler(NoteHandler handler);

std::span<const Command> SipCommands();
std::span<const Command> PenCommands();
std::span<const Command> RegistryCommands();
std::span<const Command> LibraryCommands();
std::span<const Command> DeviceCommands();
std::span<const Command> DialogCommands();
std::span<const Command> HandheldCommands();
