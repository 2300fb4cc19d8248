// SPDX-License-Identifier: MIT
#include "compile.h"

#include <algorithm>

#include "art.h"
#include "bitmap.h"
#include "drawing.h"
#include "errors.h"
#include "layout.h"
#include "skin_module.h"

namespace tlk {
namespace {

void PutBig16(Bytes& bytes, int value) {
    Put8(bytes, static_cast<unsigned>(value) >> 8);
    Put8(bytes, static_cast<unsigned>(value));
}

// Key index, an unused bitmap value, the rectangle, four reserved bytes; big-endian.
void PutRecord(Bytes& bytes, std::uint16_t key, const Rect& rect) {
    PutBig16(bytes, key);
    PutBig16(bytes, 0);
    for (int edge : {rect.left, rect.top, rect.right, rect.bottom})
        PutBig16(bytes, edge);
    Put32(bytes, 0);
}

Bytes EncodeLayout(const Layout& layout) {
    Bytes bytes;
    for (const Key& key : layout.keys) {
        for (const Rect& rect : key.rects) {
            PutRecord(bytes, key.key, rect);
            // The margin belongs to the adjacent key. Rectangles without area are hit but never drawn
            // pressed.
            const int left = rect.left == kMargin ? 0 : rect.left;
            if (rect.top == kMargin) PutRecord(bytes, key.key, {left, 0, rect.right, 0});
            if (left < rect.left) PutRecord(bytes, key.key, {0, rect.top, 0, rect.bottom});
        }
    }
    return bytes;
}

// Unlike layout records, little-endian and 32 bits wide.
Bytes EncodeCapsRect(const Rect& rect) {
    Bytes bytes;
    for (int edge : {rect.left, rect.top, rect.right, rect.bottom})
        Put32(bytes, static_cast<std::uint32_t>(edge));
    return bytes;
}

// A header of two bytes, then language 2 from the first character entry to the last one of the skin's
// arrangement.
Bytes EncodeSecondLanguage(const Skin& skin) {
    Bytes bytes;
    Put16(bytes, 0);
    for (std::size_t key = kFirstCharacter; key <= skin.arrangement->last; ++key)
        for (std::size_t slot = 4; slot < kSlotCount; ++slot)
            Put16(bytes, skin.characters[key][slot]);
    return bytes;
}

class Compilation {
public:
    Compilation(const Skin& skin, const Font& font)
        : m_skin(skin), m_lettering(font), m_hasLanguageKey(skin.HasKey(function_key::kLanguage)) {}

    std::vector<Resource> Run() {
        TryEach(kBoards, [this](BoardKind kind) {
            if (const Board* board = m_skin.Find(kind)) AddBoard(kind, LayOut(m_skin, *board));
        });
        if (m_hasLanguageKey) Add(ResourceKind::Data, "LOCALE_CHARSET", EncodeSecondLanguage(m_skin));
        // Only its presence counts.
        if (m_skin.swipeOnly) Add(ResourceKind::Data, "SWIPE_ONLY", {1});
        RequireArtUsed();
        return std::move(m_resources);
    }

private:
    void AddBoard(BoardKind kind, const Layout& layout) {
        Plane plane;
        plane.digits = kind == BoardKind::Digits;
        TryAll(
            [&] {
                if (kind == BoardKind::Portrait) plane.backspaceFollowsShift = AddCapsRect(layout);
            },
            [&] { AddPicture(kind, layout); },
            [&] { AddMasks(kind, layout, plane.digits ? std::vector{plane} : ShownPlanes(plane)); });
    }

    // Returns whether Backspace is in the CAPS rectangle, whose keys follow Shift alone.
    bool AddCapsRect(const Layout& layout) {
        if (!m_skin.capsRect || m_skin.HasSquareScreen()) return false;
        const auto area = FindCapsRect(m_skin, layout);
        if (!area) return false;
        Add(ResourceKind::Data, "CAPS_RECT", EncodeCapsRect(*area));
        return Holds(*area, layout, function_key::kBackspace);
    }

    void AddPicture(BoardKind kind, const Layout& layout) {
        const std::string name(PictureResource(kind));
        const ArtFile* art = FindArt(name);
        Add(ResourceKind::Bitmap, name,
            EncodePicture(art ? ReadArtPicture(*art, layout.size) : DrawPicture(m_skin, layout)));
        Add(ResourceKind::Data, std::string(LayoutResource(kind)), EncodeLayout(layout));
    }

    std::vector<Plane> ShownPlanes(Plane plane) const {
        std::vector<Plane> planes;
        for (plane.slot = 0; plane.slot < kSlotCount; ++plane.slot)
            if (CanShow(plane)) planes.push_back(plane);
        return planes;
    }

    // Omits planes that no key selects. A stroke upwards from the language key acts as an umlaut key.
    bool CanShow(const Plane& plane) const {
        if (plane.Language() == 1 && !m_hasLanguageKey) return false;
        if (plane.IsUmlaut() && !m_hasLanguageKey && !m_skin.HasKey(function_key::kUmlaut)) return false;
        return !plane.IsLarge() || m_skin.HasKey(function_key::kShift) || m_skin.HasKey(function_key::kCaps);
    }

    void AddMasks(BoardKind board, const Layout& layout, const std::vector<Plane>& planes) {
        std::vector<Plane> drawn;
        std::vector<std::string> names;
        TryEach(planes, [&](const Plane& plane) {
            const std::string name = MaskResource(board, plane.digits ? kDigitPlane : plane.slot);
            if (const ArtFile* art = FindArt(name))
                return Add(ResourceKind::Bitmap, name, EncodeMask(ReadArtMask(*art, layout.size)));
            drawn.push_back(plane);
            names.push_back(name);
        });
        const std::vector<Mask> masks = DrawMasks(m_skin, layout, m_lettering, drawn);
        for (std::size_t i = 0; i < masks.size(); ++i)
            Add(ResourceKind::Bitmap, names[i], EncodeMask(masks[i]));
    }

    const ArtFile* FindArt(const std::string& name) const {
        const auto found = m_skin.art.find(name);
        return found == m_skin.art.end() ? nullptr : &found->second;
    }

    void RequireArtUsed() const {
        TryEach(
            m_skin.art,
            [this](const auto& art) {
                const auto& [name, file] = art;
                if (std::ranges::find(m_resources, name, &Resource::name) == m_resources.end())
                    throw SourceError(
                        file.place,
                        "the skin has nothing that " + file.path +
                            " could replace: add the keyboard or the key that shows it, or remove "
                            "the line");
            });
    }

    void Add(ResourceKind kind, std::string name, Bytes data) {
        m_resources.push_back({kind, std::move(name), std::move(data)});
    }

    static bool Holds(const Rect& area, const Layout& layout, std::uint16_t index) {
        const auto key = std::ranges::find(layout.keys, index, &Key::key);
        return key != layout.keys.end() && area.Contains(key->rects[0]);
    }

    const Skin& m_skin;
    Lettering m_lettering;
    bool m_hasLanguageKey;
    std::vector<Resource> m_resources;
};

}  // namespace

std::vector<Resource> CompileSkin(const Skin& skin, const Font& font) {
    return Compilation(skin, font).Run();
}

}  // namespace tlk
