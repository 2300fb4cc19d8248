// SPDX-License-Identifier: MIT
// The program's operator new, which AllocationSweep makes fail. Linked into programs that use the sweep.
#include <cstdlib>
#include <new>

#include "device_side.h"
#include "fault_sweep.h"

namespace test {
namespace {

unsigned g_countdown = 0;  // the allocation that brings it to 0 fails; 0: none fails

bool FailsNow() { return g_countdown > 0 && IsAskedByProgram() && --g_countdown == 0; }

}  // namespace

bool AllocationSweep::Next() {
    if (!m_hit) return false;
    ++m_occurrence;
    m_hit = false;
    return true;
}

void AllocationSweep::Arm() { g_countdown = m_occurrence; }

void AllocationSweep::Disarm() {
    m_hit = g_countdown == 0;
    g_countdown = 0;
}

std::string AllocationSweep::Describe() const { return "allocation number " + std::to_string(m_occurrence); }

}  // namespace test

void* operator new(std::size_t size) {
    if (test::FailsNow()) throw std::bad_alloc();
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (!memory) throw std::bad_alloc();
    return memory;
}

// All forms, as those of a sanitizer do not match these.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return operator new(size);
    } catch (...) {
        return nullptr;
    }
}
void* operator new[](std::size_t size) { return operator new(size); }
void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept { return operator new(size, tag); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
