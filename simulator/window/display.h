// SPDX-License-Identifier: MIT
#pragma once

// Connects SDL to the desktop. The connection ends with the process: taking SDL down before would unload
// libraries that still hold memory of their own. Throws std::runtime_error, which says what to do instead,
// where no desktop can be reached.
void ConnectToDisplay();
