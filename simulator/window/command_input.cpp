// SPDX-License-Identifier: MIT
#include "command_input.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>

std::optional<std::string> CommandInput::TakeLine() {
    Read();
    const std::size_t end = m_text.find('\n');
    if (end == std::string::npos) return std::nullopt;
    std::string line = m_text.substr(0, end);
    m_text.erase(0, end + 1);
    return line;
}

void CommandInput::Read() {
    pollfd input{STDIN_FILENO, POLLIN, 0};
    while (!m_hasEnded && poll(&input, 1, 0) > 0) {
        char part[4096];
        const ssize_t size = read(STDIN_FILENO, part, sizeof part);
        if (size < 0 && errno == EINTR) continue;
        m_hasEnded = size <= 0;
        if (size > 0) m_text.append(part, static_cast<std::size_t>(size));
    }
}
