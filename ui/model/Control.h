#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ui/model/Picture.h"

namespace zd::ui {

class Window;

struct Color {
    std::uint8_t r = 0, g = 0, b = 0;
    friend bool operator==(const Color&, const Color&) = default;
};

struct Font {
    std::string family = "MS Sans Serif";
    double points = 8.25;
    bool bold = false;
    friend bool operator==(const Font&, const Font&) = default;
};

enum class Align { Left, Center, Right };

// A control of a window. Geometry is in twips, relative to the container
// (a picture box) or to the window's client area.
class Control {
public:
    Control(Window& window, std::string name, int index);
    virtual ~Control();
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    Window& window() const { return window_; }
    const std::string& name() const { return name_; }
    int index() const { return index_; }  // -1 when not part of a control array
    std::string path() const;             // "frmSpielfeld.imgWurf(3)"

    // Visible and enabled, and so is every container it stands in.
    bool takesInput() const;
    bool shown() const;

    void Move(int left, int top);
    void Move(int left, int top, int width, int height);

    Control* container = nullptr;
    int Left = 0, Top = 0, Width = 0, Height = 0;
    bool Visible = true;
    bool Enabled = true;
    std::string ToolTipText;
    bool handCursor = false;

    std::function<void()> Click;
    std::function<void()> MouseDown;
    std::function<void()> MouseUp;
    std::function<void(int button)> MouseMove;

private:
    Window& window_;
    std::string name_;
    int index_;
};

class Label : public Control {
public:
    using Control::Control;

    std::string Caption;
    Color ForeColor{0, 0, 0};
    Color BackColor{255, 255, 255};
    bool transparent = true;
    Font font;
    Align Alignment = Align::Left;
};

class Image : public Control {
public:
    using Control::Control;

    Picture picture;
    bool Stretch = false;
};

// A container with a background; its children are clipped to it.
class PictureBox : public Control {
public:
    using Control::Control;

    Picture picture;
    Color BackColor{255, 255, 255};
    bool border = false;
};

class Shape : public Control {
public:
    using Control::Control;
    Color BorderColor{0, 0, 0};
    int BorderWidth = 1;
};

class Line : public Control {
public:
    using Control::Control;
    int X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;
    Color BorderColor{0, 0, 0};
    int BorderWidth = 1;
};

class ListBox : public Control {
public:
    using Control::Control;

    void Clear() { items_.clear(); }
    // Sorted lists insert by character order, so "9" comes after "100".
    void AddItem(const std::string& text);
    int ListCount() const { return static_cast<int>(items_.size()); }
    // Reading a row that does not exist gives the empty text.
    std::string List(int row) const;
    void setList(int row, const std::string& text);

    bool Sorted = false;

private:
    std::vector<std::string> items_;
};

class TextBox : public Control {
public:
    using Control::Control;

    void SetFocus();

    std::string Text;  // UTF-8
    int SelStart = 0;
    int SelLength = 0;  // both in characters
    bool Locked = false;
    bool TabStop = true;
    bool border = true;
    Align Alignment = Align::Left;
    Font font;
};

class CommandButton : public Control {
public:
    using Control::Control;
    // The letter after '&', upper case, or 0.
    char accessKey() const;

    std::string Caption;
};

// Fires every Interval ms while Enabled and Interval > 0, first one Interval
// after it was started. Writing Enabled or Interval goes through the
// toolkit's timer queue, which is why they are small property objects.
class Timer : public Control {
public:
    Timer(Window& window, std::string name, int index);
    ~Timer() override;

    bool running() const { return enabled_ && interval_ > 0; }

    class EnabledProperty {
    public:
        explicit EnabledProperty(Timer& t) : t_(t) {}
        EnabledProperty& operator=(bool on);
        operator bool() const { return t_.enabled_; }

    private:
        Timer& t_;
    };
    class IntervalProperty {
    public:
        explicit IntervalProperty(Timer& t) : t_(t) {}
        IntervalProperty& operator=(int ms);
        operator int() const { return t_.interval_; }

    private:
        Timer& t_;
    };

    EnabledProperty Enabled{*this};
    IntervalProperty Interval{*this};
    std::function<void()> TimerEvent;

private:
    friend class TimerQueue;
    void changed(bool wasRunning, int oldInterval);

    bool enabled_ = true;
    int interval_ = 0;
    // Queue bookkeeping.
    bool queued_ = false;
    std::int64_t due_ = 0;
    std::uint64_t order_ = 0;
    std::uint64_t generation_ = 0;
};

class MenuItem : public Control {
public:
    using Control::Control;

    std::string Caption;  // "-" is a separator
    bool Checked = false;
    std::string Shortcut;  // "Ctrl+E", "F1" or empty
    MenuItem* parent = nullptr;
    std::vector<MenuItem*> children;
};

// Characters of a UTF-8 text, the unit of SelStart and SelLength.
int characterCount(const std::string& utf8);

}  // namespace zd::ui
