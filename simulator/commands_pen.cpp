// SPDX-License-Identifier: MIT
// Commands for the pen. Each event is posted after the previous one has been handled.
#include "commands.h"
#include "session.h"

namespace {

using host::Pen;
using PenSpace = Session::PenSpace;

void Queue(Session& session, const Arguments& arguments, std::initializer_list<Pen> events) {
    const POINT point = arguments.Point(0);
    for (const Pen event : events) {
        session.QueuePen(PenSpace::Panel, event, point);
    }
}

void Down(Session& session, const Arguments& arguments) { Queue(session, arguments, {Pen::Down}); }
void Move(Session& session, const Arguments& arguments) { Queue(session, arguments, {Pen::Move}); }
void Up(Session& session, const Arguments& arguments) { Queue(session, arguments, {Pen::Up}); }
void Tap(Session& session, const Arguments& arguments) { Queue(session, arguments, {Pen::Down, Pen::Up}); }

void Double(Session& session, const Arguments& arguments) {
    Queue(session, arguments, {Pen::Down, Pen::Up, Pen::DoubleClick, Pen::Up});
}

void DoubleClick(Session& session, const Arguments& arguments) {
    Queue(session, arguments, {Pen::DoubleClick});
}

template <Pen event>
void OnScreen(Session& session, const Arguments& arguments) {
    session.QueuePen(PenSpace::Screen, event, arguments.Point(0));
}

constexpr Command kCommands[] = {
    {"down", "X Y", 2, 2, Down},
    {"move", "X Y", 2, 2, Move},
    {"up", "X Y", 2, 2, Up},
    {"tap", "X Y", 2, 2, Tap},
    {"double", "X Y", 2, 2, Double},
    {"dblclk", "X Y", 2, 2, DoubleClick},
    {"pen down", "X Y", 2, 2, OnScreen<Pen::Down>},
    {"pen move", "X Y", 2, 2, OnScreen<Pen::Move>},
    {"pen up", "X Y", 2, 2, OnScreen<Pen::Up>},
    {"pen dblclk", "X Y", 2, 2, OnScreen<Pen::DoubleClick>},
};

}  // namespace

std::span<const Command> PenCommands() { return kCommands; }
