// SPDX-License-Identifier: MIT
// What happened, a line an event, on standard output.
#pragma once

#include <objbase.h>
#include <windows.h>

#include <string>

class Trace {
public:
    // The text is UTF-8 without a line break.
    void Write(const std::string& line);
    // As Write, and remembers a call that failed: "NAME 0x…" and what follows.
    void WriteCall(const std::string& name, HRESULT result, const std::string& more = {});
    // Hands over to the reader what was written.
    void Flush();
    // Nothing is written any more: what follows is the simulator's own tidying up.
    void Mute() { m_muted = true; }

    // A call whose line the trace does not show.
    void NoteResult(HRESULT result) { m_callFailed = m_callFailed || FAILED(result); }
    bool CallFailed() const { return m_callFailed; }

private:
    bool m_muted = false;
    bool m_callFailed = false;
};

// Lower case, without leading zeros: "0x20000080".
std::string Hexadecimal(DWORD value);
// With braces and upper-case figures.
std::string GuidText(REFGUID guid);
