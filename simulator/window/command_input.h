// SPDX-License-Identifier: MIT
// Reads commands while the window is open: another program drives it through a pipe.
#pragma once

#include <optional>
#include <string>

class CommandInput {
public:
    // The next line of standard input; none, without waiting, if there is no complete one.
    [[nodiscard]] std::optional<std::string> TakeLine();
    // Has standard input ended?
    bool HasEnded() const { return m_hasEnded; }

private:
    void Read();

    std::string m_text;
    bool m_hasEnded = false;
};
