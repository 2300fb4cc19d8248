// SPDX-License-Identifier: MIT
#pragma once

// Connects SDL to the desktop until the process ends: quitting SDL earlier would unload libraries that still
// hold memory. Without a desktop throws std::runtime_error, which says what to do instead.
void ConnectToDisplay();
