#pragma once

#include <exception>
#include <string>

#include <windows.h>

namespace zd::win32 {

// Runs a piece of model work from inside a window procedure. The model
// catches the program's end itself; anything else must not unwind through
// the system's frames, so it ends the program here with its message.
template <class F>
void guarded(F&& work) noexcept {
    try {
        work();
    } catch (const std::exception& e) {
        FatalAppExitA(0, (std::string("zifferndach: unexpected error: ") + e.what()).c_str());
    } catch (...) {
        FatalAppExitA(0, "zifferndach: unexpected error");
    }
}

}  // namespace zd::win32
