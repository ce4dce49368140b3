#pragma once

#include "game/program/Programm.h"

namespace zd {

// Binds the event routines of every window of the program.
void richteEin(Programm& p);

// The program's entry: runs once, from top to bottom, and leaves the rest
// to the events of the windows.
void Main(Programm& p);

}  // namespace zd
