#include "front/qt/DesktopPlatform.h"
#include "system/windows/WindowsPlatform.h"

namespace zd::qt {

// Sound and documents by the calls the game was written for; the pictures,
// sounds and documents lie beside the program.
std::unique_ptr<sys::Platform> desktopPlatform() {
    return std::make_unique<sys::WindowsPlatform>();
}

}  // namespace zd::qt
