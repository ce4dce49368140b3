#pragma once

#include <memory>
#include <string>
#include <vector>

#include <windows.h>

#include "ui/model/Window.h"

namespace zd::win32 {

class NativeWindow;

// The text boxes of a window as Windows edit controls, and its command
// buttons as Windows buttons. Their place, font, text, selection and focus
// follow the model after every event; what the user types, selects, focuses
// or presses goes back through the toolkit. A locked box is read-only and
// takes no focus, so it shows no caret that would make it look editable.
class Children {
public:
    Children(NativeWindow& owner, ui::Window& window);
    ~Children();
    Children(const Children&) = delete;
    Children& operator=(const Children&) = delete;

    void sync(double scale);
    // A notice from a child (WM_COMMAND); true when it was one of ours.
    bool command(HWND child, WORD code);
    HWND handleOf(const ui::Control& control) const;
    bool isEdit(HWND hwnd) const;

private:
    struct Child {
        ui::Control* control = nullptr;
        HWND hwnd = nullptr;
        bool edit = false;
        WNDPROC original = nullptr;
        std::string text;
        int selStart = -1;
        int selLength = -1;
        RECT place{};
        HFONT font = nullptr;
        int locked = -1;
        int shown = -1;
    };

    static LRESULT CALLBACK editProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp);
    void syncEdit(Child& c, ui::TextBox& box);
    void typed(Child& c, ui::TextBox& box);
    void selectionFromEdit(Child& c, ui::TextBox& box);
    Child* find(HWND hwnd);

    NativeWindow& owner_;
    std::vector<std::unique_ptr<Child>> children_;
    // While the model is being pushed into the controls, their notices are
    // echoes, not the user.
    bool pushing_ = false;
    const ui::TextBox* lastFocus_ = nullptr;
};

}  // namespace zd::win32
