// SPDX-License-Identifier: MIT
#include "script_runner.h"

#include <host_control.h>

#include <exception>
#include <iostream>
#include <utility>

#include "commands.h"
#include "script.h"
#include "session.h"

ScriptRunner::ScriptRunner(Session& session, std::istream& script, std::string name)
    : m_session(session), m_script(script), m_name(std::move(name)) {}

ScriptRunner::Outcome ScriptRunner::Run() {
    m_session.RunMessages([this] { return OnIdle(); });
    return m_outcome;
}

bool ScriptRunner::OnIdle() {
    m_session.GetTrace().Flush();
    if (m_ended) return false;
    m_session.LayOutApplication();
    return m_session.PostQueuedPen() || RunNextLine();
}

// A line may open a modal window, whose loop calls this again, so the line is counted first. Catches all
// exceptions, as code of the library may be on the stack.
bool ScriptRunner::RunNextLine() {
    std::string text;
    if (!std::getline(m_script, text)) {
        m_ended = true;
        return false;
    }
    const int line = ++m_line;
    if (line == 1 && text.starts_with("\xEF\xBB\xBF")) text.erase(0, 3);
    try {
        const std::vector<std::string> words = SplitWords(text);
        if (!words.empty()) RunCommand(m_session, words);
    } catch (const std::exception& error) {
        m_session.GetTrace().Flush();
        std::cerr << m_name << ':' << line << ": " << error.what() << '\n';
        m_outcome = Outcome::NotUnderstood;
        m_ended = true;
    }
    return !m_ended;
}
