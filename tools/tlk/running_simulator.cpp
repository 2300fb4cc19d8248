// SPDX-License-Identifier: MIT
#include "running_simulator.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <stdexcept>

#include "errors.h"

namespace tlk {
namespace {

// A command that changes nothing; its answer says that the commands before it are done.
constexpr const char* kQuestion = "reg get HKLM\\tlk done\n";
constexpr const char* kAnswer = "Reg HKLM\\tlk done absent\n";

struct Pipe {
    int read = -1;
    int write = -1;

    Pipe() {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0) throw FileError(std::string("no pipe: ") + std::strerror(errno));
        read = ends[0];
        write = ends[1];
    }
};

}  // namespace

RunningSimulator::RunningSimulator(const std::string& program, const std::vector<std::string>& options) {
    const Pipe input;
    const Pipe output;
    std::string name = program;
    std::vector<std::string> words = options;
    std::vector<char*> arguments{name.data()};
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input.read, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output.write, STDOUT_FILENO);
    const int error = posix_spawn(&m_process, program.c_str(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(input.read);
    close(output.write);
    m_input = input.write;
    m_output = output.read;
    if (error == 0) return;
    close(m_input);
    close(m_output);
    throw std::runtime_error(program + ": cannot be started (" + std::strerror(error) +
                             "): build it, or name it with --simulator");
}

// The end of its standard input ends it.
RunningSimulator::~RunningSimulator() {
    close(m_input);
    close(m_output);
    while (waitpid(m_process, nullptr, 0) < 0 && errno == EINTR) {
    }
}

bool RunningSimulator::IsRunning() {
    char text[4096];
    return read(m_output, text, sizeof text) > 0;
}

bool RunningSimulator::Do(const std::vector<std::string>& commands) {
    std::string text;
    for (const std::string& command : commands)
        text += command + '\n';
    if (!Send(text + kQuestion)) return false;
    std::string answer;
    char part[4096];
    while (answer.find(kAnswer) == std::string::npos) {
        const ssize_t size = read(m_output, part, sizeof part);
        if (size <= 0) return false;
        answer.append(part, static_cast<std::size_t>(size));
    }
    return true;
}

bool RunningSimulator::Send(const std::string& text) const {
    for (std::size_t sent = 0; sent < text.size();) {
        const ssize_t size = write(m_input, text.data() + sent, text.size() - sent);
        if (size <= 0) return false;
        sent += static_cast<std::size_t>(size);
    }
    return true;
}

}  // namespace tlk
