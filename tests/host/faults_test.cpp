// SPDX-License-Identifier: MIT
#include <host_control.h>
#include <test_support.h>

#include <gtest/gtest.h>

namespace {

TEST(Faults, TheNthCallFromNowFailsOnce) {
    EXPECT_FALSE(DeleteFileW(TEXT("\\absent")));
    host::FailCall(host::Call::DeleteFile, 2);
    EXPECT_FALSE(DeleteFileW(TEXT("\\absent")));
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
    EXPECT_FALSE(DeleteFileW(TEXT("\\absent")));
    EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
    EXPECT_FALSE(DeleteFileW(TEXT("\\absent")));
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(host::CallCount(host::Call::DeleteFile), 4u);
}

TEST(Faults, NothingStaysOfATestBefore) {
    EXPECT_EQ(host::CallCount(host::Call::DeleteFile), 0u);
    host::FailCall(host::Call::DeleteFile);
    host::ClearFaults();
    EXPECT_FALSE(DeleteFileW(TEXT("\\absent")));
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
}

// The section whose own mutex could not be made has to exclude all the same.
TEST(Faults, ALockThatCouldNotBeMadeStillLocks) {
    host::FailCall(host::Call::InitializeLock);
    CRITICAL_SECTION section;
    InitializeCriticalSection(&section);
    EnterCriticalSection(&section);
    EnterCriticalSection(&section);
    LeaveCriticalSection(&section);
    LeaveCriticalSection(&section);
    DeleteCriticalSection(&section);
}

TEST(Handles, ArePlatformsWhereItSays) {
    test::WriteDeviceFile("a", "");
    WIN32_FIND_DATAW data;
    HANDLE own = INVALID_HANDLE_VALUE;
    {
        const host::PlatformScope platform;
        own = FindFirstFileW(TEXT("\\*"), &data);
    }
    const HANDLE product = FindFirstFileW(TEXT("\\*"), &data);
    ASSERT_NE(own, INVALID_HANDLE_VALUE);
    EXPECT_EQ(host::CountHandles().finds, 1);
    EXPECT_TRUE(FindClose(product));
    EXPECT_EQ(host::CountHandles().finds, 0);
    EXPECT_TRUE(FindClose(own));
}

}  // namespace
