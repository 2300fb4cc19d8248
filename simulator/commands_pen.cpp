// SPDX-License-Identifier: MIT
// The pen. Each event is posted when the one before has been dealt with.
#include "commands.h"
#include "session.h"

namespace {

using host::Pen;

void Queue(Session& session, const Arguments& arguments, std::initializer_list<Pen> events) {
    const POINT point = arguments.Point(0);
    for (const Pen event : events) {
        session.QueuePen(event, point);
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

constexpr Command commands[] = {
    {"down", "X Y", 2, 2, Down}, {"move", "X Y", 2, 2, Move},     {"up", "X Y", 2, 2, Up},
    {"tap", "X Y", 2, 2, Tap},   {"double", "X Y", 2, 2, Double}, {"dblclk", "X Y", 2, 2, DoubleClick},
};

}  // namespace

std::span<const Command> PenCommands() { return commands; }
