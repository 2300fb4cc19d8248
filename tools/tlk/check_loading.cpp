// SPDX-License-Identifier: MIT
// Checks the resources: would the engine load the skin, and do they fit the screen and each other?
#include <algorithm>
#include <cctype>

#include "check_parts.h"

namespace tlk {
namespace {

class LoadingCheck {
public:
    LoadingCheck(const CheckedSkin& checked, RemarkList& remarks)
        : m_module(checked.module), m_skin(checked.skin), m_screen(checked.screen), m_remarks(remarks) {}

    void Run() {
        CheckTypes();
        CheckPortraitWidth();
        // The engine tried the skin on this screen.
        const bool isTried =
            m_skin.Board(BoardKind::Portrait).picture.GetSize().width == m_screen.upright.width;
        if (isTried && m_screen.Uses(BoardKind::Landscape)) CheckLandscapeWidth();
        for (const SkinBoard& board : m_skin.boards) {
            if (!m_screen.Uses(board.kind)) continue;
            CheckPicture(board);
            CheckMasks(board);
            CheckRecords(board);
        }
        CheckSecondLanguage();
    }

private:
    // The engine looks for data of the type named "RC_DATA"; for resource compilers RCDATA is the standard
    // type 10, which it never finds.
    void CheckTypes() {
        for (const Module::Entry& entry : m_module.Entries())
            if (entry.type == "#10")
                m_remarks.Add("data " + entry.name +
                              " has the standard type RCDATA and is not found: name its type \"RC_DATA\", "
                              "in quotes where the resource compiler asks for them");
    }

    void CheckPortraitWidth() {
        const SkinBitmap& picture = m_skin.Board(BoardKind::Portrait).picture;
        const int width = m_screen.upright.width;
        if (!picture.isPresent)
            m_remarks.Add(BoardKind::Portrait, "the picture of the keyboard is missing" +
                                                   m_remarks.Called(PictureResource(BoardKind::Portrait)) +
                                                   ": the file is no skin");
        else if (picture.IsReadable() && picture.GetSize().width != width)
            m_remarks.Add(BoardKind::Portrait, "the picture is " + std::to_string(picture.GetSize().width) +
                                                   " pixels wide: the skin is for no screen of " +
                                                   Text(m_screen.upright) + ", whose narrow side has " +
                                                   std::to_string(width));
    }

    void CheckLandscapeWidth() {
        const SkinBitmap& picture = m_skin.Board(BoardKind::Landscape).picture;
        const Size screen = m_screen.Turned();
        const std::string refused = ": the skin does not load when the screen is turned to " + Text(screen);
        const std::string width = std::to_string(picture.GetSize().width);
        if (!picture.isPresent)
            m_remarks.Add(BoardKind::Landscape, "the picture of the turned keyboard is missing" +
                                                    m_remarks.Called(PictureResource(BoardKind::Landscape)) +
                                                    refused);
        else if (!picture.IsReadable())
            return;
        else if (!m_skin.engine->Turned().TakesSkin())
            m_remarks.Add(BoardKind::Landscape, "the picture is " + width + " pixels wide" + refused);
        else if (picture.GetSize().width < screen.width)
            m_remarks.Add(BoardKind::Landscape, "the picture is as wide as the narrow side of the screen: " +
                                                    std::to_string(screen.width - picture.GetSize().width) +
                                                    " pixels beside it stay empty");
    }

