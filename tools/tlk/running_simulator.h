// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace tlk {

// A simulator in its window that takes commands from this program, on a device of its own.
class RunningSimulator {
public:
    // Throws std::runtime_error, not FileError, as no file of the author is at fault.
    RunningSimulator(const std::string& program, const std::vector<std::string>& options);
    // Ends it and waits for its end.
    ~RunningSimulator();
    RunningSimulator(const RunningSimulator&) = delete;
    RunningSimulator& operator=(const RunningSimulator&) = delete;

    // Readable when it has written something or ended.
    int Output() const { return m_output; }
    // Discards its output; false if it has ended.
    [[nodiscard]] bool IsRunning();
    // Makes it run the commands; false if it ends before they are done.
    [[nodiscard]] bool Do(const std::vector<std::string>& commands);

private:
    bool Send(const std::string& text) const;

    pid_t m_process = -1;
    int m_input = -1;
    int m_output = -1;
};

}  // namespace tlk
