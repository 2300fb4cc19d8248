// SPDX-License-Identifier: MIT
// The options dialog: skin, strokes, extended symbols, default input method, about text. The instance lives
// as long as the input method object; each opening makes a new window on it.
#pragma once

#include <sip.h>
#include <windows.h>

#include "framework/dialog.h"
#include "framework/handles.h"
#include "framework/wide_string.h"
#include "keyboard/keyboard.h"
#include "resources/resource.h"
#include "settings/module_version.h"

class CSettingsKey;

// A skin's path without its last 4 characters and without everything up to the last "\".
WideString SkinDisplayName(const WideString& path);

class CSettingsDlg : public CDialogImpl<CSettingsDlg, CWindow> {
public:
    enum { IDD = IDD_OPTIONS };

    // The class identifier of this input method.
    explicit CSettingsDlg(REFCLSID ownIM) : m_OwnIM(ownIM) {}

    BOOL ProcessWindowMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result,
                              DWORD map) override;
    // As in CDialogImpl; afterwards forgets the controls.
    INT_PTR DoModal(HWND parent, LPARAM parameter);

private:
    // --- settings_dlg.cpp ---
    LRESULT OnInitDialog();
    LRESULT OnSize();
    LRESULT OnPaint();
    LRESULT OnCommand(WORD id, WORD code, bool& handled);
    LRESULT OnOK();
    LRESULT OnCancel();
    void TakeOverPanel();
    void MakeTitleFont();
    void FetchControls();
    void ForgetControls();
    void ShowAboutText();
    void ListSkins();
    void ShowSettings();
    void ShowSwipeOnlySkin(DWORD swipeOnly);
    void SelectSkin(const WideString& path);
    void InitShellDialog();
    // False when the chosen skin fails validation. Values written before any failure stay.
    bool SaveSettings();
    bool WriteSettings(const CSettingsKey& settings);
    WideString SelectedSkinName() const;

    // --- settings_layout.cpp: all in client pixels ---
    LONG LongerSide() const;
    RECT ControlRect(HWND control) const;
    void MoveControl(HWND control, const RECT& place) const;
    void PlaceLine() const;
    void WidenAboutText() const;
    void PlaceAboutText() const;
    void HeightenSkinCombo() const;

    // --- skin_management.cpp ---
    LRESULT OnSkinSelChange(WORD code);
    LRESULT OnAddSkin();
    LRESULT OnDeleteSkin();
    // False only when the chosen skin failed validation while saving.
    bool ApplySkin();
    // The first path that contains the name; null when none does.
    const WideString* FindSkinPath(const WideString& name) const;
    int ShowMessage(const WideString& text, UINT type) const;
    void SelectNeighbourAndRemove(int index) const;

    // --- default_im.cpp ---
    bool IsDefaultIM() const;
    void SetDefaultIM(bool undo) const;

    HWND m_hLine = nullptr;
    HWND m_hSwipeCheck = nullptr;
    HWND m_hDefaultCheck = nullptr;
    HWND m_hExtSymCheck = nullptr;
    HWND m_hSkinLabel = nullptr;
    HWND m_hAboutText = nullptr;
    HWND m_hSkinCombo = nullptr;
    HWND m_hAddButton = nullptr;
    HWND m_hDeleteButton = nullptr;
    CFontOwner m_hTitleFont;
    CLSID m_PrevIM{};  // current when the dialog opened
    CLSID m_OwnIM;
    WideString m_strAbout;
    SIZE m_Screen{};
    CModuleVersion m_Version;
    WideStringList m_Skins;  // full paths: those discovered, then those added

public:
    CKeyboard* m_pKeyboard = nullptr;  // not owned; may be null

private:
    bool m_bSkinsListed = false;  // m_Skins holds all that were there; else "UserSkins" is not saved
};
