// SPDX-License-Identifier: MIT
// Modal dialogs as C++ objects, and the open-file dialog.
#pragma once

#include <commdlg.h>
#include <windows.h>

#include "framework/window.h"

template <typename Base>
class CDialogImplBaseT : public CWindowImplRoot<Base> {
public:
    virtual DLGPROC GetDialogProc() { return DialogProc; }
    // Called after the dialog's last message, when the handle is null again.
    virtual void OnFinalMessage(HWND) {}

    // The first procedure of the dialog: binds it to its object at the first message.
    static INT_PTR CALLBACK StartDialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
        auto* object = static_cast<CDialogImplBaseT*>(Root::Bind(dialog));
        if (!object) return FALSE;
        const DLGPROC procedure = object->GetDialogProc();
        SetWindowLongPtrW(dialog, DWLP_DLGPROC, reinterpret_cast<LONG_PTR>(procedure));
        return procedure(dialog, message, wParam, lParam);
    }

private:
    using Root = CWindowImplRoot<Base>;

    // Returns the result of WM_INITDIALOG; for other messages stores the result in the dialog and returns
    // whether they were handled.
    static INT_PTR CALLBACK DialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
        auto* object = static_cast<CDialogImplBaseT*>(Root::ObjectOf(dialog));
        LRESULT result = 0;
        const bool handled = object->Process(dialog, message, wParam, lParam, result);
        if (message == WM_DESTROY) {
            SetWindowLongPtrW(dialog, DWLP_DLGPROC, 0);
            object->m_hWnd = nullptr;
            object->OnFinalMessage(dialog);
        }
        if (!handled) return FALSE;
        if (message == WM_INITDIALOG) return result;
        SetWindowLongPtrW(dialog, DWLP_MSGRESULT, result);
        return TRUE;
    }
};

// Class::IDD is the identifier of its dialog resource.
template <typename Class, typename Base>
class CDialogImpl : public CDialogImplBaseT<Base> {
public:
    // The value passed to EndDialog; -1 when the dialog could not be created.
    INT_PTR DoModal(HWND parent, LPARAM parameter) {
        CreateWindowRecord record{};
        _Module.AddCreateWindowRecord(&record, static_cast<CWindowImplRoot<Base>*>(this));
        const INT_PTR result = DialogBoxParamW(_Module.GetModuleInstance(), MAKEINTRESOURCEW(Class::IDD),
                                               parent, CDialogImplBaseT<Base>::StartDialogProc, parameter);
        _Module.RemoveCreateWindowRecord(&record);
        return result;
    }
};

// The platform's dialog for opening one file.
class CFileDialog {
public:
    // The filter: pairs of display text and pattern, each null-terminated, and one more null at the end.
    CFileDialog(LPCWSTR defaultExtension, DWORD flags, LPCWSTR filter) {
        m_ofn.lStructSize = sizeof m_ofn;
        m_ofn.lpstrFilter = filter;
        m_ofn.lpstrDefExt = defaultExtension;
        m_ofn.lpstrFile = m_szFileName;
        m_ofn.nMaxFile = static_cast<DWORD>(std::size(m_szFileName));
        m_ofn.lpstrFileTitle = m_szFileTitle;
        m_ofn.nMaxFileTitle = static_cast<DWORD>(std::size(m_szFileTitle));
        m_ofn.Flags = flags | OFN_EXPLORER | OFN_ENABLEHOOK;
        m_ofn.lpfnHook = HookProc;
    }
    CFileDialog(const CFileDialog&) = delete;
    CFileDialog& operator=(const CFileDialog&) = delete;

    // IDOK when the user chose a file. The owner is the active window.
    INT_PTR DoModal() {
        m_ofn.hwndOwner = GetActiveWindow();
        return GetOpenFileNameW(&m_ofn) ? IDOK : IDCANCEL;
    }

    WCHAR m_szFileName[MAX_PATH] = {};  // full path
    WCHAR m_szFileTitle[256] = {};      // name with its extension

private:
    static UINT_PTR CALLBACK HookProc(HWND, UINT, WPARAM, LPARAM) { return 0; }

    OPENFILENAMEW m_ofn{};
};
