#pragma once

#include <cstdint>
#include <functional>

namespace zd::ui {

// What a program is given by whoever runs it: time and a way to wait inside
// a modal show. Qt's event loop in the game, a virtual clock in the headless
// driver.
class EventLoop {
public:
    virtual ~EventLoop() = default;

    // Milliseconds since some fixed start.
    virtual std::int64_t now() const = 0;
    // The earliest due timer may have changed.
    virtual void timersChanged() {}
    // Runs events until finished() holds. Called from within an event.
    virtual void runModal(const std::function<bool()>& finished) = 0;
    // An event (input, timer) has run to its end or to a modal show.
    virtual void afterEvent() {}
};

}  // namespace zd::ui
