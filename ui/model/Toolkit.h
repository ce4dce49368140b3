#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "ui/model/EventLoop.h"
#include "ui/model/FrontEnd.h"
#include "ui/model/KeyCodes.h"
#include "ui/model/TimerQueue.h"
#include "ui/model/Window.h"

namespace zd::ui {

constexpr int kTwipsPerPixel = 15;

// Thrown to unwind everything when the program ends at once; caught at the
// edge of every event.
struct ProgramEnded {};

struct AppInfo {
    // Set by the program that runs on this toolkit.
    int Major = 0;
    int Minor = 0;
    int Revision = 0;
    std::string Path;  // the program's folder

    // Major, minor and revision as plain decimal numbers, with points between.
    std::string version() const {
        return std::to_string(Major) + "." + std::to_string(Minor) + "." + std::to_string(Revision);
    }
};

// The windows of one program and the operations the logic relies on:
// creation on first use, show, modal show, activation, unload, timers, and
// input coming from a front end (Qt or the headless driver).
class Toolkit {
public:
    using Factory = std::function<std::unique_ptr<Window>(Toolkit&)>;

    Toolkit(EventLoop& loop, int screenWidthTwips, int screenHeightTwips);
    ~Toolkit();
    Toolkit(const Toolkit&) = delete;
    Toolkit& operator=(const Toolkit&) = delete;

    // Windows ---------------------------------------------------------
    void define(const std::string& name, Factory make);
    bool defines(std::string_view name) const;
    // The window by name, created with Form_Load if it does not exist.
    Window& use(std::string_view name);
    template <class W>
    W& use(std::string_view name) {
        return static_cast<W&>(use(name));
    }
    Window* loaded(std::string_view name) const;
    // A fresh copy of the window's design, outside the program: no Form_Load.
    std::unique_ptr<Window> sample(std::string_view name);
    void unload(Window& w);
    void show(Window& w);
    void hide(Window& w);
    // Returns when w has gone; timers keep firing meanwhile.
    void showModal(Window& w);

    Window* activeWindow() const { return active_; }
    // Visible windows, bottom to top.
    const std::vector<Window*>& stacking() const { return stacking_; }
    bool reachable(const Window& w) const;
    Window* topModal() const { return modal_.empty() ? nullptr : modal_.back(); }

    // Input; each returns false when the target takes nothing --------
    bool click(Control& c);
    bool mouseDown(Control& c);
    bool mouseUp(Control& c);
    bool mouseMove(Control& c, int button);
    bool windowMouseMove(Window& w, int button);
    // A key for w: its own KeyDown hears it first, then keyboard play
    // (Tab, with Shift backwards; Left, Right; Space and Return press).
    bool keyDown(Window& w, int keyCode, bool backwards = false);
    // Whether anything of w gives the key a meaning.
    static bool takesKey(const Window& w, int keyCode);
    // Keyboard play has been used, so the focus is worth showing.
    bool keyboardUsed() const { return keyboardUsed_; }
    bool menu(MenuItem& item);
    // "Ctrl+E", "F1", "Alt+A" on the active window, as the keyboard would.
    bool shortcut(std::string_view keys);
    bool close(Window& w);
    bool type(TextBox& box, const std::string& text);
    // The window system made w the active window (a click on it, say).
    bool userActivated(Window& w);
    // The user or the window system moved w; no event of the program hears it.
    bool moved(Window& w, int left, int top);
    // The user put the caret or the selection of box elsewhere (characters).
    bool selected(TextBox& box, int start, int length);
    // The user put the focus into box, by a click or the Tab key.
    bool focused(TextBox& box);
    void dragWindow(Window& w) { frontEnd_->dragWindow(w); }

    // What shows the windows; none by default. It must outlive the toolkit
    // or be taken back with nullptr.
    void setFrontEnd(FrontEnd* frontEnd) { frontEnd_ = frontEnd ? frontEnd : &noFrontEnd_; }

    // Time ------------------------------------------------------------
    EventLoop& loop() { return loop_; }
    TimerQueue& timers() { return timers_; }
    // Fires the earliest timer if it is due at `now`; false if none is.
    bool fireDueTimer(std::int64_t now);

    // The program -----------------------------------------------------
    AppInfo App;
    int screenWidth() const { return screenWidth_; }
    int screenHeight() const { return screenHeight_; }
    PictureFactory& pictures() { return pictures_; }
    [[noreturn]] void end();
    bool ended() const { return ended_; }

    // Runs one event handler to its end; the program's end stops it.
    void dispatch(const std::function<void()>& handler);
    // Runs `task` as soon as no event is running any more, which also means
    // that no modal window stands, and before any further input or timer.
    void whenIdle(std::function<void()> task);

private:
    void activate(Window* w);
    void raise(Window& w);
    Window* topVisible() const;
    bool inputReaches(const Control& c) const;
    void shift(Control& c);
    void runIdleTasks();
    void settleFocus();
    void play(Window& w, int keyCode, bool backwards);

    EventLoop& loop_;
    FrontEnd noFrontEnd_;
    FrontEnd* frontEnd_ = &noFrontEnd_;
    TimerQueue timers_;
    int screenWidth_;
    int screenHeight_;
    PictureFactory pictures_;
    std::map<std::string, Factory, std::less<>> factories_;
    std::map<std::string, std::unique_ptr<Window>, std::less<>> windows_;
    // Unloaded windows live on until no event of theirs can still be running.
    std::vector<std::unique_ptr<Window>> unloaded_;
    std::vector<Window*> stacking_;
    std::vector<Window*> modal_;
    std::vector<std::function<void()>> idleTasks_;
    Window* active_ = nullptr;
    int depth_ = 0;
    bool ended_ = false;
    bool keyboardUsed_ = false;
};

}  // namespace zd::ui
