// SPDX-License-Identifier: MIT
#pragma once

#include <istream>
#include <string>

class Session;

// Runs a script in the platform's idle time: one command whenever no message is left to deliver, in the main
// loop and in the loops of modal windows.
class ScriptRunner {
public:
    // The name is for messages.
    ScriptRunner(Session& session, std::istream& script, std::string name);

    enum class Outcome { Ended, NotUnderstood };
    // Runs the message loop until the script ends. Mistakes in it are reported on standard error.
    Outcome Run();

private:
    // False at the end of the script.
    bool OnIdle();
    bool RunNextLine();

    Session& m_session;
    std::istream& m_script;
    std::string m_name;
    int m_line = 0;
    bool m_ended = false;
    Outcome m_outcome = Outcome::Ended;
};
