// SPDX-License-Identifier: MIT
// The program's operator new, which AllocationSweep makes fail. Linked where a test uses the sweep.
#include <dlfcn.h>
#include <unwind.h>

#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <new>
#include <string_view>

#include "fault_sweep.h"

namespace test {
namespace {

unsigned g_countdown = 0;  // the allocation that brings it to 0 fails; 0 when nothing is to fail

enum class Origin { Unknown, OperatorNew, StandardLibrary, Program, Platform };

Origin FindOrigin(std::uintptr_t address) {
    Dl_info own;
    Dl_info info;
    if (!dladdr(reinterpret_cast<const void*>(&FindOrigin), &own) ||
        !dladdr(reinterpret_cast<const void*>(address), &info))
        return Origin::Platform;
    const std::string_view symbol = info.dli_sname ? info.dli_sname : "";
    if (symbol.starts_with("_Zn")) return Origin::OperatorNew;
    for (const std::string_view prefix : {"_ZNSt", "_ZNKSt", "_ZSt"}) {
        if (symbol.starts_with(prefix)) return Origin::StandardLibrary;
    }
    if (std::string_view(info.dli_fname).find("libstdc++") != std::string_view::npos) {
        return Origin::StandardLibrary;
    }
    return info.dli_fbase == own.dli_fbase ? Origin::Program : Origin::Platform;
}

// The look-up is slow, so answers are kept, each at the place that its address gives.
Origin OriginOf(std::uintptr_t address) {
    static struct {
        std::uintptr_t address;
        Origin origin;
    } known[8192];
    auto& entry = known[address % std::size(known)];
    if (entry.address != address) entry = {address, FindOrigin(address)};
    return entry.origin;
}

// Up from operator new, the first frame that is not the standard library's: its code is in everybody's
// module.
_Unwind_Reason_Code JudgeFrame(_Unwind_Context* context, void* argument) {
    auto& origin = *static_cast<Origin*>(argument);
    // One back: the return address of a call that never returns may lie behind its function.
    const Origin frame = OriginOf(_Unwind_GetIP(context) - 1);
    if (origin == Origin::Unknown && frame != Origin::OperatorNew) return _URC_NO_REASON;
    origin = frame;
    const bool isDecided = frame == Origin::Program || frame == Origin::Platform;
    return isDecided ? _URC_END_OF_STACK : _URC_NO_REASON;
}

// Does the program ask, and not the platform, whose calls may not be stopped half-way?
bool IsAskedByProgram() {
    Origin origin = Origin::Unknown;
    _Unwind_Backtrace(JudgeFrame, &origin);
    return origin == Origin::Program;
}

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

// All forms, as those of a sanitizer would not go together with these.
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
