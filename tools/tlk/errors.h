// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

#include "places.h"

namespace tlk {

// A fault of the skin's source. The text says what to do about it; line 0 means the file as a whole, no file
// the one that was named.
class SourceError : public std::runtime_error {
public:
    SourceError(SourcePlace place, const std::string& text)
        : std::runtime_error(text), m_Place(std::move(place)) {}
    const SourcePlace& Place() const { return m_Place; }
    unsigned Line() const { return m_Place.line; }

private:
    SourcePlace m_Place;
};

// A fault of anything else that the tool reads or writes; the text names it.
class FileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace tlk
