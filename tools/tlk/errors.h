// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "places.h"

namespace tlk {

// A fault of the skin's source. The text says what to do about it; line 0 means the file as a whole, no file
// the one that was named.
struct SourceFault {
    SourcePlace place;
    std::string text;
};

// What is wrong with a source: one fault or more.
class SourceError : public std::runtime_error {
public:
    SourceError(SourcePlace place, const std::string& text)
        : std::runtime_error(text), m_Faults{{std::move(place), text}} {}
    explicit SourceError(std::vector<SourceFault> faults)
        : std::runtime_error(faults.front().text), m_Faults(std::move(faults)) {}

    const std::vector<SourceFault>& Faults() const { return m_Faults; }

private:
    std::vector<SourceFault> m_Faults;
};

// Work goes on after a fault, so that an author hears of all of them at once.
class FaultList {
public:
    // Does a step of the work; false when it throws SourceError, whose faults are kept.
    template <class Step>
    bool Try(Step&& step) {
        try {
            step();
            return true;
        } catch (const SourceError& error) {
            m_Faults.insert(m_Faults.end(), error.Faults().begin(), error.Faults().end());
            return false;
        }
    }

    bool IsEmpty() const { return m_Faults.empty(); }
    // Throws what was kept, each fault once and in the order of the lines.
    void Throw();

private:
    std::vector<SourceFault> m_Faults;
};

// Does all steps, then throws what went wrong in any of them.
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

// A fault of anything else that the tool reads or writes; the text names it.
class FileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace tlk