    void CheckPicture(const SkinBoard& board) {
        if (!board.picture.isPresent) return;
        if (!board.picture.IsReadable()) {
            m_remarks.Add(board.kind,
                          "the picture is damaged or compressed and cannot be checked: use 1, 4, "
                          "8, 16, 24 or 32 bits without compression");
            return;
        }
        const Size picture = board.picture.GetSize();
        // If the skin does not load there, its digit keyboard is never seen.
        const bool isUprightOnly =
            board.kind == BoardKind::Digits && !m_skin.Board(BoardKind::Landscape).picture.isPresent;
        const Size panel = m_screen.Panel(isUprightOnly ? BoardKind::Portrait : board.kind);
        if (picture.height > panel.height)
            m_remarks.Add(board.kind, "the picture is " + std::to_string(picture.height) +
                                          " pixels high, the panel " + std::to_string(panel.height) +
                                          ": the lowest " + std::to_string(picture.height - panel.height) +
                                          " rows are cut off");
        if (picture.height < panel.height)
            m_remarks.Add(board.kind,
                          "the picture is " + std::to_string(picture.height) + " pixels high, the panel " +
                              std::to_string(panel.height) +
                              (board.kind == BoardKind::Digits ? ": letters stay visible below it"
                                                               : ": a strip below it stays empty"));
        if (board.kind == BoardKind::Digits &&
            (picture.width < panel.width || (picture.width > panel.width && !isUprightOnly)))
            m_remarks.Add(
                board.kind,
                "the picture is " + std::to_string(picture.width) + " pixels wide, the screen's wider side " +
                    std::to_string(panel.width) + ": " +
                    (picture.width < panel.width ? "letters stay visible beside it when the screen is turned"
                                                 : "the rest is never seen"));
    }

    // Missing masks are reported with the planes.
    void CheckMasks(const SkinBoard& board) {
        for (std::size_t plane = 0; plane < kPlaneCount; ++plane) {
            const SkinBitmap& mask = board.masks[plane];
            if (!mask.isPresent) continue;
            const PlaneSet planes{plane};
            if (mask.depth != 1)
                m_remarks.Add(board.kind, planes,
                              "the mask is no bitmap of one bit per pixel, black and white: the plane "
                              "cannot be drawn");
            else if (board.picture.IsReadable() && mask.GetSize() != board.picture.GetSize())
                m_remarks.Add(board.kind, planes,
                              "the mask is " + Text(mask.GetSize()) + " pixels large, its picture " +
                                  Text(board.picture.GetSize()));
        }
    }

    void CheckRecords(const SkinBoard& board) {
        if (!board.picture.isPresent) return;
        const auto records = m_module.Find(ResourceKind::Data, LayoutResource(board.kind));
        if (!records && board.kind == BoardKind::Landscape)
            m_remarks.Add(board.kind, "its own layout is missing" +
                                          m_remarks.Called(LayoutResource(board.kind)) +
                                          ": the keys are where portrait has them");
        if (board.recordCount == 0)
            m_remarks.Add(board.kind, "the layout is missing or empty: no tap hits a key");
        if (board.readCount < board.recordCount)
            m_remarks.Add(board.kind, "the layout has " + std::to_string(board.recordCount) +
                                          " records, too many or too large ones: only the first " +
                                          std::to_string(board.readCount) + " were checked");
        if (!records) return;
        if (records->size() % kRecordSize != 0)
            m_remarks.Add(board.kind, "the layout ends with " +
                                          std::to_string(records->size() % kRecordSize) +
                                          " bytes that fill no record of 16");
    }

    void CheckSecondLanguage() {
        const auto locale = m_module.Find(ResourceKind::Data, "LOCALE_CHARSET");
        if (locale && (locale->size() < 2 || (locale->size() - 2) % 8 != 0))
            m_remarks.Add("the characters of language 2" + m_remarks.Called("LOCALE_CHARSET") + " have " +
                          std::to_string(locale->size()) +
                          " bytes, which is not 2 and a multiple of 8: the rest is ignored");
        const auto caps = m_module.Find(ResourceKind::Data, "CAPS_RECT");
        if (caps && caps->size() != 16)
            m_remarks.Add("the area that caps lock leaves alone" + m_remarks.Called("CAPS_RECT") + " has " +
                          std::to_string(caps->size()) + " bytes instead of 16");
    }

    const Module& m_module;
    const SkinModule& m_skin;
    const Screen& m_screen;
    RemarkList& m_remarks;
};

}  // namespace

void CheckLoading(const CheckedSkin& checked, RemarkList& remarks) { LoadingCheck(checked, remarks).Run(); }

}  // namespace tlk
