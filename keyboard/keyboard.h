// SPDX-License-Identifier: MIT
// The keyboard engine's one object and its records. All sources of this folder read and write its fields.
// CKeyboard is used on the panel's thread only and takes no lock.
//
//   press.cpp, swipe.cpp   decide which key a gesture means
//   status.cpp             Shift, Control, caps lock, language, digits, umlauts; which plane they select
//   rendering.cpp          draws the selected plane and the pressed keys
//   delivery.cpp           sends the key through the SIP's callback
//   initialisation.cpp, skin_discovery.cpp, skin_loading.cpp, charsets.cpp   find and load the skin
#pragma once

#include <sip.h>
#include <windows.h>

#include <map>
#include <vector>

#include "framework/wide_string.h"
#include "framework/window.h"

// One key of a loaded layout.
struct KeyEntry {
    std::vector<RECT> m_Rects;  // pixels of the picture; together the touch and highlight area, in file order
    DWORD m_nBitmap = 0;        // second field of the key's last layout record; nothing interprets it
};
using KeyLayout = std::map<DWORD, KeyEntry>;

// The nine planes, in the order of the slots of a CharsetEntry; the digit plane has no slots of its own.
enum Plane : int {
    PlaneLng1Sml,
    PlaneLng1Lrg,
    PlaneUml1Sml,
    PlaneUml1Lrg,
    PlaneLng2Sml,
    PlaneLng2Lrg,
    PlaneUml2Sml,
    PlaneUml2Lrg,
    PlaneDigit,
    PlaneCount
};

// One row of the character table: what a key yields in each plane. 0 means no character. Digit and function
// keys carry the same code in all slots.
struct CharsetEntry {
    WCHAR m_Slots[8] = {};
};

struct KbStatus {
    BYTE m_bShift = 0;  // one-shot
    BYTE m_bCAPS = 0;
    BYTE m_bCtrl = 0;  // one-shot
    BYTE m_bLng1 = 1;  // 0: language 2
    BYTE m_bDigit = 0;
    BYTE m_bUml = 0;  // one-shot
};

class CKeyboard {
public:
    CKeyboard() = default;
    virtual ~CKeyboard();
    CKeyboard(const CKeyboard&) = delete;
    CKeyboard& operator=(const CKeyboard&) = delete;

    // --- Skins ---
    // Prepares the keyboard, in whatever state it is, for a screen of this size in pixels. True also when
    // there is no usable skin (m_bNoSkin); false when the chosen skin does not load or fit.
    bool Init(LONG width, LONG height);
    // Reads the skin in m_hSkinLib. False when its picture is missing or as wide as neither screen side.
    bool LoadSkin(LONG width, LONG height);
    // Releases the skin's resources. Bitmaps that are still selected stay in their fields until the next
    // LoadSkin or the destructor.
    void UnloadSkin();
    // Rebuilds m_Charset from the library's tables and the skin's second language. False when memory runs
    // out: the table is then empty, and no key is hit.
    bool LoadCharsets();
    // Is there a picture in this file that is as wide as the screen's narrow side?
    static bool IsValidSkin(const WideString& path);
    // The skins of "\windows", then those of "UserSkins" that exist; fewer when memory runs out.
    static WideStringList GetSkinList();
    // Appends the same. False when memory runs out: the list is then incomplete.
    static bool ListSkins(WideStringList& skins);
    // Full paths of the files of "\windows" with this extension, in the order of the file system.
    static WideStringList FindSkinFiles(const WideString& extension);

    // --- Pen, in pixels of the panel's client area ---
    void PressKey(POINT point, CWindow* window, bool bDown);
    void MoveMouse(POINT point, CWindow* window);
    // The second pen-down of a double tap; false when it is to be treated as an ordinary one.
    bool DblPressKey(POINT point, CWindow* window);
    // The key at this point, all four edges included; -1 for none. Keys beyond m_Charset do not count.
    LONG FindKeyIndex(LONG x, LONG y, bool bCharLayout) const;
    // Interprets a stroke for the pen-down key of this record.
    void Swipe(LONG x1, LONG y1, LONG x2, LONG y2, IIMCallback* callback, CWindow* window,
               CharsetEntry record);

    // --- Status ---
    // Selects the picture and the masks of the current status into the device contexts.
    void GetKeyboardMask();
    // The plane whose mask is selected; if that is no mask of the skin, the plane that the status asks for.
    Plane ActivePlane() const;
    // Applies the code of a status key. The window may be null.
    void SetKbStatus(const WCHAR* pCode, CWindow* window);
    // Clears the one-shot flags after a key. The window may be null.
    void ResetKbStatus(CWindow* window);
    // Send key-up or key-down of the latched Shift and Control when the panel hides or shows; flags stay.
    void ReleaseModifierKeys();
    void PressModifierKeys();
    bool IsDigitalLineEntry(WCHAR code) const;
    bool IsFunctionalKeyEntry(WCHAR code) const;
    bool IsStatusKeyEntry(WCHAR code) const;

    // --- Delivery ---
    // Sends the key; bShifted asks for the other case of the plane (an upward stroke).
    void SendKeyToApp(CharsetEntry record, bool bShifted);

