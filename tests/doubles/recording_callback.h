// SPDX-License-Identifier: MIT
// An IIMCallback that records its calls, one line each:
//   "vk 10 down", "vk 10 up", "char vk=51 flags=20000080 'Q'", "char vk=00 flags=00000080 U+0400"
#pragma once

#include <sip.h>
#include <windows.h>

#include <cstdio>
#include <string>
#include <utility>
#include <vector>

namespace test {

using Events = std::vector<std::string>;

// The line for a call of SendCharEvents.
inline std::string CharEvent(UINT virtualKey, UINT flags, UINT character) {
    const bool isReadable = character > 0x20 && character < 0x7F;
    const char* const format = isReadable ? "char vk=%02X flags=%08X '%c'" : "char vk=%02X flags=%08X U+%04X";
    char text[64];
    std::snprintf(text, sizeof text, format, virtualKey, flags, character);
    return text;
}

// The events of a character key: a key-down with the character and a key-up without it.
inline Events Typed(UINT virtualKey, UINT character, UINT shiftFlag = 0) {
    return {CharEvent(virtualKey, 0x80 | shiftFlag, character),
            CharEvent(virtualKey, 0x10000 | shiftFlag, character)};
}

class RecordingCallback final : public IIMCallback {
public:
    Events events;
    HRESULT result = S_OK;  // returned by every call
    LONG references = 0;    // counted by AddRef and Release, which nobody should call
    int calls = 0;
    bool recording = true;  // off where nothing may be allocated

    Events Take() { return std::exchange(events, {}); }

    STDMETHODIMP QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++references); }
    STDMETHODIMP_(ULONG) Release() override { return static_cast<ULONG>(--references); }

    STDMETHODIMP SetImInfo(IMINFO*) override { return Record("info"); }

    STDMETHODIMP SendVirtualKey(BYTE virtualKey, DWORD flags) override {
        ++calls;
        if (!recording) return result;
        const char* const kind = flags == 0 ? "down" : flags == KEYEVENTF_KEYUP ? "up" : "unknown flags";
        char text[32];
        std::snprintf(text, sizeof text, "vk %02X %s", unsigned{virtualKey}, kind);
        return Record(text);
    }

    STDMETHODIMP SendCharEvents(UINT virtualKey, UINT flags, UINT count, UINT* shifts,
                                UINT* characters) override {
        ++calls;
        if (!recording) return result;
        if (count != 1 || !shifts || !characters) return Record("malformed");
        const std::string event = CharEvent(virtualKey, flags, *characters);
        return Record(*shifts == flags ? event : event + " shift " + std::to_string(*shifts));
    }

    STDMETHODIMP SendString(LPWSTR, DWORD) override { return Record("string"); }

private:
    HRESULT Record(std::string event) {
        events.push_back(std::move(event));
        return result;
    }
};

}  // namespace test
