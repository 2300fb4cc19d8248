// SPDX-License-Identifier: MIT
#include "dump.h"

#include <unicode.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <iomanip>
#include <sstream>

#include "bitmap.h"
#include "skin_module.h"

namespace tlk {
namespace {

using View = std::span<const std::uint8_t>;

std::string Hex(unsigned value, int digits) {
    std::ostringstream text;
    text << std::hex << std::uppercase << std::setw(digits) << std::setfill('0') << value;
    return text.str();
}

// A character, or its number if it is invisible.
std::string Show(char16_t unit) {
    const bool isInvisible = unit <= u' ' || (unit >= 0x7F && unit <= 0xA0) || unit == 0xAD ||
                             (unit >= 0x2000 && unit <= 0x200F) || (unit >= 0x2028 && unit <= 0x202F) ||
                             (unit >= 0x2060 && unit <= 0x206F) || (unit >= 0xD800 && unit <= 0xF8FF) ||
                             unit == 0x3000 || unit >= 0xFEFF;
    if (unit == 0) return "none";
    return isInvisible ? "U+" + Hex(unit, 4) : unicode::ToUtf8(unit);
}

class Writer {
public:
    explicit Writer(const Module& module) {
        DumpFacts(module.GetFacts());
        for (const Module::Entry& entry : module.Entries())
            DumpEntry(entry);
    }

    std::string Take() const { return m_out.str(); }

private:
    void DumpFacts(const Module::Facts& facts) {
        m_out << "file of " << facts.fileSize << " bytes: " << (facts.isLibrary ? "library" : "program")
              << " for " << ProcessorName(facts.machine) << ", "
              << (facts.entryPoint == 0 ? "no entry point" : "entry point 0x" + Hex(facts.entryPoint, 8))
              << ", " << (facts.timeStamp == 0 ? "no time stamp" : "time stamp 0x" + Hex(facts.timeStamp, 8))
              << '\n';
    }

    void DumpEntry(const Module::Entry& entry) {
        std::string name = entry.name;
        std::ranges::transform(name, name.begin(),
                               [](unsigned char letter) { return static_cast<char>(std::toupper(letter)); });
        if (entry.type == "#2")
            DumpBitmap(name, entry);
        else if (entry.type == "RC_DATA")
            DumpData(name, entry);
        else
            m_out << "unknown type " << entry.type << ", " << entry.name << Language(entry) << ": "
                  << entry.data.size() << " bytes\n";
    }

    // Most resources have no language.
    static std::string Language(const Module::Entry& entry) {
        return entry.language == 0 ? "" : " (language 0x" + Hex(entry.language, 4) + ")";
    }

    // Describes the header; whether the pixels are complete is up to the check.
    void DumpBitmap(const std::string& name, const Module::Entry& entry) {
        m_out << "bitmap " << name << Language(entry) << ": ";
        const auto header = ReadBitmapHeader(entry.data);
        if (!header) {
            m_out << "damaged, " << entry.data.size() << " bytes\n";
            return;
        }
        m_out << header->width << " x " << std::abs(header->rows) << " pixels of " << header->depth
              << (header->depth == 1 ? " bit" : " bits") << (header->isCompressed ? ", compressed" : "")
              << (header->rows < 0 ? ", top row first" : "") << ", " << entry.data.size() << " bytes\n";
    }

    void DumpData(const std::string& name, const Module::Entry& entry) {
        m_out << "data " << name << Language(entry) << ": ";
        const bool isLayout =
            std::ranges::any_of(kBoards, [&name](BoardKind board) { return LayoutResource(board) == name; });
        if (isLayout)
            DumpLayout(entry.data);
        else if (name == "CAPS_RECT")
            DumpCapsRect(entry.data);
        else if (name == "LOCALE_CHARSET")
            DumpLocale(entry.data);
        else
            m_out << (name == "SWIPE_ONLY" ? "for strokes only, " : "unknown, ") << entry.data.size()
                  << " bytes\n";
    }

    void DumpLayout(View bytes) {
        const auto big = [&bytes](std::size_t offset) { return bytes[offset] << 8 | bytes[offset + 1]; };
        m_out << bytes.size() / kRecordSize << " records" << Rest(bytes.size() % kRecordSize) << '\n';
        for (std::size_t at = 0; at + kRecordSize <= bytes.size(); at += kRecordSize) {
            const auto key = static_cast<std::uint16_t>(big(at));
            m_out << "    " << std::setw(3) << key << ' ' << KeyName(m_characters, key) << ": " << big(at + 4)
                  << ',' << big(at + 6) << " to " << big(at + 8) << ',' << big(at + 10);
            if (big(at + 2) != 0) m_out << ", bitmap value " << big(at + 2);
            if (*Get32(bytes, at + 12) != 0) m_out << ", reserved 0x" << Hex(*Get32(bytes, at + 12), 8);
            m_out << '\n';
        }
    }

    void DumpCapsRect(View bytes) {
        if (bytes.size() < 16) {
            m_out << "damaged, " << bytes.size() << " bytes\n";
            return;
        }
        const auto edge = [&bytes](std::size_t i) { return static_cast<std::int32_t>(*Get32(bytes, i * 4)); };
        m_out << edge(0) << ',' << edge(1) << " to " << edge(2) << ',' << edge(3) << Rest(bytes.size() - 16)
              << '\n';
    }

    // Language 2 beside language 1 of the same key.
    void DumpLocale(View bytes) {
        if (bytes.size() < kLocaleHeaderSize) {
            m_out << "damaged, " << bytes.size() << " bytes\n";
            return;
        }
        const View groups = bytes.subspan(kLocaleHeaderSize);
        m_out << groups.size() / kGroupSize << " keys of language 2" << Rest(groups.size() % kGroupSize)
              << "; small, large, umlaut small, umlaut large\n";
        for (std::size_t at = 0; at + kGroupSize <= groups.size(); at += kGroupSize) {
            const std::size_t key = kFirstCharacter + at / kGroupSize;
            m_out << "    " << std::setw(3) << key << ' '
                  << (key <= 0xFFFF ? KeyName(m_characters, static_cast<std::uint16_t>(key)) : "") << ":";
            for (std::size_t i = 0; i < kGroupSize; i += 2)
                m_out << ' ' << Show(static_cast<char16_t>(*Get16(groups, at + i)));
            m_out << '\n';
        }
    }

    static std::string Rest(std::size_t bytes) {
        return bytes == 0 ? "" : " and " + std::to_string(bytes) + " bytes more";
    }

    const CharacterTable m_characters = BuiltInCharacters();
    std::ostringstream m_out;
};

}  // namespace

std::string Dump(const Module& module) { return Writer(module).Take(); }

}  // namespace tlk
