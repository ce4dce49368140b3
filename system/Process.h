#pragma once

#include <string>

namespace zd::sys {

// The folder of the running program's own file.
std::string ownProgramFolder();

// Standard input, output and error carry bytes unchanged, so that a line
// end is written as the one byte 10 on every system.
void binaryStandardStreams();

}  // namespace zd::sys
