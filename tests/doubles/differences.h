// SPDX-License-Identifier: MIT
// Where the handheld, which the host layer follows, and the Windows that the tests run on are known to
// differ. A test of such a behaviour names its row and what it expects on either side, so that it fails when
// a difference disappears. Desktop: what Windows documents. Wine: what it does on its own account.
#pragma once

namespace test {

enum class Difference {
    // Desktop: RegDeleteKeyW refuses a key with subkeys; the handheld takes them along.
    KeyDeletion,
    // Desktop: a selected bitmap, brush or font is marked as deleted, and goes when it is let go of; the
    // handheld refuses to delete it.
    SelectedObjects,
    // Desktop: DeleteObject takes memory contexts too.
    DeletedContexts,
    // Desktop: an image list without a colour flag has 16 colours; on the handheld those of the screen.
    ImageListDepth,
    // Desktop: "*.tlk" also finds files whose short name fits, such as "a.tlk2".
    ShortNames,
    // Desktop: a search lists the folder itself and its parent ("." and "..").
    FolderItself,
    // Desktop: search handles are pointers that nothing checks.
    StaleSearches,
    // Desktop: the loader does not check where resources lie; only files that are whole can be read there.
    ResourceBounds,
    // Wine: MaskBlt draws with a mask that is too small or none at all.
    MaskBounds,
    // Wine: FillRect succeeds whatever it is given.
    FillResult,
    // Wine: CreateBitmap drops the sign.
    NegativeWidth,
    // Wine: SetPixel answers the colour for a point outside.
    PixelsOutside,
    // Wine: RegQueryInfoKeyW asks for no right where nothing is to be read.
    QueryRights,
    // Wine: the name of a key may have more than 255 characters.
    KeyNameLength,
    // Desktop: a window's first message is WM_NCCREATE and its last WM_NCDESTROY; the handheld sends neither.
    NonclientMessages,
    // Wine: ERROR_CLASS_DOES_NOT_EXIST for a window of an unknown class.
    UnknownClass,
    // Wine: ERROR_ACCESS_DENIED for a window that is no more.
    DestroyedTwice,
    // Wine: CB_GETDROPPEDCONTROLRECT answers 0 and leaves out the height of the field.
    DroppedRectangle,
    // Desktop: a type library made for 64 bits is entered as that of "win64".
    TypeLibrarySystem,
    // Wine: RegisterTypeLib writes the flag that tells of a disk image (8).
    TypeLibraryFlags,
    // Wine: reading a type library that is cut off behind its first bytes ends the program.
    CutTypeLibraries,
    // Wine: other codes for a class whose library is missing, gives no objects or refuses to be loaded.
    ActivationErrors,
};

// Is this the side of the handheld?
[[nodiscard]] bool IsHandheld();

// What to expect on this side.
template <typename Value>
Value Either(Difference, Value onHandheld, Value elsewhere) {
    return IsHandheld() ? onHandheld : elsewhere;
}

// For what must not even be tried elsewhere.
[[nodiscard]] inline bool ActsAsHandheld(Difference) { return IsHandheld(); }

}  // namespace test
