// SPDX-License-Identifier: MIT
#include "modules/version_block.h"

#include <windows.h>

#include <test_support.h>

#include <gtest/gtest.h>

#include <utility>

namespace {

using Bytes = std::vector<BYTE>;

Bytes TextBytes(std::u16string_view text) {
    const auto* first = reinterpret_cast<const BYTE*>(text.data());
    return {first, first + text.size() * sizeof(WCHAR)};
}

void Append(Bytes& bytes, const Bytes& more) { bytes.insert(bytes.end(), more.begin(), more.end()); }
void Align(Bytes& bytes) { bytes.resize((bytes.size() + 3) / 4 * 4); }

void PutSize(Bytes& node, std::size_t size) {
    node[0] = static_cast<BYTE>(size & 0xFF);
    node[1] = static_cast<BYTE>(size >> 8);
}

enum class Type : WORD { Binary, Text };

// A node whose value has this declared size.
Bytes Node(std::u16string key, Type type, std::size_t size, const Bytes& value,
           const std::vector<Bytes>& children = {}) {
    const WCHAR header[] = {0, static_cast<WCHAR>(size), static_cast<WCHAR>(type)};
    Bytes node = TextBytes({header, 3});
    Append(node, TextBytes(key + u'\0'));
    Align(node);
    Append(node, value);
    for (const Bytes& child : children) {
        Align(node);
        Append(node, child);
    }
    PutSize(node, node.size());
    return node;
}

Bytes Text(std::u16string key, std::u16string_view text) {
    return Node(std::move(key), Type::Text, text.size(), TextBytes(text));
}

Bytes Block(const std::vector<Bytes>& strings) {
    const Bytes table = Node(u"040904b0", Type::Text, 0, {}, strings);
    const Bytes translation = Node(u"Translation", Type::Binary, 4, {9, 4, 0xB0, 4});
    return Node(u"VS_VERSION_INFO", Type::Binary, 52, Bytes(52, 1),
                {Node(u"StringFileInfo", Type::Text, 0, {}, {table}),
                 Node(u"VarFileInfo", Type::Text, 0, {}, {translation})});
}

Bytes GoodBlock() {
    return Block({Text(u"First", std::u16string_view(u"one\0", 4)),
                  Text(u"Second", std::u16string_view(u"second\0", 7))});
}

constexpr const WCHAR* kPaths[] = {u"\\",
                                   u"\\VarFileInfo\\Translation",
                                   u"\\StringFileInfo",
                                   u"\\StringFileInfo\\040904b0",
                                   u"\\StringFileInfo\\040904b0\\First",
                                   u"\\StringFileInfo\\040904B0\\SECOND",
                                   u"\\StringFileInfo\\040904b0\\Absent",
                                   u""};

// Queries everything; results must be inside the block. A sanitizer notices reads beyond the bytes.
void QueryAll(const Bytes& bytes) {
    const Bytes exact(bytes.begin(), bytes.end());
    for (const WCHAR* path : kPaths) {
        const auto value = host::FindVersionValue(exact, path);
        if (!value) continue;
        EXPECT_LE(value->offset, exact.size());
        EXPECT_LE(value->size, exact.size() - value->offset);
        EXPECT_EQ(value->offset % 2, 0u);
    }
}

bool Finds(const Bytes& block, std::u16string_view path) {
    return host::FindVersionValue(block, path).has_value();
}

TEST(VersionBlock, AnyPrefixIsHandled) {
    const Bytes good = GoodBlock();
    for (std::size_t size = 0; size <= good.size(); ++size) {
        Bytes prefix(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(size));
        QueryAll(prefix);
        // Truncated as for a caller's buffer that is too small.
        if (size < 2) continue;
        PutSize(prefix, size);
        QueryAll(prefix);
    }
}

TEST(VersionBlock, AnyChangedByteIsHandled) {
    const Bytes good = GoodBlock();
    for (std::size_t i = 0; i < good.size(); ++i) {
        for (const int value : {0x00, 0x01, 0x02, 0x06, 0x7F, 0xFE, 0xFF}) {
            Bytes bent = good;
            bent[i] = static_cast<BYTE>(value);
            QueryAll(bent);
        }
    }
}

TEST(VersionBlock, TextsNeedTheirNullCharacter) {
    constexpr std::u16string_view first = u"\\StringFileInfo\\040904b0\\First";
    EXPECT_TRUE(Finds(GoodBlock(), first));
    EXPECT_FALSE(Finds(Block({Text(u"First", u"open")}), first));
    // A null beyond the value's size does not count.
    EXPECT_FALSE(
        Finds(Block({Node(u"First", Type::Text, 2, TextBytes(std::u16string_view(u"ab\0", 3)))}), first));
}

TEST(VersionBlock, AnEmptyTextIsItsKeysNullCharacter) {
    const Bytes block = Block({Text(u"First", u"")});
    const auto value = host::FindVersionValue(block, u"\\StringFileInfo\\040904b0\\First");
    ASSERT_TRUE(value);
    EXPECT_EQ(value->size, 0u);
    EXPECT_EQ(block[value->offset], 0);
    EXPECT_EQ(block[value->offset + 1], 0);
}

TEST(VersionBlock, ADamagedNodeHidesNoIntactOne) {
    constexpr std::u16string_view second = u"\\StringFileInfo\\040904b0\\Second";
    const Bytes sound = Text(u"Second", std::u16string_view(u"x\0", 2));
    const Bytes valueTooLong = Node(u"First", Type::Text, 100, TextBytes(u"x"));
    EXPECT_TRUE(Finds(Block({valueTooLong, sound}), second));
    // Without a length the next one cannot be found.
    EXPECT_FALSE(Finds(Block({Bytes(8), sound}), second));
}

TEST(VersionBlock, IsTruncatedToTheCallersBuffer) {
    constexpr LPCWSTR path = TEXT("\\Windows\\version.dll");
    test::CopyToDevice(TEST_VERSION, "Windows/version.dll");
    const DWORD size = GetFileVersionInfoSizeW(path, nullptr);
    ASSERT_GT(size, 100u);
    for (DWORD given = 2; given < size; ++given) {
        Bytes block(given);
        ASSERT_TRUE(GetFileVersionInfoW(path, 0, given, block.data()));
        void* value = nullptr;
        UINT length = 0;
        VerQueryValueW(block.data(), TEXT("\\StringFileInfo\\040904b0\\OriginalFilename"), &value, &length);
        EXPECT_EQ(VerQueryValueW(block.data(), TEXT("\\"), &value, &length), given >= 40 + 52);
    }
    BYTE one[1];
    EXPECT_FALSE(GetFileVersionInfoW(path, 0, 1, one));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
    EXPECT_FALSE(VerQueryValueW(nullptr, TEXT("\\"), nullptr, nullptr));
}

}  // namespace
