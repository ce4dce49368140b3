#pragma once

#include <memory>
#include <optional>
#include <string>

#include <windows.h>

#include "front/win32/Painter.h"
#include "ui/model/Window.h"
#include "ui/view/Scene.h"

namespace zd::win32 {

class Children;
class Menus;
class Win32FrontEnd;

// The Windows window of one shown model window: its style, title, icon,
// place and size at the scale of its screen, its menu bar and native
// children, the painting of its client area, the mouse and the cursor. It
// holds no state of its own that the model does not have; after every event
// it is brought in line with the model by syncFromModel(), and its client
// area repainted where the scene changed.
class NativeWindow {
public:
    NativeWindow(Win32FrontEnd& frontEnd, ui::Window& window);
    ~NativeWindow();
    NativeWindow(const NativeWindow&) = delete;
    NativeWindow& operator=(const NativeWindow&) = delete;

    HWND hwnd() const { return hwnd_; }
    // Null once the model window is gone; then the window waits to be
    // destroyed, which happens once none of its messages is being handled.
    ui::Window* modelWindow() const { return window_; }
    void detach();
    bool busy() const { return depth_ > 0; }
    Win32FrontEnd& frontEnd() const { return frontEnd_; }
    const Children& children() const { return *children_; }

    void syncFromModel();
    // Physical pixels per logical pixel on the window's screen.
    double scale() const;
    // The game asked to drag the window by the mouse.
    void dragStarted() { dragged_ = true; }

private:
    static LRESULT CALLBACK proc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp);
    LRESULT handle(UINT msg, WPARAM wp, LPARAM lp);
    void syncGeometry();
    view::Point logicalPoint(LPARAM lp) const;
    void onPress(int button, LPARAM lp, WPARAM keys);
    void onRelease(int button, LPARAM lp, WPARAM keys);
    void onMouseMove(LPARAM lp, WPARAM keys);
    bool setCursor();
    // The tooltip follows the control under the mouse.
    void tipFor(const ui::Control* over);
    void movedBySystem();

    Win32FrontEnd& frontEnd_;
    ui::Window* window_;
    HWND hwnd_ = nullptr;
    DWORD style_ = 0;
    DWORD exStyle_ = 0;
    std::unique_ptr<Menus> menus_;
    std::unique_ptr<Children> children_;
    view::Scene scene_;
    Painter painter_;
    int depth_ = 0;
    HWND tip_ = nullptr;
    const ui::Control* tipControl_ = nullptr;
    std::wstring tipText_;

    std::optional<std::string> appliedCaption_;
    std::optional<RECT> appliedRect_;
    bool applying_ = false;

    // Mouse state: the control pressed, if any, takes the moves and the
    // release, as the mouse is captured by what it went down on.
    ui::Control* pressed_ = nullptr;
    bool pressedWindow_ = false;
    bool dragged_ = false;
};

}  // namespace zd::win32
