// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace tlk {

// A simulator in its window that takes commands from here, on a device of its own.
class RunningSimulator {
public:
    // Throws std::runtime_error, not FileError: it is no file of the author's that is at fault.
    RunningSimulator(const std::string& program, const std::vector<std::string>& options);
    // Ends it and waits for that.
    ~RunningSimulator();
    RunningSimulator(const RunningSimulator&) = delete;
    RunningSimulator& operator=(const RunningSimulator&) = delete;

    // Readable when it has written something, and when it has ended.
    int Output() const { return m_Output; }
    // Throws away what it has written; false when it has ended.
    [[nodiscard]] bool IsRunning();
    // Has it do the commands; false when it ends before they are done.
    [[nodiscard]] bool Do(const std::vector<std::string>& commands);

private:
    bool Send(const std::string& text) const;

    pid_t m_Process = -1;
    int m_Input = -1;
    int m_Output = -1;
};

}  // namespace tlk
