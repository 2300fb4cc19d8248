// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstring>
#include <string_view>

#include "controls/dialog_template.h"

namespace {

using host::DialogTemplate;
using host::ReadDialogTemplate;

class Bytes {
public:
    template <typename Sequence = std::initializer_list<int>>
    Bytes& Words(const Sequence& values) {
        for (const auto value : values)
            m_bytes.insert(m_bytes.end(), {static_cast<BYTE>(value), static_cast<BYTE>(value >> 8)});
        return *this;
    }
    Bytes& Double(DWORD value) {
        return Words({static_cast<int>(value & 0xFFFF), static_cast<int>(value >> 16)});
    }
    Bytes& Text(std::u16string_view text) { return Words(text).Words({0}); }
    Bytes& Align() {
        m_bytes.resize((m_bytes.size() + 3) / 4 * 4);
        return *this;
    }
    const std::vector<BYTE>& Get() const { return m_bytes; }

private:
    std::vector<BYTE> m_bytes;
};

// A dialog with controls of all forms.
std::vector<BYTE> Sample(DWORD style = WS_POPUP | DS_SETFONT) {
    Bytes bytes;
    bytes.Double(style).Double(0).Words({3, 1, -2, 146, 160, 0, 0}).Text(TEXT("Hello"));
    if (style & DS_SETFONT) bytes.Words({8}).Text(TEXT("System"));
    bytes.Align().Double(WS_CHILD).Double(1).Words({4, 8, 12, 16, 202, 0xFFFF, 0x85, 0, 0});
    bytes.Align().Double(WS_CHILD).Double(0).Words({0, 0, 9, 9, 0xFFFF}).Text(TEXT("BUTTON"));
    bytes.Text(TEXT("+")).Words({6, 0xAAAA, 0xBBBB});
    bytes.Align().Double(WS_CHILD).Double(0).Words({0, 0, 9, 9, 7, 0xFFFF, 0x82, 0xFFFF, 3, 0});
    return bytes.Get();
}

TEST(DialogTemplates, EveryFieldIsRead) {
    const std::optional<DialogTemplate> dialog = ReadDialogTemplate(Sample());
    ASSERT_TRUE(dialog);
    EXPECT_EQ(dialog->title, TEXT("Hello"));
    EXPECT_EQ(dialog->place.y, -2);
    EXPECT_EQ(dialog->place.height, 160);
    EXPECT_EQ(dialog->pointSize, 8);
    EXPECT_EQ(dialog->faceName, TEXT("System"));
    ASSERT_EQ(dialog->controls.size(), 3u);
    const host::ControlTemplate& combo = dialog->controls[0];
    EXPECT_EQ(combo.classAtom, 0x85);
    EXPECT_EQ(combo.id, 202);
    EXPECT_EQ(combo.extendedStyle, 1u);
    EXPECT_EQ(combo.place.width, 12);
    EXPECT_EQ(dialog->controls[1].className, TEXT("BUTTON"));
    EXPECT_EQ(dialog->controls[1].text, TEXT("+"));
    EXPECT_EQ(dialog->controls[1].id, 0xFFFF);
    EXPECT_EQ(dialog->controls[2].id, 7);
    EXPECT_EQ(dialog->controls[2].text, TEXT(""));
}

TEST(DialogTemplates, UnitsScaleWithTheFontAndTruncate) {
    std::optional<DialogTemplate> dialog = ReadDialogTemplate(Sample());
    ASSERT_TRUE(dialog);
    dialog->Scale({7, 14});
    EXPECT_EQ(dialog->place.width, 146 * 7 / 4);
    EXPECT_EQ(dialog->place.height, 160 * 14 / 8);
    EXPECT_EQ(dialog->controls[1].place.width, 15);
    EXPECT_EQ(dialog->controls[1].place.height, 15);
}

TEST(DialogTemplates, FontIsOptional) {
    const std::optional<DialogTemplate> dialog = ReadDialogTemplate(Sample(WS_POPUP));
    ASSERT_TRUE(dialog);
    EXPECT_EQ(dialog->pointSize, 0);
    EXPECT_EQ(dialog->controls.size(), 3u);
}

TEST(DialogTemplates, AnyTruncationIsRefused) {
    const std::vector<BYTE> whole = Sample();
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const std::vector<BYTE> cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_FALSE(ReadDialogTemplate(cut)) << size;
    }
}

TEST(DialogTemplates, UnsupportedFormsAreRefused) {
    const auto put = [](std::size_t offset, WORD value) {
        std::vector<BYTE> bytes = Sample();
        std::memcpy(&bytes[offset], &value, sizeof value);
        return ReadDialogTemplate(bytes).has_value();
    };
    EXPECT_TRUE(put(8, 3));
    EXPECT_FALSE(put(2, 0xFFFF)) << "the extended form";
    EXPECT_FALSE(put(8, 4)) << "more controls than there are";
    EXPECT_FALSE(put(8, 0xFFFF));
    EXPECT_FALSE(put(18, 0xFFFF)) << "a menu";
    EXPECT_FALSE(put(20, TEXT('x'))) << "a class";
}

TEST(DialogTemplates, ChangedBytesNeverBreakTheReader) {
    const std::vector<BYTE> whole = Sample();
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (const int value : {0x00, 0x01, 0x7F, 0x80, 0xFF}) {
            std::vector<BYTE> changed = whole;
            changed[at] = static_cast<BYTE>(value);
            std::optional<DialogTemplate> dialog = ReadDialogTemplate(changed);
            if (!dialog) continue;
            dialog->Scale({400, 500});
            EXPECT_LE(dialog->controls.size(), 3u);
        }
    }
}

}  // namespace
