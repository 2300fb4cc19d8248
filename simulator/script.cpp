// SPDX-License-Identifier: MIT
#include "script.h"

#include <unicode.h>

#include <charconv>

namespace {

bool IsBlank(char character) { return character == ' ' || character == '\t' || character == '\r'; }

// Takes a word in double quotes off the front; the line begins with the opening quote.
std::string TakeQuotedWord(std::string_view& line) {
    std::string word;
    for (line.remove_prefix(1); !line.empty(); line.remove_prefix(1)) {
        if (line[0] == '"') {
            line.remove_prefix(1);
            if (!line.empty() && !IsBlank(line[0])) throw ScriptError("a blank must follow a closing quote");
            return word;
        }
        if (line[0] == '\\') {
            line.remove_prefix(1);
            if (line.empty() || (line[0] != '"' && line[0] != '\\'))
                throw ScriptError(R"(in double quotes \" and \\ are the only escapes)");
        }
        word += line[0];
    }
    throw ScriptError("the closing quote is missing");
}

std::string TakePlainWord(std::string_view& line) {
    std::size_t length = 0;
    while (length < line.size() && !IsBlank(line[length])) {
        if (line[length] == '"') throw ScriptError("a quote inside a word");
        ++length;
    }
    std::string word(line.substr(0, length));
    line.remove_prefix(length);
    return word;
}

}  // namespace

std::vector<std::string> SplitWords(std::string_view line) {
    if (!unicode::FromUtf8(line)) throw ScriptError("the line is not UTF-8");
    std::vector<std::string> words;
    while (true) {
        while (!line.empty() && IsBlank(line[0]))
            line.remove_prefix(1);
        if (line.empty() || (words.empty() && line[0] == '#')) return words;
        words.push_back(line[0] == '"' ? TakeQuotedWord(line) : TakePlainWord(line));
    }
}

std::int64_t ParseNumber(const std::string& word, std::int64_t least, std::int64_t greatest) {
    std::string_view digits = word;
    const bool negative = digits.starts_with('-');
    if (negative) digits.remove_prefix(1);
    const bool hexadecimal = digits.starts_with("0x") || digits.starts_with("0X");
    if (hexadecimal) digits.remove_prefix(2);
    std::int64_t value = 0;
    const char* end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value, hexadecimal ? 16 : 10);
    if (error == std::errc::invalid_argument || stop != end || digits.starts_with('-'))
        throw ScriptError("\"" + word + "\" is not a number");
    if (negative) value = -value;
    if (error != std::errc() || value < least || value > greatest)
        throw ScriptError("the number " + word + " is out of range");
    return value;
}

std::vector<std::uint8_t> ParseBytes(const std::string& word) {
    std::vector<std::uint8_t> bytes(word.size() / 2);
    const char* next = word.data();
    for (std::uint8_t& byte : bytes) {
        const auto [stop, error] = std::from_chars(next, next + 2, byte, 16);
        if (stop != next + 2) break;
        next = stop;
    }
    if (next != word.data() + word.size()) throw ScriptError("\"" + word + "\" is not a list of bytes");
    return bytes;
}
