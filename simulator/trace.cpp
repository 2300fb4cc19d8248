// SPDX-License-Identifier: MIT
#include "trace.h"

#include <cstdio>

void Trace::Write(const std::string& line) {
    if (m_muted) return;
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fputc('\n', stdout);
}

void Trace::WriteCall(const std::string& name, HRESULT result, const std::string& more) {
    NoteResult(result);
    Write(name + ' ' + Hexadecimal(static_cast<DWORD>(result)) + more);
}

void Trace::Flush() { std::fflush(stdout); }

std::string Hexadecimal(DWORD value) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%x", static_cast<unsigned>(value));
    return text;
}

std::string GuidText(REFGUID guid) {
    char text[40];
    const BYTE* last = guid.Data4;
    std::snprintf(text, sizeof text, "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}",
                  static_cast<unsigned>(guid.Data1), guid.Data2, guid.Data3, last[0], last[1], last[2],
                  last[3], last[4], last[5], last[6], last[7]);
    return text;
}
