// SPDX-License-Identifier: MIT
#pragma once

class Library;

// What an installer does on the device: registers the library where none is registered, and writes the
// settings that it begins with and lacks. Throws ScriptError when that cannot be done.
void SetUpDevice(Library& library);
