#pragma once

#include <QtGlobal>
#include <exception>

namespace zd::qt {

// Runs a piece of model work from inside a Qt frame. The model catches the
// program's end itself; anything else escaping would unwind through Qt,
// which it cannot survive, so it ends the program here with its message.
template <class F>
void guarded(F&& work) noexcept {
    try {
        work();
    } catch (const std::exception& e) {
        qFatal("zifferndach: unexpected error: %s", e.what());
    } catch (...) {
        qFatal("zifferndach: unexpected error");
    }
}

}  // namespace zd::qt
