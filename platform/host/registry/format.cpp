// SPDX-License-Identifier: MIT
#include "registry/file.h"

#include <unicode.h>

#include <cstdio>
#include <cstring>

namespace host {
namespace {

constexpr std::size_t kMaxHexLine = 78;  // characters, as editors break their lines

void AppendQuoted(std::string& out, std::u16string_view text) {
    out += '"';
    for (const char c : unicode::ToUtf8(text)) {
        if (c == '"' || c == '\\') out += '\\';
        out += c;
    }
    out += '"';
}

void AppendHex(std::string& out, std::uint32_t value, int digits) {
    char text[9];
    std::snprintf(text, sizeof(text), "%0*x", digits, value);
    out += text;
}

// The text of a string that can be written in quotes: one line of text and one null.
std::optional<std::u16string> PlainText(const RegistryValue& value) {
    const std::size_t size = value.data.size();
    if (value.type != REG_SZ || size < sizeof(WCHAR) || size % sizeof(WCHAR) != 0) return std::nullopt;
    std::u16string text(size / sizeof(WCHAR), u'\0');
    std::memcpy(text.data(), value.data.data(), size);
    if (text.back() != u'\0') return std::nullopt;
    text.pop_back();
    for (const WCHAR unit : text)
        if (unit < 0x20) return std::nullopt;
    if (!unicode::IsWellFormed(text)) return std::nullopt;
    return text;
}

void AppendBytes(std::string& out, const RegistryValue& value, std::size_t lineStart) {
    if (value.type == REG_BINARY) {
        out += "hex:";
    } else {
        out += "hex(";
        AppendHex(out, value.type, 1);
        out += "):";
    }
    for (std::size_t i = 0; i < value.data.size(); ++i) {
        if (i > 0) out += ',';
        if (out.size() - lineStart > kMaxHexLine - 3) {
            out += "\\\r\n";
            lineStart = out.size();
            out += "  ";
        }
        AppendHex(out, value.data[i], 2);
    }
}

void AppendValue(std::string& out, const RegistryValue& value) {
    const std::size_t lineStart = out.size();
    if (value.name.empty())
        out += '@';
    else
        AppendQuoted(out, value.name);
    out += '=';
    if (const std::optional<std::u16string> text = PlainText(value)) {
        AppendQuoted(out, *text);
    } else if (std::uint32_t number = 0; value.type == REG_DWORD && value.data.size() == sizeof(number)) {
        std::memcpy(&number, value.data.data(), sizeof(number));
        out += "dword:";
        AppendHex(out, number, 8);
    } else {
        AppendBytes(out, value, lineStart);
    }
    out += "\r\n";
}

// Each key gets a line, as a key without values and subkeys must persist.
void AppendKey(std::string& out, const RegistryKey& key, const std::string& path) {
    out += "\r\n[" + path + "]\r\n";
    for (const auto& [foldedName, value] : key.values)
        AppendValue(out, value);
    for (const auto& [foldedName, subkey] : key.subkeys)
        AppendKey(out, *subkey, path + '\\' + unicode::ToUtf8(subkey->name));
}

}  // namespace

std::string FormatRegistryFile(const RegistryTree& tree) {
    std::string out = "Windows Registry Editor Version 5.00\r\n";
    for (const RegistryRoot root :
         {RegistryRoot::ClassesRoot, RegistryRoot::CurrentUser, RegistryRoot::LocalMachine}) {
        const RegistryKey& key = *tree.Root(root);
        if (!key.values.empty() || !key.subkeys.empty()) AppendKey(out, key, unicode::ToUtf8(key.name));
    }
    return out;
}

}  // namespace host
