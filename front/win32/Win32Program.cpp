#include "front/win32/Win32Program.h"

#include <cmath>

#include <windows.h>

#include "game/Start.h"

namespace zd::win32 {

namespace {

// The primary screen in twips of logical pixels, as the model counts.
int screenTwips(int metric) {
    const double scale = GetDpiForSystem() / 96.0;
    return static_cast<int>(std::lround(GetSystemMetrics(metric) / scale)) * ui::kTwipsPerPixel;
}

}  // namespace

Win32Program::Win32Program()
    : p(loop, platform, screenTwips(SM_CXSCREEN), screenTwips(SM_CYSCREEN)) {
    loop.attach(p.tk);
    bindEventRoutines(p);
}

}  // namespace zd::win32
