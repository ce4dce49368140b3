#pragma once

#include <optional>
#include <string>

namespace zd {

// The list file is written in Windows-1252 when every character fits, so
// that lists of older installations read and write unchanged, and in UTF-8
// otherwise. Reading takes valid UTF-8 as it is and anything else as
// Windows-1252.
std::string toFileText(const std::string& utf8);
std::string fromFileText(const std::string& bytes);

}  // namespace zd
