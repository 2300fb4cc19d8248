// SPDX-License-Identifier: MIT
#include <windows.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using WideString = std::basic_string<WCHAR>;

constexpr UINT kWestern = 1252;

// Converts into a buffer of this many characters; "?" if the call fails.
WideString Convert(const std::string& bytes, int characters) {
    WideString text(40, TEXT('#'));
    const int length = MultiByteToWideChar(kWestern, 0, bytes.data(), static_cast<int>(bytes.size()),
                                           text.data(), characters);
    if (length == 0) return TEXT("?");
    EXPECT_EQ(text[static_cast<std::size_t>(length)], TEXT('#'));
    return text.substr(0, static_cast<std::size_t>(length));
}

TEST(Strings, CompareByCodeUnitAndIgnoringCase) {
    EXPECT_EQ(lstrcmpW(TEXT("Skin"), TEXT("Skin")), 0);
    EXPECT_NE(lstrcmpW(TEXT("Skin"), TEXT("skin")), 0);
    EXPECT_EQ(lstrcmpiW(TEXT("\\Windows\\\u00C4\u0416.tlk"), TEXT("\\WINDOWS\\\u00E4\u0436.TLK")), 0);
    EXPECT_LT(lstrcmpiW(TEXT("a"), TEXT("B")), 0);
    EXPECT_GT(lstrcmpiW(TEXT("ab"), TEXT("A")), 0);
}

TEST(Strings, WesternTextBecomesWide) {
    EXPECT_EQ(Convert("a\x80\x9F\xFC", 40), TEXT("a\u20AC\u0178\u00FC"));
    EXPECT_EQ(Convert(std::string("a\0b", 3), 3), WideString(TEXT("a\0b"), 3));
    EXPECT_EQ(Convert("abc", 2), TEXT("?"));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
    EXPECT_EQ(Convert("", 2), TEXT("?"));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    EXPECT_EQ(MultiByteToWideChar(kWestern, 0, "abc", -1, nullptr, 0), 4);
}

}  // namespace
