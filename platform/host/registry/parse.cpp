// SPDX-License-Identifier: MIT
#include "registry/file.h"

#include "device/strings.h"

#include <unicode.h>

#include <algorithm>
#include <charconv>
#include <utility>

namespace host {
namespace {

constexpr std::string_view kHeader = "Windows Registry Editor Version 5.00";
constexpr std::string_view kBlanks = " \t";

std::string_view Trim(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// One to maxDigits hexadecimal digits and nothing else.
std::optional<DWORD> ReadHex(std::string_view digits, std::size_t maxDigits) {
    DWORD number = 0;
    const char* end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, number, 16);
    if (error != std::errc() || stop != end || digits.size() > maxDigits) return std::nullopt;
    return number;
}

// "2a,00,ff", also with blanks around each byte; empty for no bytes.
std::optional<std::vector<BYTE>> ReadBytes(std::string_view list) {
    std::vector<BYTE> bytes;
    list = Trim(list);
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(','), list.size());
        const std::optional<DWORD> byte = ReadHex(Trim(list.substr(0, end)), 2);
        if (!byte || end + 1 == list.size()) return std::nullopt;
        bytes.push_back(static_cast<BYTE>(*byte));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return bytes;
}

// Takes a quoted text off the front; "\\" and "\"" are the only escapes.
std::optional<std::u16string> TakeQuoted(std::string_view& line) {
    if (!line.starts_with('"')) return std::nullopt;
    std::string text;
    for (std::size_t i = 1; i < line.size(); ++i) {
        if (line[i] == '"') {
            line.remove_prefix(i + 1);
            return unicode::FromUtf8(text);
        }
        if (line[i] == '\\') {
            ++i;
            if (i == line.size() || (line[i] != '"' && line[i] != '\\')) return std::nullopt;
        }
        text += line[i];
    }
    return std::nullopt;
}

std::vector<BYTE> NumberBytes(DWORD number) {
    const auto* bytes = reinterpret_cast<const BYTE*>(&number);
    return {bytes, bytes + sizeof(number)};
}

class Parser {
public:
    explicit Parser(std::string_view text) : m_text(text) {}

    std::variant<RegistryTree, RegistryFileError> Parse() {
        if (m_text.starts_with("\xEF\xBB\xBF")) m_text.remove_prefix(3);
        if (m_text.starts_with("\xFF\xFE")) return RegistryFileError{1, "is UTF-16, save it as UTF-8"};
        bool headerSeen = false;
        while (m_error.empty() && TakeLine()) {
            const std::string_view line = Trim(m_line);
            if (line.empty() || line.starts_with(';')) continue;
            if (!headerSeen) {
                headerSeen = line == kHeader;
                if (!headerSeen) break;
            } else if (line.starts_with('[')) {
                ParseKey(line);
            } else {
                ParseValue(line);
            }
        }
        if (m_error.empty() && !headerSeen) m_error = "is not \"" + std::string(kHeader) + "\"";
        if (!m_error.empty()) return RegistryFileError{std::max<std::size_t>(m_lineNumber, 1), m_error};
        return std::move(m_tree);
    }

private:
    // Takes the next line into m_line, with the lines that continue it; m_lineNumber is that of the first.
    bool TakeLine() {
        if (m_text.empty()) return false;
        m_lineNumber = m_nextLineNumber;
        m_line = TakePhysicalLine();
        while (IsContinued(m_line) && !m_text.empty()) {
            m_line.resize(m_line.find_last_of('\\'));
            m_line += Trim(TakePhysicalLine());
        }
        return true;
    }

    std::string_view TakePhysicalLine() {
        const std::size_t end = std::min(m_text.find('\n'), m_text.size());
        std::string_view line = m_text.substr(0, end);
        m_text.remove_prefix(std::min(end + 1, m_text.size()));
        ++m_nextLineNumber;
        if (line.ends_with('\r')) line.remove_suffix(1);
        return line;
    }

    // Only values continue in the next line. A quoted text ends with a quote, never with "\".
    static bool IsContinued(std::string_view line) {
        line = Trim(line);
        return line.ends_with('\\') && (line.starts_with('"') || line.starts_with('@'));
    }

