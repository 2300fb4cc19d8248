// SPDX-License-Identifier: MIT
// Damaged version blocks. The undamaged one is that of the test library; its nodes are found by their keys.
#include "modules/version_block.h"

#include <windows.h>

#include <test_support.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using Bytes = std::vector<BYTE>;

constexpr LPCWSTR kLibrary = TEXT("\\Windows\\version.dll");
constexpr const WCHAR* kPaths[] = {u"\\",
                                   u"\\VarFileInfo\\Translation",
                                   u"\\StringFileInfo",
                                   u"\\StringFileInfo\\040904b0",
                                   u"\\StringFileInfo\\040904b0\\Comments",
                                   u"\\StringFileInfo\\040904B0\\ORIGINALFILENAME",
                                   u"\\StringFileInfo\\040904b0\\Absent",
                                   u""};

class VersionBlock : public testing::Test {
protected:
    VersionBlock() {
        test::CopyToDevice(TEST_VERSION, "Windows/version.dll");
        m_good.resize(GetFileVersionInfoSizeW(kLibrary, nullptr));
        GetFileVersionInfoW(kLibrary, 0, static_cast<DWORD>(m_good.size()), m_good.data());
    }

    // The undamaged block with another length (0) or value size (2) in the last node with this key.
    Bytes Bend(std::u16string_view key, std::size_t field, WORD value) const {
        const auto* first = reinterpret_cast<const BYTE*>(key.data());
        const auto found = std::find_end(m_good.begin(), m_good.end(), first, first + 2 * key.size());
        Bytes bent = m_good;
        PutWord(bent, static_cast<std::size_t>(found - m_good.begin()) - 6 + field, value);
        return bent;
    }
    static void PutWord(Bytes& bytes, std::size_t offset, std::size_t value) {
        bytes[offset] = static_cast<BYTE>(value & 0xFF);
        bytes[offset + 1] = static_cast<BYTE>(value >> 8);
    }

    // Queries everything; results must be inside the block. A sanitizer notices reads beyond the bytes.
    static void QueryAll(const Bytes& bytes) {
        const Bytes exact(bytes.begin(), bytes.end());
        for (const WCHAR* path : kPaths) {
            const auto value = host::FindVersionValue(exact, path);
            if (!value) continue;
            EXPECT_LE(value->offset, exact.size());
            EXPECT_LE(value->size, exact.size() - value->offset);
            EXPECT_EQ(value->offset % 2, 0u);
        }
    }
    static bool Finds(const Bytes& block, const std::u16string& name) {
        return host::FindVersionValue(block, u"\\StringFileInfo\\040904b0\\" + name).has_value();
    }

    Bytes m_good;
};

TEST_F(VersionBlock, StringsAreFoundByTheirWholePathIgnoringCase) {
    const std::pair<LPCWSTR, LPCWSTR> texts[] = {
        {u"\\stringfileinfo\\040904B0\\ORIGINALFILENAME", u"test_version.dll"},
        {u"\\StringFileInfo\\040704e4\\FileDescription", u"Zweite Sprache"},
        {u"\\StringFileInfo\\040904b0\\CompanyName", nullptr},
        {u"\\StringFileInfo\\040904b0\\File", nullptr},
        {u"\\StringFileInfo\\040704b0\\FileVersion", nullptr},
        {u"\\FileVersion", nullptr},
        {u"\\StringFileInfo\\040904b0\\FileVersion\\More", nullptr},
    };
    for (const auto& [path, text] : texts) {
        const auto value = host::FindVersionValue(m_good, path);
        ASSERT_EQ(value.has_value(), text != nullptr) << testing::PrintToString(path);
        if (!value) continue;
        const std::u16string found = reinterpret_cast<const WCHAR*>(m_good.data() + value->offset);
        EXPECT_EQ(found, text);
        EXPECT_EQ(value->size, found.size() + 1);
    }
}

TEST_F(VersionBlock, AnyPrefixAndAnyChangedByteIsHandled) {
    for (std::size_t size = 0; size < m_good.size(); ++size) {
        Bytes prefix(m_good.begin(), m_good.begin() + static_cast<std::ptrdiff_t>(size));
        QueryAll(prefix);
        // Truncated as for a caller's buffer that is too small.
        if (size >= 2) PutWord(prefix, 0, size);
        QueryAll(prefix);
        for (const int value : {0x00, 0x01, 0x02, 0x06, 0x7F, 0xFE, 0xFF}) {
            Bytes bent = m_good;
            bent[size] = static_cast<BYTE>(value);
            QueryAll(bent);
        }
    }
}

TEST_F(VersionBlock, TextsNeedTheirNullCharacter) {
    ASSERT_TRUE(Finds(m_good, u"OriginalFilename"));
    // Without its null: one beyond the value's size does not count.
    EXPECT_FALSE(Finds(Bend(u"OriginalFilename", 2, 16), u"OriginalFilename"));
    const auto comments = host::FindVersionValue(Bend(u"Comments", 2, 0), kPaths[4]);
    ASSERT_TRUE(comments) << "an empty text is its key's null character";
    EXPECT_EQ(comments->size, 0u);
    EXPECT_EQ(m_good[comments->offset] + m_good[comments->offset + 1], 0);
}

TEST_F(VersionBlock, ADamagedNodeHidesNoSound) {
    const Bytes valueTooLong = Bend(u"FileVersion", 2, 100);
    EXPECT_FALSE(Finds(valueTooLong, u"FileVersion"));
    EXPECT_TRUE(Finds(valueTooLong, u"OriginalFilename"));
    // Without a length the next one cannot be found.
    EXPECT_FALSE(Finds(Bend(u"FileVersion", 0, 0), u"OriginalFilename"));
}

TEST_F(VersionBlock, IsCutToTheCallersBuffer) {
    for (DWORD given = 2; given < m_good.size(); ++given) {
        Bytes block(given);
        ASSERT_TRUE(GetFileVersionInfoW(kLibrary, 0, given, block.data()));
        void* value = nullptr;
        UINT length = 0;
        VerQueryValueW(block.data(), kPaths[5], &value, &length);
        EXPECT_EQ(VerQueryValueW(block.data(), TEXT("\\"), &value, &length), given >= 40 + 52);
    }
    BYTE one[1];
    EXPECT_FALSE(GetFileVersionInfoW(TEXT("\\absent\\version.dll"), 0, 1, one));
    EXPECT_FALSE(GetFileVersionInfoW(kLibrary, 0, 1, one));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
    EXPECT_FALSE(VerQueryValueW(nullptr, TEXT("\\"), nullptr, nullptr));
}

}  // namespace
