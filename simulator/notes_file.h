// SPDX-License-Identifier: MIT
// The text of the application as a file of the device, \My Documents\Notes.txt: plain text in UTF-8.
#pragma once

#include <string>

// Empty where there is no file. Throws ScriptError when the file is there and cannot be shown: then it has to
// stay as it is.
std::u16string ReadNotes();
// Replaces the file as a whole. Throws ScriptError.
void WriteNotes(std::u16string_view text);
