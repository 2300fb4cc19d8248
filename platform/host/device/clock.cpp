// SPDX-License-Identifier: MIT
// The virtual clock. It moves only when told to, so a replayed script always sees the same times.
#include "device/device.h"

namespace host {

namespace {
DWORD g_now = 0;
}

DWORD Now() { return g_now; }

// Wraps after 49.7 days, as the platform's counter does.
void AdvanceClock(DWORD milliseconds) { g_now += milliseconds; }

void ResetClock() { g_now = 0; }

}  // namespace host

void WINAPI Sleep(DWORD milliseconds) { host::AdvanceClock(milliseconds); }
