// SPDX-License-Identifier: MIT
// The one place through which every host call that can fail passes.
#pragma once

#include <host_control.h>

namespace host {

// Counts the call; true when a test wants exactly this one to fail. The caller then takes its failure path.
[[nodiscard]] bool CallFails(Call call);
// As CallFails, and sets the last error to the given code when the call fails.
[[nodiscard]] bool CallFails(Call call, DWORD error);

// Nothing fails any more, and nothing is counted.
void ResetFaults();

// Sends a line to the device's report function.
void Report(const std::string& line);

}  // namespace host
