#include "front/win32/Win32Loop.h"

#include <algorithm>

#include <mmsystem.h>

#include "ui/model/Toolkit.h"

#ifndef CREATE_WAITABLE_TIMER_HIGH_RESOLUTION
#define CREATE_WAITABLE_TIMER_HIGH_RESOLUTION 0x00000002
#endif

namespace zd::win32 {

Win32Loop::Win32Loop() {
    QueryPerformanceFrequency(&frequency_);
    QueryPerformanceCounter(&start_);
    timer_ = CreateWaitableTimerExW(nullptr, nullptr, CREATE_WAITABLE_TIMER_HIGH_RESOLUTION,
                                    TIMER_ALL_ACCESS);
    if (!timer_) {
        timer_ = CreateWaitableTimerW(nullptr, FALSE, nullptr);
        periodRaised_ = timeBeginPeriod(1) == TIMERR_NOERROR;
    }
}

Win32Loop::~Win32Loop() {
    if (periodRaised_) timeEndPeriod(1);
    if (timer_) CloseHandle(timer_);
}

void Win32Loop::attach(ui::Toolkit& toolkit) {
    toolkit_ = &toolkit;
    arm();
}

std::int64_t Win32Loop::now() const {
    LARGE_INTEGER t;
    QueryPerformanceCounter(&t);
    return (t.QuadPart - start_.QuadPart) * 1000 / frequency_.QuadPart;
}

void Win32Loop::timersChanged() {
    arm();
}

void Win32Loop::arm() {
    if (!toolkit_ || toolkit_->ended()) {
        CancelWaitableTimer(timer_);
        return;
    }
    const auto due = toolkit_->timers().nextDue();
    if (!due) {
        CancelWaitableTimer(timer_);
        return;
    }
    // Relative, in units of 100 ns; at least one, as 0 would mean "never".
    LARGE_INTEGER wait;
    wait.QuadPart = -std::max<std::int64_t>(1, (*due - now()) * 10000);
    SetWaitableTimer(timer_, &wait, 0, nullptr, nullptr, FALSE);
}

void Win32Loop::fire() {
    if (!toolkit_) return;
    // One moment for the whole round: a timer whose event takes longer than
    // its interval is due again at once, and must not keep input waiting.
    const std::int64_t moment = now();
    while (!toolkit_->ended() && toolkit_->fireDueTimer(moment)) {
    }
    arm();
}

void Win32Loop::runModal(const std::function<bool()>& finished) {
    run(finished);
}

bool Win32Loop::pumpMessages(const std::function<bool()>& finished) {
    MSG msg;
    while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
        if (!filter || !filter(msg)) {
            TranslateMessage(&msg);
            DispatchMessageW(&msg);
        }
        if ((toolkit_ && toolkit_->ended()) || finished()) return false;
        // A timer due meanwhile is not kept waiting behind a stream of input.
        if (WaitForSingleObject(timer_, 0) == WAIT_OBJECT_0) fire();
    }
    return true;
}

void Win32Loop::run(const std::function<bool()>& finished) {
    while (!(toolkit_ && toolkit_->ended()) && !finished()) {
        const DWORD woke =
            MsgWaitForMultipleObjectsEx(1, &timer_, INFINITE, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
        if (woke == WAIT_OBJECT_0) {
            fire();
        } else if (!pumpMessages(finished)) {
            return;
        }
    }
}

}  // namespace zd::win32
