#pragma once

#include "game/program/Program.h"

namespace zd {

// Binds the event routines of every window of the program.
void bindEventRoutines(Program& p);

// The program's entry: runs once, from top to bottom, and leaves the rest
// to the events of the windows.
void Main(Program& p);

}  // namespace zd
