// SPDX-License-Identifier: MIT
// The driver's side of the layer: how a simulator or a test controls and observes the device. Product code
// cannot include this header.
#pragma once

#include <windows.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace host {

// --- The device -------------------------------------------------------------------------------------------
struct DeviceOptions {
    std::filesystem::path folder;  // root of the device's file system; created when missing
    SIZE screen{240, 320};         // pixels
    // Receives messages for the user (a damaged registry file, a full disk), one line each, in UTF-8.
    std::function<void(const std::string&)> report;
    // Writes return only when the data is on the disk, so that it survives a loss of power.
    bool durable = true;
};

// Starts the one device of this process: an empty screen, the registry of its folder ("device.reg"), the
// clock at 0, no window. Stopping destroys all windows, writes the registry and invalidates all handles.
void StartDevice(const DeviceOptions& options);
void StopDevice();
// The host path of a device path; empty if a folder in it does not exist (the last name may be missing) or it
// would lead out of the device's folder.
std::filesystem::path HostPath(const std::u16string& devicePath);
// Writes the registry file if a value has changed since the last write. False, and a report, on failure.
bool FlushRegistry();

// --- The screen -------------------------------------------------------------------------------------------
// 32 bits per pixel, 0x00RRGGBB, rows from the top without padding.
struct ScreenView {
    int width = 0;
    int height = 0;
    const DWORD* pixels = nullptr;
};
ScreenView Screen();
// Resizes the screen and invalidates all windows, which keep their places.
void SetScreenSize(SIZE size);
// The part of the screen that was drawn since the last call; empty if none.
RECT TakeScreenChanges();
// Changes one system colour until the device stops. False for an unknown index.
bool SetSystemColor(int index, COLORREF color);
// 32 bits per pixel, 0xAARRGGBB, rows from the top without padding.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<DWORD> pixels;
};
// A copy of an image in an image list; empty if there is none.
Picture PictureOf(HANDLE imageList, int index);

// --- The pen, the keys and the clock ----------------------------------------------------------------------
enum class Pen { Down, Move, Up, DoubleClick };

// Posts exactly this message to the window with the capture, or without one to the visible, enabled window
// under the point (screen coordinates).
void PostPen(Pen event, POINT point);
// Returns the event to post for a real pen's event: the second Down of a double tap (within 500 ms and 4
// pixels, on a CS_DBLCLKS window) becomes a DoubleClick. Call it once for each event, when it happens.
Pen RecognizePen(Pen event, POINT point);
// Called as soon as a window gets the capture, or with null when it ends.
using CaptureHandler = std::function<void(HWND)>;
void SetCaptureHandler(CaptureHandler handler);
// Key events for the window with the focus: WM_KEYDOWN or WM_KEYUP, and WM_CHAR for a character. Maintain
// what GetKeyState reports.
void PostKey(UINT virtualKey, bool down);
void PostCharacter(UINT virtualKey, WCHAR character);

DWORD Now();  // milliseconds of the virtual clock
void AdvanceClock(DWORD milliseconds);

// --- The message loop -------------------------------------------------------------------------------------
// Delivers all waiting messages: posted ones, then paint messages.
void DeliverMessages();
// Called by GetMessageW when no message is waiting, also inside modal loops; it may post or send messages.
// False ends the session: GetMessageW then returns WM_QUIT.
using IdleHandler = std::function<bool()>;
void SetIdleHandler(IdleHandler handler);

// --- Modal windows ----------------------------------------------------------------------------------------
// The dialog or message box that was opened last and is still open; null if there is none. Its controls are
// its children: GetWindow, GetClassNameW and GetDlgCtrlID describe them, BM_CLICK clicks a button.
HWND TopmostModalWindow();
// Chooses an item of a combo box as the pen does, with all notifications. False, without notifications, if
// the window is no enabled combo box or has no such item.
bool ChooseItem(HWND comboBox, int index);
// Called by MessageBoxW before the box opens, until the device stops.
using MessageBoxHandler =
    std::function<void(UINT type, const std::u16string& caption, const std::u16string& text)>;
void SetMessageBoxHandler(MessageBoxHandler handler);
// Called by GetOpenFileNameW before its dialog opens, until the device stops; with the default extension and
// the filter, whose strings are separated by "|".
using OpenFileHandler = std::function<void(const std::u16string& extension, const std::u16string& filter)>;
void SetOpenFileHandler(OpenFileHandler handler);
// Answers the open-file dialog as if the user typed this name, or cancels it. A name without a folder belongs
// to the folder shown; the name of a folder opens it. False if the dialog is not the topmost modal window, or
// the name is empty.
bool AnswerOpenFile(const std::u16string& name);
bool CancelOpenFile();

// --- Faults -----------------------------------------------------------------------------------------------
// One entry for each kind of host call that can fail.
enum class Call {
    AddImage,        // to an image list
    AllocateMemory,  // CoTaskMemAlloc
    BeginPaint,
    BitBlt,
    CreateBitmap,
    CreateBrush,
    CreateDC,
    CreateDialog,
    CreateDIBSection,
    CreateFont,
    CreateImageList,
    CreateWindow,
    DeleteFile,
    DrawText,
    FillRect,
    FindFile,
    FindResource,
    GetModuleFileName,
    GetObject,
    GetOpenFileName,
    GetVersionInfo,      // GetFileVersionInfoW
    GetVersionInfoSize,  // GetFileVersionInfoSizeW
    InitializeLock,
    InvalidateRect,
    LoadBitmap,
    LoadLibrary,
    LoadResource,
    LoadString,
    LoadTypeLib,
    MaskBlt,
    MessageBox,
    PostMessage,
    QueryVersion,  // VerQueryValueW
    RegClose,
    RegCreateKey,
    RegDelete,
    RegEnumKey,
    RegisterClass,
    RegisterTypeLib,
    RegOpenKey,
    RegQueryInfo,
    RegQueryValue,
    RegSetValue,
    SelectObject,
    WriteRegistryFile,
    Count
};

// Makes the n-th call of this kind from now on fail, once; 1 is the next call. A further FailCall replaces
// this.
void FailCall(Call call, unsigned n = 1);
void ClearFaults();
// Calls of this kind since StartDevice.
unsigned CallCount(Call call);

// --- Live handles -----------------------------------------------------------------------------------------
// Handles are counted by owner: all belong to the product, except those created during a PlatformScope.
class PlatformScope {
public:
    PlatformScope();
    ~PlatformScope();
    PlatformScope(const PlatformScope&) = delete;
    PlatformScope& operator=(const PlatformScope&) = delete;
};

struct LiveHandles {
    int bitmaps = 0;
    int dcs = 0;
    int fonts = 0;
    int brushes = 0;
    int windows = 0;
    int modules = 0;
    int keys = 0;
    int finds = 0;
    int lists = 0;
};
// The product's live handles. Stock objects and the bitmap that a context comes with do not count.
LiveHandles CountHandles();

}  // namespace host
