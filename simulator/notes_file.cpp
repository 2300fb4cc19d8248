// SPDX-License-Identifier: MIT
#include "notes_file.h"

#include <host_control.h>
#include <unicode.h>

#include <optional>

#include "device_files.h"
#include "script.h"

namespace {

constexpr char16_t kPath[] = u"\\My Documents\\Notes.txt";
constexpr std::size_t kGreatestSize = 256 << 10;  // bytes; an edit field lays out its whole text at each key

}  // namespace

std::u16string ReadNotes() {
    if (!HasDeviceFile(kPath)) return {};
    const std::string bytes = ReadDeviceFile(kPath);
    std::optional<std::u16string> text = unicode::FromUtf8(bytes);
    if (!text || bytes.size() > kGreatestSize) {
        throw ScriptError(host::HostPath(kPath).string() +
                          (text ? " is too long to be shown" : " is not UTF-8") +
                          ": the file is left alone, and what you type is not saved");
    }
    // Editors on PCs write a byte order mark and CR.
    if (text->starts_with(u'\uFEFF')) text->erase(0, 1);
    std::erase(*text, u'\r');
    return *text;
}

void WriteNotes(std::u16string_view text) { WriteDeviceFile(kPath, unicode::ToUtf8(text)); }
