#pragma once

#include <map>
#include <memory>
#include <set>
#include <vector>

#include <windows.h>

#include "front/win32/Art.h"
#include "front/win32/Painter.h"
#include "front/win32/Win32Loop.h"
#include "ui/model/Toolkit.h"
#include "ui/view/Resync.h"

namespace zd::win32 {

class NativeWindow;

// Shows the toolkit's windows as Windows windows: one top-level window for
// every model window that is loaded and visible, brought in line with the
// model after every event, and the real input of the user fed back into it.
class Win32FrontEnd : public ui::FrontEnd {
public:
    Win32FrontEnd(ui::Toolkit& toolkit, Win32Loop& loop);
    ~Win32FrontEnd() override;
    Win32FrontEnd(const Win32FrontEnd&) = delete;
    Win32FrontEnd& operator=(const Win32FrontEnd&) = delete;

    ui::Toolkit& toolkit() { return tk_; }
    Win32Loop& loop() { return loop_; }
    Art& art() { return art_; }
    Fonts& fonts() { return fonts_; }

    // Brings the windows in line with the model.
    void sync();
    NativeWindow* nativeFor(const ui::Window& w) const;
    HWND hwndFor(const ui::Window& w) const;
    // A hidden window that titled windows outside the task bar belong to:
    // owned, they stay out of it, and with an owner never shown their place
    // among the others stays the model's.
    HWND hiddenOwner() const { return hiddenOwner_; }
    // Physical pixels per logical pixel of the primary screen, in which the
    // model's window places count.
    double systemScale() const { return systemScale_; }

    // From the toolkit.
    void settled() override { sync(); }
    void broughtToFront(ui::Window& w) override;
    void windowGone(ui::Window& w) override;
    void dragWindow(ui::Window& w) override;
    void programEnded() override;

    // From the windows.
    void activatedBySystem();
    // The system's activation, once it has settled, taken into the model.
    void checkActivation();
    HCURSOR handCursor(UINT dpi);

private:
    void syncOnce();
    void dropWindow(const ui::Window* w);
    void reap();
    // Keys go to the model before the system sees them: shortcuts, access
    // keys and the keys a window's KeyDown takes.
    bool key(const MSG& msg);

    ui::Toolkit& tk_;
    Win32Loop& loop_;
    Art art_;
    Fonts fonts_;
    double systemScale_ = 1.0;
    std::map<const ui::Window*, std::unique_ptr<NativeWindow>> windows_;
    // Windows whose model window has gone, destroyed once none of their
    // messages is being handled any more.
    std::vector<std::unique_ptr<NativeWindow>> gone_;
    std::set<const ui::Window*> toFront_;
    std::map<const ui::Window*, bool> appliedEnabled_;
    std::vector<ui::Window*> appliedStacking_;
    ui::Window* appliedActive_ = nullptr;
    view::Resync resync_;
    bool activationCheckQueued_ = false;
    HWND messages_ = nullptr;
    HWND hiddenOwner_ = nullptr;
    std::map<UINT, HCURSOR> handCursors_;
};

}  // namespace zd::win32
