// SPDX-License-Identifier: MIT
#pragma once

class Library;

// Does what an installer does: registers the library if none is registered, and writes the initial settings
// that are missing. Throws ScriptError.
void SetUpDevice(Library& library);
