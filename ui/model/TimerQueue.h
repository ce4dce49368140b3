#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <tuple>

namespace zd::ui {

class Timer;
class EventLoop;

// Running timers ordered by (due time, order of starting): two timers due at
// the same moment fire first-in first-out.
class TimerQueue {
public:
    explicit TimerQueue(EventLoop& loop) : loop_(loop) {}

    // A timer's Enabled or Interval changed: (re)start or stop it.
    void restart(Timer& timer);
    void remove(Timer& timer);

    std::optional<std::int64_t> nextDue() const;
    // Takes the earliest timer if it is due at `now`; it is rescheduled by
    // `rearm` after its event unless that event restarted or stopped it.
    Timer* takeDue(std::int64_t now);
    void rearm(Timer& timer, std::uint64_t generationBefore, std::int64_t now);
    static std::uint64_t generationOf(const Timer& timer);

private:
    using Key = std::tuple<std::int64_t, std::uint64_t, Timer*>;
    void insert(Timer& timer);

    EventLoop& loop_;
    std::set<Key> queue_;
    std::uint64_t nextOrder_ = 1;
};

}  // namespace zd::ui
