// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <string>

namespace tlk {

// A fault of the skin's source. The text says what to do about it; line 0 means the file as a whole.
class SourceError : public std::runtime_error {
public:
    SourceError(unsigned line, const std::string& text) : std::runtime_error(text), m_Line(line) {}
    unsigned Line() const { return m_Line; }

private:
    unsigned m_Line;
};

// A fault of anything else that the tool reads or writes; the text names it.
class FileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace tlk
