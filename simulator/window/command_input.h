// SPDX-License-Identifier: MIT
// Commands of a script that come while the window is open: another program drives it through a pipe.
#pragma once

#include <optional>
#include <string>

class CommandInput {
public:
    // A line of the standard input, at once; none while there is no whole one.
    [[nodiscard]] std::optional<std::string> TakeLine();
    // Nobody sends any more.
    bool HasEnded() const { return m_hasEnded; }

private:
    void Read();

    std::string m_text;
    bool m_hasEnded = false;
};
