// SPDX-License-Identifier: MIT
// An IIMCallback that writes down what it is asked to send, one line for each call:
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

class RecordingCallback final : public IIMCallback {
public:
    Events events;
    HRESULT result = S_OK;  // what every call answers
    LONG references = 0;    // counted by AddRef and Release; nobody is expected to

    Events Take() { return std::exchange(events, {}); }

    STDMETHODIMP QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++references); }
    STDMETHODIMP_(ULONG) Release() override { return static_cast<ULONG>(--references); }

    STDMETHODIMP SetImInfo(IMINFO*) override { return Record("info"); }

    STDMETHODIMP SendVirtualKey(BYTE virtualKey, DWORD flags) override {
        const char* const kind = flags == 0 ? "down" : flags == KEYEVENTF_KEYUP ? "up" : "unknown flags";
        return Record(Format("vk %02X %s", unsigned{virtualKey}, kind));
    }

    STDMETHODIMP SendCharEvents(UINT virtualKey, UINT flags, UINT count, UINT* shifts,
                                UINT* characters) override {
        std::string event = Format("char vk=%02X flags=%08X ", virtualKey, flags);
        if (count != 1 || !shifts || !characters) return Record(event + "malformed");
        const bool readable = *characters > 0x20 && *characters < 0x7F;
        event += readable ? Format("'%c'", static_cast<int>(*characters)) : Format("U+%04X", *characters);
        if (*shifts != flags) event += Format(" shift=%08X", *shifts);
        return Record(std::move(event));
    }

    STDMETHODIMP SendString(LPWSTR, DWORD) override { return Record("string"); }

private:
    HRESULT Record(std::string event) {
        events.push_back(std::move(event));
        return result;
    }

    template <typename... Arguments>
    static std::string Format(const char* format, Arguments... arguments) {
        char text[64];
        std::snprintf(text, sizeof text, format, arguments...);
        return text;
    }
};

}  // namespace test
