#pragma once

#include <cstdint>
#include <functional>

#include <windows.h>

#include "ui/model/EventLoop.h"

namespace zd::ui {
class Toolkit;
}

namespace zd::win32 {

// Real time and the Windows message loop for the toolkit. One waitable
// timer is armed for the earliest due toolkit timer; the loop waits on it
// and on the thread's messages at once, and a modal show runs a loop of its
// own inside the event that showed it, so timers keep firing behind it.
//
// Windows' default timer tick is about 15.6 ms, which would stretch a 30 ms
// spin frame to 31 or 47 ms. The timer is therefore a high-resolution one
// (CREATE_WAITABLE_TIMER_HIGH_RESOLUTION, Windows 10 1803 and later), which
// is exact without raising the timer rate of the whole system; where the
// system refuses it, the multimedia timer period is set to 1 ms for as long
// as the program runs.
class Win32Loop : public ui::EventLoop {
public:
    Win32Loop();
    ~Win32Loop() override;
    Win32Loop(const Win32Loop&) = delete;
    Win32Loop& operator=(const Win32Loop&) = delete;

    void attach(ui::Toolkit& toolkit);

    std::int64_t now() const override;
    void timersChanged() override;
    void runModal(const std::function<bool()>& finished) override;

    // Runs the program's events until `finished` holds or the program ends.
    void run(const std::function<bool()>& finished);
    // Fires every toolkit timer due now; also called while the system runs a
    // loop of its own (a menu open, a window being dragged).
    void fire();

    // Looks at a message before it is dispatched; true when it was taken.
    std::function<bool(const MSG&)> filter;

    bool highResolution() const { return !periodRaised_; }

private:
    void arm();
    bool pumpMessages(const std::function<bool()>& finished);

    ui::Toolkit* toolkit_ = nullptr;
    HANDLE timer_ = nullptr;
    bool periodRaised_ = false;
    LARGE_INTEGER frequency_{};
    LARGE_INTEGER start_{};
};

}  // namespace zd::win32
