// SPDX-License-Identifier: MIT
// Commands for the registry.
#include "commands.h"
#include "registry_value.h"
#include "script.h"
#include "session.h"
#include "text.h"

namespace {

void RequireCount(const Arguments& arguments, std::size_t count, const char* usage) {
    if (arguments.Count() != count) throw ScriptError(std::string("usage: reg set KEY NAME ") + usage);
}

// Parses the words from the type on. A 32-bit number may have a sign.
RegistryValue ParseValue(const Arguments& arguments) {
    const std::string& type = arguments.Text(2);
    if (type == "sz") {
        RequireCount(arguments, 4, "sz TEXT");
        return RegistryValue::FromText(arguments.Wide(3));
    }
    if (type == "dword") {
        RequireCount(arguments, 4, "dword N");
        return RegistryValue::FromNumber(
            static_cast<DWORD>(ParseNumber(arguments.Text(3), -0x80000000LL, 0xFFFFFFFFLL)));
    }
    if (type == "multi") {
        std::vector<std::u16string> texts;
        for (std::size_t i = 3; i < arguments.Count(); ++i)
            texts.push_back(arguments.Wide(i));
        return RegistryValue::FromTexts(texts);
    }
    if (type == "hex") {
        RequireCount(arguments, 5, "hex TYPE BYTES");
        const auto number = static_cast<DWORD>(ParseNumber(arguments.Text(3), 0, 0xFFFFFFFFLL));
        return {number, ParseBytes(arguments.Text(4))};
    }
    throw ScriptError("the type \"" + type + "\" is none of sz, dword, multi, hex");
}

std::string FormatBytes(const RegistryValue& value) {
    constexpr char digits[] = "0123456789abcdef";
    std::string text = "hex " + std::to_string(value.type);
    if (!value.data.empty()) text += ' ';
    for (const BYTE byte : value.data) {
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return text;
}

// Data that does not fit its type (half a character, a number of another size) is printed as bytes.
std::string Format(const RegistryValue& value) {
    const bool wholeCharacters = value.data.size() % 2 == 0;
    if (value.type == REG_SZ && wholeCharacters) return "sz " + Quoted(value.Characters());
    if (value.type == REG_MULTI_SZ && wholeCharacters) {
        std::string text = "multi";
        for (const std::u16string& item : value.Texts())
            text += ' ' + Quoted(item);
        return text;
    }
    if (value.type == REG_DWORD && value.data.size() == 4) {
        const std::vector<BYTE>& data = value.data;
        const DWORD number =
            data[0] | (DWORD{data[1]} << 8) | (DWORD{data[2]} << 16) | (DWORD{data[3]} << 24);
        return "dword " + std::to_string(number);
    }
    return FormatBytes(value);
}

void Report(const char* action, const Arguments& arguments, LSTATUS error) {
    if (error == ERROR_SUCCESS) return;
    Note(std::string(action) + ' ' + arguments.Text(0) + ": error " + std::to_string(error));
}

void Set(Session&, const Arguments& arguments) {
    const KeyPath key = ParseKeyPath(arguments.Text(0));
    const RegistryValue value = ParseValue(arguments);
    Report("reg set", arguments, WriteRegistryValue(key, arguments.Wide(1), value));
}

void Get(Session& session, const Arguments& arguments) {
    const auto value = ReadRegistryValue(ParseKeyPath(arguments.Text(0)), arguments.Wide(1));
    const std::string name = arguments.Text(1).empty() ? "\"\"" : arguments.Text(1);
    session.GetTrace().Write("Reg " + arguments.Text(0) + ' ' + name + ' ' +
                             (value ? Format(*value) : "absent"));
}

void Keys(Session& session, const Arguments& arguments) {
    for (const std::u16string& name : ListSubkeys(ParseKeyPath(arguments.Text(0))))
        session.GetTrace().Write("Key " + Escaped(name));
}

void Delete(Session&, const Arguments& arguments) {
    const KeyPath key = ParseKeyPath(arguments.Text(0));
    const bool wholeKey = arguments.Count() == 1;
    Report("reg delete", arguments,
           wholeKey ? DeleteRegistryKey(key) : DeleteRegistryValue(key, arguments.Wide(1)));
}

constexpr Command kCommands[] = {
    {"reg set", "KEY NAME sz|dword|multi|hex …", 3, kAnyNumber, Set},
    {"reg get", "KEY NAME", 2, 2, Get},
    {"reg keys", "KEY", 1, 1, Keys},
    {"reg delete", "KEY [NAME]", 1, 2, Delete},
};

}  // namespace

std::span<const Command> RegistryCommands() { return kCommands; }
