// SPDX-License-Identifier: MIT
// Where a lack of memory ends: no operation that others call lets an exception out.
#pragma once

// Runs something that allocates. False when memory ran out on the way; what was done before stays done.
template <typename Operation>
bool EnoughMemory(Operation&& operation) noexcept {
    try {
        operation();
        return true;
    } catch (...) {
        return false;
    }
}
