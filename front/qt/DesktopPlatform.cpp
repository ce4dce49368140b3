#include "front/qt/DesktopPlatform.h"

#include "front/qt/QtPlatform.h"

namespace zd::qt {

std::unique_ptr<sys::Platform> desktopPlatform() {
    return std::make_unique<QtPlatform>();
}

}  // namespace zd::qt
