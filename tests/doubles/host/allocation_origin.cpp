// SPDX-License-Identifier: MIT
// Finds out who allocates by walking up the stack.
#include <dlfcn.h>
#include <unwind.h>

#include <cstdint>
#include <iterator>
#include <string_view>

#include "device_side.h"

namespace test {
namespace {

enum class Origin { Unknown, OperatorNew, StandardLibrary, Program, Platform };

Origin FindOrigin(std::uintptr_t address) {
    Dl_info own;
    Dl_info info;
    if (!dladdr(reinterpret_cast<const void*>(&FindOrigin), &own) ||
        !dladdr(reinterpret_cast<const void*>(address), &info))
        return Origin::Platform;
    const std::string_view symbol = info.dli_sname ? info.dli_sname : "";
    if (symbol.starts_with("_Zn")) return Origin::OperatorNew;
    for (const std::string_view prefix : {"_ZNSt", "_ZNKSt", "_ZSt"})
        if (symbol.starts_with(prefix)) return Origin::StandardLibrary;
    if (std::string_view(info.dli_fname).find("libstdc++") != std::string_view::npos)
        return Origin::StandardLibrary;
    return info.dli_fbase == own.dli_fbase ? Origin::Program : Origin::Platform;
}

// Caches answers, as the look-up is slow.
Origin OriginOf(std::uintptr_t address) {
    static struct {
        std::uintptr_t address;
        Origin origin;
    } known[8192];
    auto& entry = known[address % std::size(known)];
    if (entry.address != address) entry = {address, FindOrigin(address)};
    return entry.origin;
}

// Up from operator new, finds the first frame outside the standard library, whose code is in every module.
_Unwind_Reason_Code JudgeFrame(_Unwind_Context* context, void* argument) {
    auto& origin = *static_cast<Origin*>(argument);
    // Minus 1: the return address of a call that never returns may be after the end of its function.
    const Origin frame = OriginOf(_Unwind_GetIP(context) - 1);
    if (origin == Origin::Unknown && frame != Origin::OperatorNew) return _URC_NO_REASON;
    origin = frame;
    const bool isDecided = frame == Origin::Program || frame == Origin::Platform;
    return isDecided ? _URC_END_OF_STACK : _URC_NO_REASON;
}

}  // namespace

bool IsAskedByProgram() {
    Origin origin = Origin::Unknown;
    _Unwind_Backtrace(JudgeFrame, &origin);
    return origin == Origin::Program;
}

}  // namespace test
