#pragma once

#include <string>

#include "system/Platform.h"

namespace zd::sys {

// True for a file or folder that exists, and for every name the system does
// not report as "not found" in an existing folder; false for the empty name.
bool ExistiertDatei(Platform& platform, const std::string& name);

// The path with exactly one closing separator.
std::string PfadMitTrenner(const std::string& pfad);

}  // namespace zd::sys
