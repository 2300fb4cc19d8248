// SPDX-License-Identifier: MIT
// Builds skin files in memory with the skin compiler's writer. Checks nothing, so that broken skins can be
// built, too.
#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "tools/tlk/module_writer.h"

namespace test {

// RGB for integers, of which the lowest 8 bits count.
inline COLORREF Color(int red, int green, int blue) {
    return static_cast<COLORREF>((red & 0xFF) | (green & 0xFF) << 8 | (blue & 0xFF) << 16);
}

struct LayoutRecord {
    WORD key;
    WORD left, top, right, bottom;
    WORD bitmap = 0;
};

// The bytes of resources as in skins.
std::string LayoutBytes(const std::vector<LayoutRecord>& records);
std::string RectBytes(const RECT& rectangle);
std::string WordBytes(const std::vector<WORD>& words);  // least significant byte first
std::string PictureBytes(int width, int height, const std::function<COLORREF(int x, int y)>& colorAt);
std::string MaskBytes(int width, int height, const std::function<bool(int x, int y)>& bitAt);

class SkinBuilder {
public:
    // Adds or replaces a resource. The case of the name does not matter.
    SkinBuilder& Bitmap(const std::string& name, std::string dib);
    SkinBuilder& Data(const std::string& name, std::string bytes);
    SkinBuilder& Without(const std::string& name);
    // Makes the resource's directory entry point beyond the end of the file.
    SkinBuilder& PointOutside(const std::string& name);

    // The file's bytes.
    std::string Build() const;
    // Writes the file into the device's folder "\windows".
    void Install(const std::string& fileName) const;

private:
    // In the order of the file: data before bitmaps, then by upper-case name.
    struct ResourceName {
        ResourceName(tlk::ResourceKind resourceKind, std::string text);
        bool operator==(const ResourceName&) const = default;
        bool operator<(const ResourceName& other) const {
            return kind == other.kind ? name < other.name : kind == tlk::ResourceKind::Data;
        }

        tlk::ResourceKind kind;
        std::string name;
    };
    struct Content {
        std::string bytes;
        bool outside = false;
    };

    std::map<ResourceName, Content> m_resources;
};

}  // namespace test
