// SPDX-License-Identifier: MIT
// The language of scripts: a command a line, words separated by blanks.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

// A command of a script cannot be understood or done. The message does not name file and line.
class ScriptError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The words of a line, without quotes and escapes; none for a blank line or a comment. Throws ScriptError.
std::vector<std::string> SplitWords(std::string_view line);

// A decimal or 0x hexadecimal number within the limits, both included. Throws ScriptError.
std::int64_t ParseNumber(const std::string& word, std::int64_t least, std::int64_t greatest);

// Bytes in hexadecimal, two digits each. Throws ScriptError.
std::vector<std::uint8_t> ParseBytes(const std::string& word);