    // "[HKEY_...\name]", or "[-HKEY_...\name]" to delete it.
    void ParseKey(std::string_view line) {
        m_key = nullptr;
        if (!line.ends_with(']')) return Fail("a key without \"]\"");
        line = line.substr(1, line.size() - 2);
        const bool deletes = line.starts_with('-');
        if (deletes) line.remove_prefix(1);
        const std::optional<std::u16string> path = unicode::FromUtf8(line);
        if (!path) return Fail("a key that is no valid UTF-8");
        const std::size_t rootEnd = std::min(path->find(u'\\'), path->size());
        const std::shared_ptr<RegistryKey> root = FindRoot(path->substr(0, rootEnd));
        if (!root) return Fail("an unknown root key");
        const std::u16string subkey = path->substr(rootEnd);
        if (deletes) {
            if (SplitKeyPath(subkey).empty()) return Fail("a root key cannot be deleted");
            DeleteKey(*root, subkey);
            return;
        }
        bool created = false;
        m_key = MakeKey(root, subkey, created);
        if (!m_key) Fail("a key's name is too long, too deep or has characters that cannot stand in it");
    }

    std::shared_ptr<RegistryKey> FindRoot(std::u16string_view name) const {
        for (std::size_t i = 0; i < kRegistryRootNames.size(); ++i)
            if (EqualIgnoringCase(name, kRegistryRootNames[i]))
                return m_tree.Root(static_cast<RegistryRoot>(i));
        return nullptr;
    }

    // name=data, the name in quotes or "@".
    void ParseValue(std::string_view line) {
        if (!m_key) return Fail("a value outside a key");
        RegistryValue value;
        if (line.starts_with('@')) {
            line.remove_prefix(1);
        } else {
            std::optional<std::u16string> name = TakeQuoted(line);
            if (!name || !IsValueName(*name)) return Fail("the name of a value cannot be understood");
            value.name = std::move(*name);
        }
        line = Trim(line);
        if (!line.starts_with('=')) return Fail("no \"=\" after the name of a value");
        ParseData(Trim(line.substr(1)), std::move(value));
    }

    void ParseData(std::string_view data, RegistryValue value) {
        if (data == "-") {
            m_key->values.erase(FoldCase(value.name));
            return;
        }
        const bool understood = data.starts_with('"')        ? ReadString(data, value)
                                : data.starts_with("dword:") ? ReadNumber(data.substr(6), value)
                                                             : ReadBinary(data, value);
        if (!understood) return Fail("the data of a value cannot be understood");
        SetValue(*m_key, std::move(value));
    }

    static bool ReadString(std::string_view data, RegistryValue& value) {
        const std::optional<std::u16string> text = TakeQuoted(data);
        if (!text || !data.empty()) return false;
        value.type = REG_SZ;
        value.data = TextBytes(*text);
        return true;
    }

    static bool ReadNumber(std::string_view digits, RegistryValue& value) {
        const std::optional<DWORD> number = ReadHex(Trim(digits), 8);
        if (!number) return false;
        value.type = REG_DWORD;
        value.data = NumberBytes(*number);
        return true;
    }

    // "hex:bytes" or "hex(type):bytes".
    static bool ReadBinary(std::string_view data, RegistryValue& value) {
        if (!data.starts_with("hex")) return false;
        data.remove_prefix(3);
        value.type = REG_BINARY;
        if (data.starts_with('(')) {
            const std::size_t end = data.find(')');
            if (end == std::string_view::npos) return false;
            const std::optional<DWORD> type = ReadHex(data.substr(1, end - 1), 8);
            if (!type) return false;
            value.type = *type;
            data.remove_prefix(end + 1);
        }
        if (!data.starts_with(':')) return false;
        std::optional<std::vector<BYTE>> bytes = ReadBytes(data.substr(1));
        if (!bytes) return false;
        value.data = std::move(*bytes);
        return true;
    }

    void Fail(std::string what) { m_error = std::move(what); }

    std::string_view m_text;
    std::string m_line;
    std::size_t m_lineNumber = 0;
    std::size_t m_nextLineNumber = 1;
    RegistryTree m_tree;
    std::shared_ptr<RegistryKey> m_key;  // of the following values
    std::string m_error;
};

}  // namespace

std::variant<RegistryTree, RegistryFileError> ParseRegistryFile(std::string_view text) {
    return Parser(text).Parse();
}

}  // namespace host
