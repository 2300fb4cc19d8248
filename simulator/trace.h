// SPDX-License-Identifier: MIT
// The trace: one line per event, on standard output.
#pragma once

#include <objbase.h>
#include <windows.h>

#include <string>

class Trace {
public:
    // The text is UTF-8 without a line break.
    void Write(const std::string& line);
    // The same for a call, "NAME 0x…" and `more`; remembers whether it failed.
    void WriteCall(const std::string& name, HRESULT result, const std::string& more = {});
    // Flushes standard output.
    void Flush();
    // Writes nothing more, while the simulator cleans up.
    void Mute() { m_muted = true; }

    // Remembers whether a call without a trace line failed.
    void NoteResult(HRESULT result) { m_callFailed = m_callFailed || FAILED(result); }
    bool CallFailed() const { return m_callFailed; }

private:
    bool m_muted = false;
    bool m_callFailed = false;
};

// Lower case, without leading zeros: "0x20000080".
std::string Hexadecimal(DWORD value);
// With braces and upper-case digits.
std::string GuidText(REFGUID guid);
