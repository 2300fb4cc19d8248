// SPDX-License-Identifier: MIT
// Prepares the keyboard for a screen size.
#include "framework/memory.h"
#include "keyboard/key_codes.h"
#include "keyboard/keyboard.h"
#include "keyboard/skin_resources.h"
#include "store/settings_key.h"

namespace {

constexpr DWORD kDefaultSwipe = 1;
constexpr DWORD kDefaultExtSym = 1;

// Stores the context's bitmap in the field and deletes a different one that the field still holds.
void RememberBitmap(HBITMAP& field, HDC dc) {
    ReplaceBitmap(field, static_cast<HBITMAP>(GetCurrentObject(dc, OBJ_BITMAP)));
}

}  // namespace

bool CKeyboard::Init(LONG width, LONG height) {
    UnloadSkin();
    CreateDeviceContexts();
    ResetInteraction();
    bool ready = false;
    EnoughMemory([&] { ready = InitFromSkinList(width, height); });
    return ready;  // after running out of memory the next Init starts afresh
}

// A context that UnloadSkin could not delete is used again.
void CKeyboard::CreateDeviceContexts() {
    for (HDC* dc : {&m_hKbDC, &m_hMaskDC, &m_hExtMaskDC})
        if (!*dc) *dc = CreateCompatibleDC(nullptr);
    RememberBitmap(m_hOrigMaskBmp, m_hMaskDC);
    RememberBitmap(m_hOrigExtMaskBmp, m_hExtMaskDC);
}

// The language is the one status that survives.
void CKeyboard::ResetInteraction() {
    m_dwSwipe = kDefaultSwipe;
    m_nPressedIndex = kNoKey;
    m_bPressedDrawn = 0;
    m_pWnd = nullptr;
    m_bNoSkin = 0;
    const BYTE language1 = m_stKbStatus.m_bLng1;
    m_stKbStatus = {};
    m_stKbStatus.m_bLng1 = language1;
    m_PressedRects.clear();
}

bool CKeyboard::InitFromSkinList(LONG width, LONG height) {
    WideStringList skins;
    if (!ListSkins(skins)) return false;
    if (skins.empty()) {
        m_bNoSkin = 1;
        return true;
    }
    CSettingsKey settings(SettingsAccess::Create);
    if (!settings.ReadDword(kSwipeValue, m_dwSwipe)) settings.WriteDword(kSwipeValue, m_dwSwipe);
    StoredText stored{};
    settings.ReadString(kSkinValue, stored);
    if (!ChooseStoredSkin(skins, stored)) {
        if (!ChooseFirstSkin(skins)) {
            m_bNoSkin = 1;
            return true;
        }
        settings.WriteString(kSkinValue, m_strSkinPath.c_str());
    }
    m_hSkinLib = LoadLibraryW(m_strSkinPath.c_str());
    if (!m_hSkinLib) return false;
    if (!LoadCharsets()) return false;
    m_bExtSym = kDefaultExtSym;
    settings.ReadDword(kExtSymValue, m_bExtSym);
    settings.Close();
    if (!LoadSkin(width, height)) return false;
    GetKeyboardMask();
    return true;
}

// The stored text may be a part of a path, for instance a bare file name. It stays as it is.
bool CKeyboard::ChooseStoredSkin(const WideStringList& skins, LPCWSTR stored) {
    if (!*stored) return false;
    for (const WideString& path : skins) {
        if (path.find(stored) == WideString::npos || !IsValidSkin(path)) continue;
        m_strSkinPath = stored;
        return true;
    }
    return false;
}

bool CKeyboard::ChooseFirstSkin(const WideStringList& skins) {
    for (const WideString& path : skins) {
        if (!IsValidSkin(path)) continue;
        m_strSkinPath = path;
        return true;
    }
    return false;
}
