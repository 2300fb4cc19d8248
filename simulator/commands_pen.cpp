// SPDX-License-Identifier: MIT
// Commands for the pen. Each event is posted after the previous one has been handled.
#include "commands.h"
#include "session.h"

namespace {

using host::Pen;
using PenSpace = Session::PenSpace;

template <PenSpace space, Pen... events>
void Queue(Session& session, const Arguments& arguments) {
    (session.QueuePen(space, events, arguments.Point(0)), ...);
}

constexpr Command kCommands[] = {
    {"down", "X Y", 2, 2, Queue<PenSpace::Panel, Pen::Down>},
    {"move", "X Y", 2, 2, Queue<PenSpace::Panel, Pen::Move>},
    {"up", "X Y", 2, 2, Queue<PenSpace::Panel, Pen::Up>},
    {"tap", "X Y", 2, 2, Queue<PenSpace::Panel, Pen::Down, Pen::Up>},
    {"double", "X Y", 2, 2, Queue<PenSpace::Panel, Pen::Down, Pen::Up, Pen::DoubleClick, Pen::Up>},
    {"dblclk", "X Y", 2, 2, Queue<PenSpace::Panel, Pen::DoubleClick>},
    {"pen down", "X Y", 2, 2, Queue<PenSpace::Screen, Pen::Down>},
    {"pen move", "X Y", 2, 2, Queue<PenSpace::Screen, Pen::Move>},
    {"pen up", "X Y", 2, 2, Queue<PenSpace::Screen, Pen::Up>},
    {"pen dblclk", "X Y", 2, 2, Queue<PenSpace::Screen, Pen::DoubleClick>},
};

}  // namespace

std::span<const Command> PenCommands() { return kCommands; }
