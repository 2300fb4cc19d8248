// SPDX-License-Identifier: MIT
// Fault injection: every host call that can fail asks here.
#pragma once

#include <host_control.h>

namespace host {

// Counts the call. True if a test wants this one to fail; the caller then fails.
[[nodiscard]] bool CallFails(Call call);
// The same, and sets the last error if the call is to fail.
[[nodiscard]] bool CallFails(Call call, DWORD error);

// Sets the last error, and returns the value for failure.
template <typename Result>
Result Fail(DWORD error, Result result) {
    SetLastError(error);
    return result;
}

// Clears all faults and counters.
void ResetFaults();

// Sends a line to the device's report function.
void Report(const std::string& line);

}  // namespace host
