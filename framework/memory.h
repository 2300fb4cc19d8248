// SPDX-License-Identifier: MIT
// Catches std::bad_alloc at the edges: no operation that others call lets an exception out.
#pragma once

// Runs something that allocates. False when memory ran out; what was done before that stays done.
template <typename Operation>
bool EnoughMemory(Operation&& operation) noexcept {
    try {
        operation();
        return true;
    } catch (...) {
        return false;
    }
}
