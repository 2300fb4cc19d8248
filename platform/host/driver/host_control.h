// SPDX-License-Identifier: MIT
// The other side of the layer: what the driver of a device (the simulator, a test) controls and sees. Product
// code cannot include this header.
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
    // Receives what a person has to know (a damaged registry file, a full disk), one line each, UTF-8.
    std::function<void(const std::string&)> report;
    // What is written waits until it is on the disk, so that it outlasts a loss of power.
    bool durable = true;
};

// Starts the one device of this process: an empty screen, the registry of its folder ("device.reg"), the
// clock at 0, no window. Stopping destroys what is left, writes the registry and forgets every handle.
void StartDevice(const DeviceOptions& options);
void StopDevice();
// The host path of a device path; empty when a name on the way does not exist (the last one may be missing)
// or when it would lead out of the device's folder.
std::filesystem::path HostPath(const std::u16string& devicePath);
// Writes the registry file when a value changed since the last write. False (and a report) when it cannot.
bool FlushRegistry();

// --- The screen -------------------------------------------------------------------------------------------
// 32 bits per pixel, 0x00RRGGBB, rows from the top without padding.
struct ScreenView {
    int width = 0;
    int height = 0;
    const DWORD* pixels = nullptr;
};
ScreenView Screen();
// Resizes the screen and invalidates every window; the windows keep their places.
void SetScreenSize(SIZE size);
// The part of the screen drawn since the last call, empty when none.
RECT TakeScreenChanges();
// Changes one colour of the device's scheme, until the device stops. False for an index that it lacks.
bool SetSystemColor(int index, COLORREF color);
// 32 bits per pixel, 0xAARRGGBB, rows from the top without padding.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<DWORD> pixels;
};
// A copy of an image of an image list; empty when there is none.
Picture PictureOf(HANDLE imageList, int index);

// --- The pen, the keys and the clock ----------------------------------------------------------------------
enum class Pen { Down, Move, Up, DoubleClick };

// Posts exactly this message to the window that holds the capture, else to the visible, enabled window under
// the point (screen coordinates).
void PostPen(Pen event, POINT point);
// As a person's pen: recognises a double tap (within 500 ms and 4 pixels, on a CS_DBLCLKS window) by itself.
void MovePen(Pen event, POINT point);
// MovePen without the message: what this event is to be posted as. Called once for each event, at its moment.
Pen RecognizePen(Pen event, POINT point);
// Called at the moment at which a window gets the capture, or (null) nobody has it any more.
using CaptureHandler = std::function<void(HWND)>;
void SetCaptureHandler(CaptureHandler handler);
// Key events for the window with the focus: WM_KEYDOWN or WM_KEYUP, and WM_CHAR for a character that is not
// suppressed. Keeps what GetKeyState reports.
void PostKey(UINT virtualKey, bool down);
void PostCharacter(UINT virtualKey, WCHAR character);

DWORD Now();  // milliseconds of the virtual clock
void AdvanceClock(DWORD milliseconds);

// --- The message loop -------------------------------------------------------------------------------------
// Delivers everything that waits: posted messages, then paint messages.
void DeliverMessages();
// Called by GetMessageW when no message waits, also inside modal loops; it may post or send messages. False
// means that nothing more will come: GetMessageW then returns WM_QUIT.
using IdleHandler = std::function<bool()>;
void SetIdleHandler(IdleHandler handler);

// --- Modal windows ----------------------------------------------------------------------------------------
// The dialog or message box that was opened last and has not ended; null when there is none. Its controls are
// its children: GetWindow, GetClassNameW and GetDlgCtrlID tell what they are, BM_CLICK clicks a button.
HWND TopmostModalWindow();
// Takes this item of a combo box as a person does with the pen, with every notification. False, without any,
// when the window is no enabled combo box or has no such item.
bool ChooseItem(HWND comboBox, int index);
// Called when MessageBoxW is called, before the box opens. Forgotten when the device stops.
using MessageBoxHandler =
    std::function<void(UINT type, const std::u16string& caption, const std::u16string& text)>;
void SetMessageBoxHandler(MessageBoxHandler handler);
// Called when GetOpenFileNameW is called, before its dialog opens, with the default extension and the filter,
// its strings parted by "|". Forgotten when the device stops.
using OpenFileHandler = std::function<void(const std::u16string& extension, const std::u16string& filter)>;
void SetOpenFileHandler(OpenFileHandler handler);
// Answers the open-file dialog as a person who types this name, or cancels it. A name without a folder is one
// of the folder that the dialog shows; a folder's opens it. False when it is not the topmost modal window, or
// for an empty name.
bool AnswerOpenFile(const std::u16string& name);
bool CancelOpenFile();

// --- Faults -----------------------------------------------------------------------------------------------
// One entry for each kind of host call that can fail.
enum class Call {
    AddImage,        // to an image list
    AllocateMemory,  // CoTaskMemAlloc, SysAllocString
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

// Lets the n-th call of this kind from now on fail (1 is the next one), once. Another call replaces it.
void FailCall(Call call, unsigned n = 1);
void ClearFaults();
// Calls of this kind since StartDevice.
unsigned CallCount(Call call);

// --- Live handles -----------------------------------------------------------------------------------------
// Handles are counted for whom they were made: everything belongs to the product, except what is created
// while a PlatformScope stands.
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
