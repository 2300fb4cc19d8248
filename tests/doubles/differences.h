// SPDX-License-Identifier: MIT
// The known differences between the handheld, which the host layer follows, and the Windows that the tests
// run on. A test of such a behaviour names its row and what it expects on either side, so that it fails when
// the difference disappears. Desktop: documented for Windows. Wine: its own behaviour.
#pragma once

namespace test {

enum class Difference {
    // Desktop: RegDeleteKeyW refuses a key with subkeys; the handheld deletes them as well.
    KeyDeletion,
    // Desktop: a selected bitmap, brush or font is marked and deleted once it is deselected; the handheld
    // refuses to delete it.
    SelectedObjects,
    // Desktop: DeleteObject also deletes memory contexts.
    DeletedContexts,
    // Desktop: an image list without a colour flag has 16 colours; on the handheld it has the screen's.
    ImageListDepth,
    // Desktop: "*.tlk" also finds files whose short name matches, such as "a.tlk2".
    ShortNames,
    // Desktop: a search also lists the folder itself and its parent ("." and "..").
    FolderItself,
    // Desktop: search handles are unchecked pointers.
    StaleSearches,
    // Desktop: the loader does not check the places of resources; only undamaged files can be read there.
    ResourceBounds,
    // Wine: MaskBlt draws with a mask that is too small, or no bitmap.
    MaskBounds,
    // Wine: FillRect succeeds for any arguments.
    FillResult,
    // Wine: CreateBitmap ignores the sign of the size.
    NegativeWidth,
    // Wine: SetPixel returns the colour for a point outside.
    PixelsOutside,
    // Wine: RegQueryInfoKeyW needs no access right if it reads nothing.
    QueryRights,
    // Wine: the name of a key can have more than 255 characters.
    KeyNameLength,
    // Desktop: a window's first message is WM_NCCREATE and its last WM_NCDESTROY; the handheld sends neither.
    NonclientMessages,
    // Wine: ERROR_CLASS_DOES_NOT_EXIST for a window of an unknown class.
    UnknownClass,
    // Wine: ERROR_ACCESS_DENIED for a destroyed window.
    DestroyedTwice,
    // Wine: CB_GETDROPPEDCONTROLRECT returns 0 and omits the height of the field.
    DroppedRectangle,
    // Desktop: a type library for 64 bits is registered as "win64".
    TypeLibrarySystem,
    // Wine: RegisterTypeLib adds the flag for a disk image (8).
    TypeLibraryFlags,
    // Wine: reading a type library cut off after its first bytes crashes the program.
    CutTypeLibraries,
    // Wine: other error codes for a class whose library is missing, has no class objects or refuses to be
    // loaded.
    ActivationErrors,
};

// Do the tests run on the handheld's side, the host layer?
[[nodiscard]] bool IsHandheld();

// What to expect on this side.
template <typename Value>
Value Either(Difference, Value onHandheld, Value elsewhere) {
    return IsHandheld() ? onHandheld : elsewhere;
}

// For calls that must not even be tried elsewhere.
[[nodiscard]] inline bool ActsAsHandheld(Difference) { return IsHandheld(); }

}  // namespace test
