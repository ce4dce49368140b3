#pragma once

#include <cstdint>
#include <functional>

namespace zd::ui {

class Window;

// What a program is given by whoever runs it: time, a way to wait inside a
// modal show, and the window system. Qt's event loop in the game, a virtual
// clock in the headless driver.
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

    virtual void modalBegins(Window&) {}
    // Show was asked of w: it is to be seen, in front, even if it was
    // already visible (the window system may have minimised or covered it).
    virtual void broughtToFront(Window&) {}
    virtual void windowGone(Window&) {}
    // The user drags a frameless window by the mouse.
    virtual void dragWindow(Window&) {}
    virtual void programEnded() {}
};

}  // namespace zd::ui
