// SPDX-License-Identifier: MIT
#include "device/device.h"

#include <utility>

#include "device/handles.h"

namespace host {
namespace {

DeviceOptions g_options;
// Nested PlatformScopes of this thread.
thread_local int g_platformDepth = 0;

}  // namespace

const DeviceOptions& Options() { return g_options; }

void SetOptions(DeviceOptions options) { g_options = std::move(options); }

PlatformScope::PlatformScope() { ++g_platformDepth; }
PlatformScope::~PlatformScope() { --g_platformDepth; }

ProductScope::ProductScope() : m_platformDepth(g_platformDepth) { g_platformDepth = 0; }
ProductScope::~ProductScope() { g_platformDepth = m_platformDepth; }

HandleOwner CurrentOwner() { return g_platformDepth > 0 ? HandleOwner::Platform : HandleOwner::Product; }

}  // namespace host
