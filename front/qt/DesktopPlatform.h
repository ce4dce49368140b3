#pragma once

#include <memory>

#include "system/Platform.h"

namespace zd::qt {

// The platform the game runs on on this desktop: on Windows the system's
// own throughout, elsewhere QtPlatform. The build chooses.
std::unique_ptr<sys::Platform> desktopPlatform();

}  // namespace zd::qt
