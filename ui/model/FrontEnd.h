#pragma once

namespace zd::ui {

class Window;

// Whatever shows the program's windows and learns from the toolkit what
// became of them: the Qt layer in the game. Every notice is optional.
class FrontEnd {
public:
    virtual ~FrontEnd() = default;

    // An event has run to its end, or waits in a modal show: what is shown
    // is to be brought in line with the model now.
    virtual void settled() {}
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
