// SPDX-License-Identifier: MIT
#include "controls/dialog_template.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "device/faults.h"

namespace host {

namespace {

constexpr WORD kExtendedForm = 0xFFFF;  // second word of an extended template
constexpr WORD kOrdinal = 0xFFFF;       // a number follows instead of a text
constexpr WORD kMaxControls = 255;      // as on the platform
constexpr int kUnitsPerWidth = 4;
constexpr int kUnitsPerHeight = 8;

// A text, or a number in its place.
struct Name {
    bool isOrdinal = false;
    WORD ordinal = 0;
    std::u16string text;
};

// Reads little-endian fields one after the other. After the end of the data all fields read as 0.
class Reader {
public:
    explicit Reader(std::span<const BYTE> bytes) : m_bytes(bytes) {}

    bool HasFailed() const { return m_failed; }

    WORD Word() { return Take<WORD>(); }
    SHORT Short() { return Take<SHORT>(); }
    DWORD Double() { return Take<DWORD>(); }

    std::u16string Text() {
        std::u16string text;
        for (WORD unit = Word(); unit != 0; unit = Word())
            text.push_back(static_cast<char16_t>(unit));
        return text;
    }

    Name NameOrOrdinal() {
        Name name;
        const std::size_t start = m_at;
        name.isOrdinal = Word() == kOrdinal;
        if (name.isOrdinal) {
            name.ordinal = Word();
        } else if (!m_failed) {
            m_at = start;
            name.text = Text();
        }
        return name;
    }

    void Skip(std::size_t count) {
        if (count > m_bytes.size() - m_at)
            m_failed = true;
        else
            m_at += count;
    }

    // Every control begins at a multiple of four.
    void AlignToDouble() { Skip((4 - m_at % 4) % 4); }

private:
    template <typename Value>
    Value Take() {
        Value value = 0;
        const std::size_t at = m_at;
        Skip(sizeof value);
        if (m_failed) return 0;
        std::memcpy(&value, m_bytes.data() + at, sizeof value);
        return value;
    }

    std::span<const BYTE> m_bytes;
    std::size_t m_at = 0;
    bool m_failed = false;
};

Placement ReadPlacement(Reader& reader) {
    Placement place;
    place.x = reader.Short();
    place.y = reader.Short();
    place.width = reader.Short();
    place.height = reader.Short();
    return place;
}

ControlTemplate ReadControl(Reader& reader) {
    ControlTemplate control;
    reader.AlignToDouble();
    control.style = reader.Double();
    control.extendedStyle = reader.Double();
    control.place = ReadPlacement(reader);
    control.id = reader.Word();
    Name className = reader.NameOrOrdinal();
    control.classAtom = className.isOrdinal ? className.ordinal : ATOM{0};
    control.className = std::move(className.text);
    control.text = reader.NameOrOrdinal().text;
    // Creation data, which no control here uses; the size includes its own field.
    const WORD dataSize = reader.Word();
    if (dataSize > sizeof(WORD)) reader.Skip(dataSize - sizeof(WORD));
    return control;
}

bool IsExtended(std::span<const BYTE> bytes) {
    Reader reader(bytes);
    reader.Word();
    return reader.Word() == kExtendedForm;
}

void ScalePlacement(Placement& place, SIZE base) {
    place.x = place.x * base.cx / kUnitsPerWidth;
    place.y = place.y * base.cy / kUnitsPerHeight;
    place.width = place.width * base.cx / kUnitsPerWidth;
    place.height = place.height * base.cy / kUnitsPerHeight;
}

}  // namespace

void DialogTemplate::Scale(SIZE baseUnits) {
    ScalePlacement(place, baseUnits);
    for (ControlTemplate& control : controls)
        ScalePlacement(control.place, baseUnits);
}

std::optional<DialogTemplate> ReadDialogTemplate(std::span<const BYTE> bytes) {
    if (IsExtended(bytes)) return Fail(ERROR_CALL_NOT_IMPLEMENTED, std::nullopt);
    Reader reader(bytes);
    DialogTemplate dialog;
    dialog.style = reader.Double();
    dialog.extendedStyle = reader.Double();
    const WORD count = reader.Word();
    dialog.place = ReadPlacement(reader);
    const Name menu = reader.NameOrOrdinal();
    const Name className = reader.NameOrOrdinal();
    dialog.title = reader.Text();
    if (dialog.style & DS_SETFONT) {
        dialog.pointSize = reader.Word();
        dialog.faceName = reader.Text();
    }
    for (WORD i = 0; i < std::min(count, kMaxControls) && !reader.HasFailed(); ++i)
        dialog.controls.push_back(ReadControl(reader));
    if (reader.HasFailed() || count > kMaxControls) return Fail(ERROR_INVALID_PARAMETER, std::nullopt);
    const auto isGiven = [](const Name& name) { return name.isOrdinal || !name.text.empty(); };
    if (isGiven(menu) || isGiven(className)) return Fail(ERROR_CALL_NOT_IMPLEMENTED, std::nullopt);
    return dialog;
}

}  // namespace host
