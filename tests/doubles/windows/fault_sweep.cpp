// SPDX-License-Identifier: MIT
// Each imported call goes through a stub, which counts it and makes one of them fail. Calls inside the
// platform do not pass here.
#include "fault_sweep.h"

#include <windows.h>

#include <commctrl.h>
#include <oleauto.h>

#include "windows/import_patch.h"

namespace test {
namespace {

constexpr unsigned kNone = 0;
unsigned g_failingKind = kNone;
unsigned g_occurrence = 0;
unsigned g_count = 0;  // calls of that kind since Arm

bool FailsNow(unsigned kind) { return kind == g_failingKind && ++g_count == g_occurrence; }

// The stub of one kind of call. Each kind has a number, as several functions can have the same type.
template <unsigned kind, typename Function>
struct Stub;

template <unsigned kind, typename Result, typename... Arguments>
struct Stub<kind, Result WINAPI(Arguments...)> {
    static inline Result(WINAPI* original)(Arguments...) = nullptr;
    static inline Result failure{};

    static Result WINAPI Call(Arguments... arguments) {
        if (!FailsNow(kind)) return original(arguments...);
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return failure;
    }

    static void Install(const char* name, Result result) {
        failure = result;
        original = ReplaceImport(GetModuleHandleW(nullptr), name, &Call);
    }
};

// The lines of this list number the kinds. Calls that the program does not import never fail.
#define FAILS_WITH(function, result) \
    Stub<__COUNTER__ + 1 - kFirst, decltype(function)>::Install(#function, result)
constexpr unsigned kFirst = __COUNTER__;
unsigned InstallStubs() {
    const HRESULT noMemory = E_OUTOFMEMORY;
    const LSTATUS denied = ERROR_ACCESS_DENIED;
    FAILS_WITH(RegOpenKeyExW, denied);
    FAILS_WITH(RegCreateKeyExW, denied);
    FAILS_WITH(RegQueryValueExW, denied);
    FAILS_WITH(RegSetValueExW, denied);
    FAILS_WITH(RegDeleteValueW, denied);
    FAILS_WITH(RegDeleteKeyW, denied);
    FAILS_WITH(RegEnumKeyExW, denied);
    FAILS_WITH(RegQueryInfoKeyW, denied);
    FAILS_WITH(LoadLibraryW, nullptr);
    FAILS_WITH(GetModuleFileNameW, 0);
    FAILS_WITH(FindResourceW, nullptr);
    FAILS_WITH(LoadResource, nullptr);
    FAILS_WITH(LoadStringW, 0);
    FAILS_WITH(LoadBitmapW, nullptr);
    FAILS_WITH(FindFirstFileW, INVALID_HANDLE_VALUE);
    FAILS_WITH(FindNextFileW, FALSE);
    FAILS_WITH(GetFileVersionInfoSizeW, 0);
    FAILS_WITH(GetFileVersionInfoW, FALSE);
    FAILS_WITH(VerQueryValueW, FALSE);
    FAILS_WITH(MultiByteToWideChar, 0);
    FAILS_WITH(RegisterClassW, 0);
    FAILS_WITH(CreateWindowExW, nullptr);
    FAILS_WITH(DialogBoxParamW, -1);
    FAILS_WITH(BeginPaint, nullptr);
    FAILS_WITH(CreateCompatibleDC, nullptr);
    FAILS_WITH(SelectObject, nullptr);
    FAILS_WITH(GetObjectW, 0);
    FAILS_WITH(CreateDIBSection, nullptr);
    FAILS_WITH(CreateFontIndirectW, nullptr);
    FAILS_WITH(BitBlt, FALSE);
    FAILS_WITH(MaskBlt, FALSE);
    FAILS_WITH(ImageList_Create, nullptr);
    FAILS_WITH(ImageList_AddMasked, -1);
    FAILS_WITH(LoadTypeLib, noMemory);
    FAILS_WITH(RegisterTypeLib, noMemory);
    FAILS_WITH(StringFromCLSID, noMemory);
    FAILS_WITH(CLSIDFromString, noMemory);
    return __COUNTER__ - kFirst - 1;
}
#undef FAILS_WITH

unsigned CountKinds() {
    static const unsigned count = InstallStubs();
    return count;
}

}  // namespace

bool FaultSweep::Next() {
    if (m_hit && m_kind != kNone) {
        ++m_occurrence;
    } else {
        ++m_kind;
        m_occurrence = 1;
    }
    m_hit = false;
    return m_kind <= CountKinds();
}

void FaultSweep::Arm() {
    g_failingKind = m_kind;
    g_occurrence = m_occurrence;
    g_count = 0;
}

void FaultSweep::Disarm() {
    m_hit = g_count >= m_occurrence;
    g_failingKind = kNone;
}

std::string FaultSweep::Describe() const {
    return "call number " + std::to_string(m_occurrence) + " of kind " + std::to_string(m_kind);
}

}  // namespace test
