// SPDX-License-Identifier: MIT
#pragma once

#include <istream>
#include <string>

class Session;

// Runs a script as the platform's idle time: a command whenever no message is left to deliver, in the main
// loop and in the loop of any modal window.
class ScriptRunner {
public:
    // The name stands in messages.
    ScriptRunner(Session& session, std::istream& script, std::string name);

    enum class Outcome { Ended, NotUnderstood };
    // Runs the message loop until the script ends. What is wrong with it goes to standard error.
    Outcome Run();

private:
    // False when nothing more will come.
    bool OnIdle();
    bool RunNextLine();

    Session& m_session;
    std::istream& m_script;
    std::string m_name;
    int m_line = 0;
    bool m_ended = false;
    Outcome m_outcome = Outcome::Ended;
};
