// SPDX-License-Identifier: MIT
// The text of the application as a file of the device, \My Documents\Notes.txt: plain text in UTF-8.
#pragma once

#include <string>

// Empty if there is no file. Throws ScriptError if the file cannot be shown: then it must not be written.
std::u16string ReadNotes();
// Replaces the whole file. Throws ScriptError.
void WriteNotes(std::u16string_view text);
