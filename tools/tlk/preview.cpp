// SPDX-License-Identifier: MIT
#include "preview.h"

#include <algorithm>
#include <cctype>

#include "bitmap.h"
#include "errors.h"

namespace tlk {
namespace {

struct PlaneNames {
    std::string mask;
    std::string picture;
    std::string layout;
};

PlaneNames NamesOf(std::string_view plane) {
    std::string name(plane);
    std::ranges::transform(name, name.begin(),
                           [](unsigned char letter) { return static_cast<char>(std::toupper(letter)); });
    if (name == "DIGIT") return {"DIGIT_MASK", "digit_keyboard_bitmap", "DIGIT_LAYOUT_STRUCT"};
    constexpr std::string_view kLandscape = "_LS";
    if (name.ends_with(kLandscape)) {
        name.resize(name.size() - kLandscape.size());
        return {name + "_MASK_LS", "LANSCAPE_KEYBOARD_BITMAP", "LNDSCP_LAYOUT_STRUCT"};
    }
    return {name + "_MASK", "char_keyboard_bitmap", "CHAR_LAYOUT_STRUCT"};
}

Picture ReadBitmap(const Module& skin, const std::string& name) {
    const auto data = skin.Find(ResourceKind::Bitmap, name);
    if (!data) throw FileError("the skin has no bitmap " + name);
    auto picture = DecodeBitmap(*data);
    if (!picture) throw FileError("bitmap " + name + " is of a kind that cannot be shown");
    return std::move(*picture);
}

void ShowThrough(Picture& picture, const Picture& mask) {
    for (int y = 0; y < picture.GetSize().height; ++y)
        for (int x = 0; x < picture.GetSize().width; ++x)
            if (!mask.Contains(x, y) || mask.At(x, y) == Color{}) picture.At(x, y) = Color{};
}

// Black inverted is white: what the mask hides comes out right as well. Right and bottom edge stay out.
void Invert(Picture& picture, const Rect& rect) {
    const Size size = picture.GetSize();
    for (int y = rect.top; y < std::min(rect.bottom, size.height); ++y)
        for (int x = rect.left; x < std::min(rect.right, size.width); ++x) {
            Color& color = picture.At(x, y);
            color = {static_cast<std::uint8_t>(~color.red), static_cast<std::uint8_t>(~color.green),
                     static_cast<std::uint8_t>(~color.blue)};
        }
}

int Big16(std::span<const std::uint8_t> bytes, std::size_t offset) {
    return bytes[offset] << 8 | bytes[offset + 1];
}

}  // namespace

Picture ShowPlane(const Module& skin, std::string_view plane, const std::vector<int>& pressed) {
    const PlaneNames names = NamesOf(plane);
    const Picture mask = ReadBitmap(skin, names.mask);
    Picture picture = ReadBitmap(skin, names.picture);
    ShowThrough(picture, mask);
    const auto layout = skin.Find(ResourceKind::Data, names.layout);
    if (!layout) return picture;
    for (std::size_t record = 0; record + 16 <= layout->size(); record += 16)
        if (std::ranges::find(pressed, Big16(*layout, record)) != pressed.end())
            Invert(picture, {Big16(*layout, record + 4), Big16(*layout, record + 6),
                             Big16(*layout, record + 8), Big16(*layout, record + 10)});
    return picture;
}

}  // namespace tlk
