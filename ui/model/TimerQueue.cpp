#include "ui/model/TimerQueue.h"

#include "ui/model/Control.h"
#include "ui/model/EventLoop.h"

namespace zd::ui {

void TimerQueue::insert(Timer& timer) {
    queue_.emplace(timer.due_, timer.order_, &timer);
    timer.queued_ = true;
}

void TimerQueue::remove(Timer& timer) {
    // A timer taken out while its event runs must not be put back after it.
    ++timer.generation_;
    if (!timer.queued_) return;
    queue_.erase(Key{timer.due_, timer.order_, &timer});
    timer.queued_ = false;
}

void TimerQueue::restart(Timer& timer) {
    remove(timer);
    ++timer.generation_;
    if (timer.running()) {
        timer.due_ = loop_.now() + timer.interval_;
        timer.order_ = nextOrder_++;
        insert(timer);
    }
    loop_.timersChanged();
}

std::optional<std::int64_t> TimerQueue::nextDue() const {
    if (queue_.empty()) return std::nullopt;
    return std::get<0>(*queue_.begin());
}

Timer* TimerQueue::takeDue(std::int64_t now) {
    if (queue_.empty() || std::get<0>(*queue_.begin()) > now) return nullptr;
    Timer* timer = std::get<2>(*queue_.begin());
    queue_.erase(queue_.begin());
    timer->queued_ = false;
    return timer;
}

std::uint64_t TimerQueue::generationOf(const Timer& timer) {
    return timer.generation_;
}

void TimerQueue::rearm(Timer& timer, std::uint64_t generationBefore, std::int64_t now) {
    if (timer.generation_ != generationBefore || !timer.running() || timer.queued_) return;
    timer.due_ += timer.interval_;
    // A real clock can fall behind; then skip the ticks that were missed
    // instead of firing them in a burst.
    if (timer.due_ <= now) timer.due_ = now + timer.interval_;
    insert(timer);
    loop_.timersChanged();
}

}  // namespace zd::ui
