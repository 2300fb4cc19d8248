// SPDX-License-Identifier: MIT
#pragma once

#include <string>

// "08:15" by the PC's clock.
std::string TimeOfDay();
// Slightly more than the time to the next full minute.
int MillisecondsToNextMinute();
