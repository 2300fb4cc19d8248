// SPDX-License-Identifier: MIT
// Checks, loads and unloads a skin file.
#include "framework/handles.h"
#include "framework/screen.h"
#include "keyboard/key_codes.h"
#include "keyboard/keyboard.h"
#include "keyboard/skin_resources.h"
#include "store/settings_key.h"

namespace {

bool IsUmlautPlane(Plane plane) {
    return (plane >= PlaneUml1Sml && plane <= PlaneUml1Lrg) ||
           (plane >= PlaneUml2Sml && plane <= PlaneUml2Lrg);
}

// Readers only ask whether the mark is 0. The handle may be an address whose low 32 bits are 0.
DWORD MarkFromHandle(HRSRC resource) {
    const auto mark = static_cast<DWORD>(reinterpret_cast<ULONG_PTR>(resource) & 0xFFFFFFFFu);
    return resource && mark == 0 ? 1 : mark;
}

// Little-endian 32-bit left, top, right, bottom; all 0 when the skin has none.
RECT ReadCapsRect(HMODULE skin) {
    const DataResource resource = FindDataResource(skin, TEXT("CAPS_RECT"));
    if (resource.size < 4 * sizeof(LONG)) return {};
    return {ReadLittleEndian32(resource.bytes), ReadLittleEndian32(resource.bytes + 4),
            ReadLittleEndian32(resource.bytes + 8), ReadLittleEndian32(resource.bytes + 12)};
}

}  // namespace

// In the order of deletion, which the destructor reverses. A bitmap for both orientations has one name.
constinit const CKeyboard::SkinBitmap CKeyboard::kSkinBitmaps[] = {
    {&CKeyboard::m_hDigitKbBitmap, PlaneCount, TEXT("digit_keyboard_bitmap"), nullptr},
    {&CKeyboard::m_hKbBitmap, PlaneCount, TEXT("char_keyboard_bitmap"), TEXT("LANSCAPE_KEYBOARD_BITMAP")},
    {&CKeyboard::m_hDigitMask, PlaneDigit, TEXT("DIGIT_MASK"), nullptr},
    {&CKeyboard::m_hLng1SmlKbMask, PlaneLng1Sml, TEXT("LANG1_SMALL_MASK"), TEXT("LANG1_SMALL_MASK_LS")},
    {&CKeyboard::m_hLng1LrgKbMask, PlaneLng1Lrg, TEXT("LANG1_LARGE_MASK"), TEXT("LANG1_LARGE_MASK_LS")},
    {&CKeyboard::m_hLng2SmlKbMask, PlaneLng2Sml, TEXT("LANG2_SMALL_MASK"), TEXT("LANG2_SMALL_MASK_LS")},
    {&CKeyboard::m_hLng2LrgKbMask, PlaneLng2Lrg, TEXT("LANG2_LARGE_MASK"), TEXT("LANG2_LARGE_MASK_LS")},
    {&CKeyboard::m_hUml1SmlKbMask, PlaneUml1Sml, TEXT("UML1_SMALL_MASK"), TEXT("UML1_SMALL_MASK_LS")},
    {&CKeyboard::m_hUml1LrgKbMask, PlaneUml1Lrg, TEXT("UML1_LARGE_MASK"), TEXT("UML1_LARGE_MASK_LS")},
    {&CKeyboard::m_hUml2SmlKbMask, PlaneUml2Sml, TEXT("UML2_SMALL_MASK"), TEXT("UML2_SMALL_MASK_LS")},
    {&CKeyboard::m_hUml2LrgKbMask, PlaneUml2Lrg, TEXT("UML2_LARGE_MASK"), TEXT("UML2_LARGE_MASK_LS")},
};

bool CKeyboard::IsValidSkin(const WideString& path) {
    const SIZE screen = GetScreenSize();
    const CModuleOwner skin(LoadLibraryW(path.c_str()));
    if (!skin) return false;
    const CBitmapOwner picture(LoadBitmapW(skin.Get(), TEXT("char_keyboard_bitmap")));
    SIZE size{};
    if (!picture || !GetBitmapSize(picture.Get(), size)) return false;
    return size.cx == (screen.cx > screen.cy ? screen.cy : screen.cx);
}

bool CKeyboard::LoadSkin(LONG width, LONG height) {
    const bool landscape = width > height;
    m_bPortrait = width < height;
    m_CAPSRect = ReadCapsRect(m_hSkinLib);
    LoadSwipeOnlyMark();
    LoadLayouts(landscape);
    LoadBitmaps(landscape);
    SIZE picture{};
    return GetBitmapSize(m_hKbBitmap, picture) && (picture.cx == width || picture.cx == height);
}

// A skin made for strokes turns them on. The registry value is for the options dialog.
void CKeyboard::LoadSwipeOnlyMark() {
    const HRSRC mark = FindResourceW(m_hSkinLib, TEXT("SWIPE_ONLY"), TEXT("RC_DATA"));
    if (mark) m_dwSwipe |= 1;
    CSettingsKey(SettingsAccess::Write).WriteDword(kSwipeOnlySkinValue, MarkFromHandle(mark));
}

void CKeyboard::LoadLayouts(bool bLandscape) {
    m_CharLayout.clear();
    m_DigitLayout.clear();
    const bool hasOwn =
        bLandscape && FindResourceW(m_hSkinLib, TEXT("LNDSCP_LAYOUT_STRUCT"), TEXT("RC_DATA"));
    const LPCWSTR name = hasOwn ? TEXT("LNDSCP_LAYOUT_STRUCT") : TEXT("CHAR_LAYOUT_STRUCT");
    ReadLayout(FindDataResource(m_hSkinLib, name), m_CharLayout);
    m_bHasCapsKey = m_CharLayout.count(kCapsKeyIndex) != 0;
    ReadLayout(FindDataResource(m_hSkinLib, TEXT("DIGIT_LAYOUT_STRUCT")), m_DigitLayout);
}

// A missing resource leaves a null field. Without extended symbols the umlaut fields are left alone: one may
// still hold the mask that was selected when the last skin was unloaded.
void CKeyboard::LoadBitmaps(bool bLandscape) {
    for (const bool shared : {false, true}) {
        for (const SkinBitmap& bitmap : kSkinBitmaps) {
            if ((bitmap.landscape == nullptr) != shared || (IsUmlautPlane(bitmap.plane) && !m_bExtSym))
                continue;
            const LPCWSTR name = bLandscape && !shared ? bitmap.landscape : bitmap.portrait;
            ReplaceBitmap(this->*bitmap.field, LoadBitmapW(m_hSkinLib, name));
        }
    }
}

void CKeyboard::UnloadSkin() {
    m_ptSwipeEnd = {0, 0};
    m_nPressedIndex = kNoKey;
    m_bPressedDrawn = 0;
    m_Charset.clear();
    m_CharLayout.clear();
    m_DigitLayout.clear();
    m_PressedRects.clear();
    for (const SkinBitmap& bitmap : kSkinBitmaps)
        ReleaseBitmap(this->*bitmap.field);
    ReleaseBitmap(m_hOrigMaskBmp);
    ReleaseBitmap(m_hOrigExtMaskBmp);
    ReleaseContext(m_hKbDC);
    ReleaseContext(m_hMaskDC);
    ReleaseContext(m_hExtMaskDC);
    if (m_hSkinLib) FreeLibrary(m_hSkinLib);
    m_hSkinLib = nullptr;
}
