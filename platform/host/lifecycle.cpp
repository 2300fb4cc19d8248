// SPDX-License-Identifier: MIT
// Starting and stopping the device, which takes every room.
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
    // Links are judged by where they lead, so the root has to be free of them.
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
    // Windows first: their procedures live in the modules. A module may still use everything else while it is
    // detached, the registry most of all, so that is written last.
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
