// SPDX-License-Identifier: MIT
// Starts and stops the device, with all its rooms.
#include <host_control.h>

#include <filesystem>
#include <utility>

#include "com/activation.h"
#include "controls/control.h"
#include "controls/dialog.h"
#include "device/device.h"
#include "device/faults.h"
#include "device/files.h"
#include "graphics/graphics.h"
#include "modules/modules.h"
#include "registry/keys.h"
#include "windows/window.h"

namespace host {
namespace {

bool g_running = false;

}  // namespace

void StartDevice(const DeviceOptions& options) {
    StopDevice();
    std::filesystem::create_directories(options.folder);
    DeviceOptions running = options;
    // Links are checked by their targets, so the root must contain none.
    running.folder = std::filesystem::canonical(options.folder);
    SetOptions(std::move(running));
    g_running = true;
    ResetFaults();
    SetFileInUse(IsModuleFile);
    ResizeScreen(options.screen);
    StartRegistry();
    StartControls();
}

void StopDevice() {
    if (!g_running) return;
    // Windows first, as their procedures are in the modules. A module may use everything else while it is
    // detached, above all the registry, which is therefore written last.
    ResetWindows();
    ResetMessageBoxes();
    ResetOpenFile();
    ResetClock();
    ResetCom();
    ResetModules();
    ResetImageLists();
    ResetGraphics();
    ResetFiles();
    ResetRegistry();
    ResetFaults();
    SetOptions({});
    g_running = false;
}

LiveHandles CountHandles() {
    LiveHandles counts;
    CountGraphicsHandles(counts);
    CountImageLists(counts);
    CountWindowHandles(counts);
    CountModuleHandles(counts);
    CountRegistryHandles(counts);
    CountFileHandles(counts);
    return counts;
}

}  // namespace host
