#include "ui/qt/DesktopPlatform.h"

#include "ui/qt/QtPlatform.h"

namespace zd::qt {

std::unique_ptr<sys::Platform> desktopPlatform() { return std::make_unique<QtPlatform>(); }

}  // namespace zd::qt
