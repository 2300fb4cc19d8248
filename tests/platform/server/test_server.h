// SPDX-License-Identifier: MIT
// A library with one class, for tests of loading and activation. It reads its orders from and writes its
// state to values of HKEY_LOCAL_MACHINE\TestServer, which outlive it.
#pragma once

#include <unknwn.h>
#include <windows.h>

inline constexpr CLSID kTestServerClass = {
    0x71D0A9C4, 0xE26F, 0x4D1B, {0x93, 0x5C, 0x0A, 0x44, 0x6B, 0xF2, 0x17, 0xDE}};
#define TEST_SERVER_KEY TEXT("TestServer")
// 1 while it is loaded, 0 after it was detached.
#define TEST_SERVER_ATTACHED TEXT("Attached")
// If not 0, the library refuses to be attached.
#define TEST_SERVER_REFUSE TEXT("Refuse")
