// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "places.h"

namespace tlk {

// A fault in a skin's source. The text says what to do about it; line 0 means the whole file, no file the one
// on the command line.
struct SourceFault {
    SourcePlace place;
    std::string text;
};

// One or more faults of a source.
class SourceError : public std::runtime_error {
public:
    SourceError(SourcePlace place, const std::string& text)
        : std::runtime_error(text), m_faults{{std::move(place), text}} {}
    explicit SourceError(std::vector<SourceFault> faults)
        : std::runtime_error(faults.front().text), m_faults(std::move(faults)) {}

    const std::vector<SourceFault>& Faults() const { return m_faults; }

private:
    std::vector<SourceFault> m_faults;
};

// Collects faults, so that an author sees all of them at once.
class FaultList {
public:
    // Runs a step; false if it throws SourceError, whose faults are kept.
    template <class Step>
    bool Try(Step&& step) {
        try {
            step();
            return true;
        } catch (const SourceError& error) {
            m_faults.insert(m_faults.end(), error.Faults().begin(), error.Faults().end());
            return false;
        }
    }

    bool IsEmpty() const { return m_faults.empty(); }
    // Throws the kept faults, if any: each once, in the order of lines.
    void Throw();

private:
    std::vector<SourceFault> m_faults;
};

// Runs all steps, then throws their faults, if any.
template <class... Steps>
void TryAll(Steps&&... steps) {
    FaultList faults;
    (faults.Try(steps), ...);
    faults.Throw();
}

template <class Range, class Step>
void TryEach(Range&& range, Step&& step) {
    FaultList faults;
    for (auto&& item : range)
        faults.Try([&] { step(item); });
    faults.Throw();
}

// A fault of any other file that the tool reads or writes; the text names it.
class FileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace tlk
