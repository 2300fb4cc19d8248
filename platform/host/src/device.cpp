// SPDX-License-Identifier: MIT
#include "device.h"

#include "gdi.h"
#include "handles.h"

namespace host {
namespace {

DeviceOptions g_options;
bool g_running = false;
// Nested PlatformScopes of this thread.
thread_local int t_platformDepth = 0;

}  // namespace

const DeviceOptions& Options() { return g_options; }

void StartDevice(const DeviceOptions& options) {
    StopDevice();
    std::filesystem::create_directories(options.folder);
    g_options = options;
    // Links are judged by where they lead, so the root has to be free of them.
    g_options.folder = std::filesystem::canonical(options.folder);
    g_running = true;
    ResetFaults();
    ResizeScreen(options.screen);
    StartRegistry();
}

void StopDevice() {
    if (!g_running) return;
    // Windows first: their procedures live in the modules. A module may still use everything else while it is
    // detached, the registry most of all, so that is written last.
    ResetWindows();
    ResetOpenFile();
    ResetCom();
    ResetModules();
    ResetImageLists();
    ResetGraphics();
    ResetFiles();
    ResetRegistry();
    ResetFaults();
    g_options = {};
    g_running = false;
}

PlatformScope::PlatformScope() { ++t_platformDepth; }
PlatformScope::~PlatformScope() { --t_platformDepth; }

ProductScope::ProductScope() : m_platformDepth(t_platformDepth) { t_platformDepth = 0; }
ProductScope::~ProductScope() { t_platformDepth = m_platformDepth; }

HandleOwner CurrentOwner() { return t_platformDepth > 0 ? HandleOwner::Platform : HandleOwner::Product; }

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