    // --- Rendering ---
    // Draws the keyboard, or a message into the window if there is no skin.
    void Paint(HDC dc, CWindow* window);
    // Toggles the pressed look of the key's rectangles. Does nothing without a window.
    void DrawButton(CWindow* window, const KeyEntry& entry, bool bInvalidate);
    // Toggles the pressed look of the keys of the active statuses.
    void PaintStatusButtons(CWindow* window);
    // The key with this function code in the active layout; if there is none, a key with one empty rectangle.
    KeyEntry GetFunctionKeyRects(WCHAR code) const;

    std::vector<CharsetEntry> m_Charset;  // indexed by key index; digit, function and character block
    KeyLayout m_CharLayout;
    KeyLayout m_DigitLayout;
    std::vector<RECT> m_PressedRects;  // drawn inverted
    RECT m_CAPSRect{};          // the digit row, which caps lock leaves alone; empty when there is none
    CWindow* m_pWnd = nullptr;  // of the last press; not owned

    HBITMAP m_hDigitKbBitmap = nullptr;
    HBITMAP m_hKbBitmap = nullptr;
    HBITMAP m_hDigitMask = nullptr;
    HBITMAP m_hLng1SmlKbMask = nullptr;
    HBITMAP m_hLng1LrgKbMask = nullptr;
    HBITMAP m_hLng2SmlKbMask = nullptr;
    HBITMAP m_hLng2LrgKbMask = nullptr;
    HBITMAP m_hUml1SmlKbMask = nullptr;
    HBITMAP m_hUml1LrgKbMask = nullptr;
    HBITMAP m_hUml2SmlKbMask = nullptr;
    HBITMAP m_hUml2LrgKbMask = nullptr;
    HDC m_hKbDC = nullptr;             // holds the picture being shown
    HDC m_hMaskDC = nullptr;           // holds the mask of the active plane: it is the active plane
    HDC m_hExtMaskDC = nullptr;        // while caps lock is on, the mask that ignores it
    HBITMAP m_hOrigMaskBmp = nullptr;  // what m_hMaskDC and m_hExtMaskDC came with
    HBITMAP m_hOrigExtMaskBmp = nullptr;

    KbStatus m_stKbStatus;
    DWORD m_dwSwipe = 0;  // strokes: 0 off, 2 after typing the pen-down key, else instead of it
    HMODULE m_hSkinLib = nullptr;
    LONG m_nPressedIndex = -1;  // key of the last pen-down
    BYTE m_bPressedDrawn = 0;   // that key's rectangles are in m_PressedRects through this press
    BOOL m_bPortrait = FALSE;
    POINT m_ptSwipeBegin{};
    POINT m_ptSwipeEnd{};  // the last move, even of an earlier gesture
    DWORD m_nDigitFirst = 0;
    DWORD m_nDigitLast = 0;
    DWORD m_nFuncFirst = 0;
    DWORD m_nFuncLast = 0;
    DWORD m_nCharFirst = 0;
    DWORD m_nCharLast = 0;
    BYTE m_bNoSkin = 0;
    DWORD m_bExtSym = 0;
    BOOL m_bHasCapsKey = FALSE;
    IIMCallback* m_pCallback = nullptr;  // borrowed from the SIP, not counted
    WideString m_strSkinPath;

private:
    // A bitmap that a skin brings: its field, its plane (PlaneCount for a picture), and its resource's names.
    // Without a landscape name both orientations share the portrait one.
    struct SkinBitmap {
        HBITMAP CKeyboard::*field;
        Plane plane;
        LPCWSTR portrait;
        LPCWSTR landscape;
    };
    static const SkinBitmap kSkinBitmaps[PlaneCount + 2];

    bool InitFromSkinList(LONG width, LONG height);
    void CreateDeviceContexts();
    void ResetInteraction();
    void BuildCharset();
    bool ChooseStoredSkin(const WideStringList& skins, LPCWSTR stored);
    bool ChooseFirstSkin(const WideStringList& skins);
    void LoadLayouts(bool bLandscape);
    void LoadBitmaps(bool bLandscape);
    void LoadSwipeOnlyMark();

    void PenDown(POINT point, CWindow* window);
    void PenUp(POINT point, CWindow* window);
    void TypeKey(CharsetEntry record, CWindow* window);
    void FinishStroke(CWindow* window);
    void ToggleButton(CWindow* window, LONG index);
    const KeyLayout& ActiveLayout() const { return m_stKbStatus.m_bDigit ? m_DigitLayout : m_CharLayout; }

    HBITMAP MaskOf(Plane plane) const;
    // The plane that the status asks for, with or without caps lock.
    Plane PlaneOfStatus(bool bWithCaps) const;
    void ToggleShift();
    void ToggleControl();
    void SendModifier(BYTE virtualKey, bool bDown) const;

    bool CapsSplitsPicture() const;
    void DrawPicture(HDC dc, SIZE size) const;
    void DrawPressedRects(HDC dc, SIZE size) const;
    void DrawNoSkinMessage(HDC dc, CWindow* window) const;
    void TogglePressedRect(const RECT& r);

    void SendFunctionKey(WCHAR code, bool bShifted);
    void SendDownUp(BYTE virtualKey);
    void SendCharacterKey(const CharsetEntry& record, bool bShifted);
    WCHAR CharacterOf(const CharsetEntry& record, bool bShifted) const;
    void SendCharEvent(UINT virtualKey, UINT flags, WCHAR character);
};
