#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ui/model/Control.h"

namespace zd::ui {

class Toolkit;

// The frame a window system draws round the client area, in twips.
struct Frame {
    int left = 0, top = 0, right = 0, bottom = 0;
};

// Controls sharing one name, addressed by index; some arrays begin at 1.
template <class C>
class ControlArray {
public:
    C& operator[](int index) const { return *at(index); }
    C* at(int index) const {
        auto it = items_.find(index);
        return it == items_.end() ? nullptr : it->second;
    }
    void put(int index, C& control) { items_[index] = &control; }

private:
    std::map<int, C*> items_;
};

class Window {
public:
    Window(Toolkit& toolkit, std::string name);
    virtual ~Window();
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    Toolkit& toolkit() const { return toolkit_; }
    const std::string& name() const { return name_; }

    bool visible() const { return visible_; }
    void Move(int left, int top);
    void Move(int left, int top, int width, int height);
    int clientWidth() const { return Width - frame.left - frame.right; }
    int clientHeight() const { return Height - frame.top - frame.bottom; }

    // Controls in the order they were made, which is the order they are drawn.
    const std::vector<std::unique_ptr<Control>>& controls() const { return controls_; }
    Control* find(std::string_view name, std::optional<int> index) const;

    std::string Caption;
    int Left = 0, Top = 0, Width = 0, Height = 0;  // outer size, frame included
    Frame frame;
    bool titleBar = true;
    bool closeBox = true;
    bool inTaskbar = true;
    Picture picture;  // background, drawn unscaled from the top left
    Color BackColor{212, 208, 200};
    Picture icon;
    std::vector<MenuItem*> menuBar;

    // Keyboard play, as the window's design lists it: the controls that take
    // the focus, in reading order; those of them that take it as they appear,
    // as the game then waits for them, the most wanted first; and rows along
    // which Left and Right move.
    std::vector<Control*> focusOrder;
    std::vector<Control*> focusDefaults;
    std::vector<std::vector<Control*>> arrowRows;

    // The control that has the keyboard focus, or nullptr.
    Control* activeControl() const { return focus_; }
    void setActiveControl(Control* c) { focus_ = c; }
    // Shown and enabled, and a text box only while it can be typed in.
    static bool canFocus(const Control& c);

    std::function<void()> Form_Load;
    std::function<void()> Form_Activate;
    std::function<void()> Form_Unload;
    std::function<void()> Form_Click;
    std::function<void(int keyCode)> Form_KeyDown;
    std::function<void(int button)> Form_MouseMove;

protected:
    template <class C>
    C& add(std::string name, int index = -1) {
        auto control = std::make_unique<C>(*this, std::move(name), index);
        C& ref = *control;
        controls_.push_back(std::move(control));
        return ref;
    }
    template <class C>
    C& add(ControlArray<C>& array, std::string name, int index) {
        C& ref = add<C>(std::move(name), index);
        array.put(index, ref);
        return ref;
    }
    MenuItem& addMenu(std::string name, int index, std::string caption, MenuItem* parent);
    // A picture of this window's own design: looks like a bank picture
    // perhaps, but is another object.
    Picture design(std::string sheet, std::string element, int widthPx, int heightPx);
    // Size of a window of fixed border with a title bar (and a menu bar).
    void frameWithTitle(int clientWidth, int clientHeight, bool withMenu);

private:
    friend class Toolkit;
    Toolkit& toolkit_;
    std::string name_;
    bool visible_ = false;
    std::vector<std::unique_ptr<Control>> controls_;
    Control* focus_ = nullptr;
    // What the focus rule saw at the last settling: which defaults could
    // take the focus, which of them appeared together last, and whether the
    // window has been shown since.
    std::vector<bool> defaultsUsable_;
    std::vector<Control*> awaited_;
    bool shownAnew_ = false;
};

}  // namespace zd::ui
