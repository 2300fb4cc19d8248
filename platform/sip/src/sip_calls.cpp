// SPDX-License-Identifier: MIT
// The shell calls, implemented by the shell of this process. Without one they fail with
// ERROR_CALL_NOT_IMPLEMENTED, as on a device without a SIP.
#include <sip_shell.h>

namespace {

SipShell* FindShell() {
    SipShell* shell = SipShell::Current();
    if (!shell) SetLastError(ERROR_CALL_NOT_IMPLEMENTED);
    return shell;
}

}  // namespace

BOOL WINAPI SipShowIM(DWORD flags) {
    SipShell* shell = FindShell();
    return shell ? shell->ShowIM(flags) : FALSE;
}

BOOL WINAPI SipGetCurrentIM(CLSID* clsid) {
    SipShell* shell = FindShell();
    if (!shell) return FALSE;
    if (!clsid) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    *clsid = shell->CurrentIM();
    return TRUE;
}

BOOL WINAPI SipSetCurrentIM(CLSID* clsid) {
    SipShell* shell = FindShell();
    if (!shell) return FALSE;
    if (!clsid) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    shell->SetCurrentIM(*clsid);
    return TRUE;
}
