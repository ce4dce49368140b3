#pragma once

#include <optional>
#include <string>

#include "game/program/Program.h"

namespace zd::drive {

// A shared variable as the driver prints it, or nothing if unknown.
std::optional<std::string> printVariable(Program& p, const std::string& name,
                                         std::optional<int> index);
// Sets a shared variable from its printed form; false if it is unknown or
// the value is one the program can never hold.
bool setVariable(Program& p, const std::string& name, std::optional<int> index,
                 const std::string& value);

}  // namespace zd::drive
