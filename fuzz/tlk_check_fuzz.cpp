// SPDX-License-Identifier: MIT
// Any bytes as a skin for the check, the dump and the preview.
#include <cstdlib>

#include "check.h"
#include "dump.h"
#include "errors.h"
#include "preview.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        const tlk::Module module = tlk::Module::Parse({data, data + size});
        const tlk::Size screen = tlk::GuessScreen(module).value_or(tlk::Size{240, 320});
        for (const tlk::Remark& remark : tlk::Check(module, screen))
            if (tlk::FormatRemark(remark, "a.tlk").empty()) std::abort();
        if (tlk::Dump(module).empty()) std::abort();
        const tlk::SkinModule skin = tlk::ReadSkin(module);
        for (bool isLandscape : {false, true})
            for (std::size_t plane = 0; plane < tlk::kPlaneCount; ++plane)
                try {
                    (void)tlk::Paint(skin, {tlk::LatchesFor(plane) | tlk::latch::kCaps, isLandscape, {}});
                } catch (const tlk::FileError&) {
                }
    } catch (const tlk::FileError&) {
    }
    return 0;
}
