// SPDX-License-Identifier: MIT
// Compares the signs on keys, in the planes that can be reached, with the characters typed there.
#include <unicode.h>

#include <algorithm>
#include <map>

#include "check_parts.h"
#include "name_list.h"

namespace tlk {
namespace {

// The width of the bevel, which is no sign on the key.
constexpr int kBevel = 3;

// Characters without ink.
bool IsBlank(char16_t character) {
    return character <= u' ' || character == u'\u00A0' || character == u'\u00AD' ||
           (character >= u'\u2000' && character <= u'\u200F') || character == u'\u2060' ||
           character == u'\u3000' || character == u'\uFEFF';
}

// Does the picture itself have a sign on the key? The shading of a face runs down or across.
bool DrawsSomething(const Picture& picture, const Rect& rect) {
    const Rect inner{rect.left + kBevel, rect.top + kBevel,
                     std::min(rect.right - kBevel, picture.GetSize().width - 1),
                     std::min(rect.bottom - kBevel, picture.GetSize().height - 1)};
    bool rowsDiffer = false;
    bool columnsDiffer = false;
    for (int y = inner.top; y <= inner.bottom; ++y)
        for (int x = inner.left; x <= inner.right; ++x) {
            rowsDiffer = rowsDiffer || picture.At(x, y) != picture.At(inner.left, y);
            columnsDiffer = columnsDiffer || picture.At(x, y) != picture.At(x, inner.top);
        }
    return rowsDiffer && columnsDiffer;
}

class PlaneCheck {
public:
    PlaneCheck(const SkinModule& skin, const SkinBoard& board, const PlaneSet& reached, RemarkList& remarks)
        : m_skin(skin),
          m_board(board),
          m_keyboard(skin.KeyboardOf(board.kind)),
          m_reached(reached),
          m_remarks(remarks) {}

    void Run() {
        ReportMissingMasks();
        ReportUnusedMasks();
        if (!m_board.picture.IsReadable() || KeysCoverTooMuch(m_board)) return;
        for (const auto& [key, rects] : m_board.layout)
            if (key < m_skin.characters.size()) CheckKey(key, rects);
    }

private:
    void ReportMissingMasks() {
        PlaneSet missing;
        for (std::size_t plane : m_reached)
            if (!m_board.masks[plane].isPresent) missing.insert(plane);
        if (!missing.empty())
            m_remarks.Add(m_board.kind, missing,
                          "can be brought up but has no mask" + m_remarks.Called(MaskNames(missing)) +
                              ": nothing is drawn");
    }

    void ReportUnusedMasks() {
        PlaneSet idle;
        for (std::size_t plane = 0; plane < kPlaneCount; ++plane)
            if (m_board.masks[plane].isPresent && !m_reached.contains(plane)) idle.insert(plane);
        if (!idle.empty())
            m_remarks.Add(
                m_board.kind, idle,
                "no key brings this up: add one, or leave out the mask" + m_remarks.Called(MaskNames(idle)));
    }

    std::string MaskNames(const PlaneSet& planes) const {
        std::string names;
        for (std::size_t plane : planes)
            AppendName(names, MaskResource(m_board.kind, plane));
        return names;
    }

    void CheckKey(std::uint16_t key, const std::vector<Rect>& rects) {
        std::map<std::string, PlaneSet> found;
        for (std::size_t plane : m_reached) {
            const SkinBitmap& mask = m_board.masks[plane];
            if (!IsMaskOf(mask, m_board)) continue;
            m_keyboard.Latch(LatchesFor(plane));
            const std::string text = Compare(key, rects, FindInk(mask.pixels, rects));
            if (!text.empty()) found[text].insert(plane);
        }
        for (const auto& [text, planes] : found)
            m_remarks.Add(m_board.kind, planes == m_reached ? PlaneSet{} : planes, key, text);
    }

    std::string Compare(std::uint16_t key, const std::vector<Rect>& rects, const KeyInk& ink) {
        if (ink.isCut) return "the glyph reaches the edge of the key: it is cut, or runs into the next one";
        const bool showsSomething =
            ink.isThere || (ink.faceShowsPicture && std::ranges::any_of(rects, [this](const Rect& rect) {
                                return DrawsSomething(m_board.picture.pixels, rect);
                            }));
        if (IsFunction(key)) return showsSomething || key == function_key::kSpace ? "" : "shows nothing";
        const char16_t character = m_keyboard.CharacterOf(key);
        if (character == 0) return ink.isThere ? "shows something but types no character" : "";
        return showsSomething || IsBlank(character) ? "" : "types " + Quote(character) + " but shows nothing";
    }

    static std::string Quote(char16_t character) { return "\"" + unicode::ToUtf8(character) + "\""; }

    const SkinModule& m_skin;
    const SkinBoard& m_board;
    Keyboard& m_keyboard;
    const PlaneSet& m_reached;
    RemarkList& m_remarks;
};

void CheckLanguage2(const SkinModule& skin, const Reach& reach, RemarkList& remarks) {
    const auto hasLanguage2 = [](const PlaneSet& planes) {
        return std::ranges::any_of(planes, [](std::size_t plane) { return plane >= kSlotCount / 2; });
    };
    if ((hasLanguage2(reach.Planes(BoardKind::Portrait)) ||
         hasLanguage2(reach.Planes(BoardKind::Landscape))) &&
        !skin.hasSecondLanguage)
        remarks.Add("language 2 can be switched to but has no characters" + remarks.Called("LOCALE_CHARSET") +
                    ": its keys type nothing");
}

}  // namespace

void CheckPlanes(const CheckedSkin& checked, const Reach& reach, RemarkList& remarks) {
    CheckLanguage2(checked.skin, reach, remarks);
    for (const SkinBoard& board : checked.skin.boards) {
        if (!checked.screen.Uses(board.kind)) continue;
        const PlaneSet& reached = reach.Planes(board.kind);
        if (board.picture.isPresent)
            PlaneCheck(checked.skin, board, reached, remarks).Run();
        else if (board.kind == BoardKind::Digits && !reached.empty())
            remarks.Add(board.kind, "the key \"digits\" leads here but the picture is missing" +
                                        remarks.Called(PictureResource(board.kind)));
    }
}

}  // namespace tlk
