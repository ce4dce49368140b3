#pragma once

#include <string>
#include <variant>
#include <vector>

#include "ui/model/Window.h"
#include "ui/view/Geometry.h"

namespace zd::view {

// What one control shows, in the client area's logical pixels: everything
// its painting reads and nothing more. Two equal looks paint the same
// pixels, so any change of the model that shows is a change of look.
struct TextLook {
    Rect rect, clip;
    std::string caption;
    ui::Color fore, back;
    bool transparent = true;
    ui::Font font;
    ui::Align align = ui::Align::Left;
    bool operator==(const TextLook&) const = default;
};
struct PictureLook {
    Rect rect, clip;
    ui::Picture picture;
    bool stretch = false;
    bool operator==(const PictureLook&) const = default;
};
struct BoxLook {
    Rect rect, clip, inner;
    ui::Picture picture;
    ui::Color back;
    bool border = false;
    bool operator==(const BoxLook&) const = default;
};
struct FrameLook {
    Rect rect, clip;
    ui::Color color;
    int width = 1;
    bool operator==(const FrameLook&) const = default;
};
struct LineLook {
    Rect clip;
    Point from, to;
    ui::Color color;
    int width = 1;
    bool operator==(const LineLook&) const = default;
};
// Nothing drawn: hidden, or a control without a face (timer, menu, list,
// text box and command button, which the window system draws itself).
using Look = std::variant<std::monostate, TextLook, PictureLook, BoxLook, FrameLook, LineLook>;

Look lookOf(const ui::Control& control, Size clientSize);
// Where a look's pixels may lie.
Rect boundsOf(const Look& look);

// The hand the mouse pointer becomes over a button: its picture (32 by 32
// logical pixels) and where its finger points.
struct CursorArt {
    const char* sheet;
    const char* element;
    Point hotSpot;
};
inline constexpr CursorArt kHandCursor{"spielfeld", "cursor_hand", {5, 0}};

// A caption's lines as the model keeps them (CR LF, or a lone CR, ends a
// line) with a plain LF between them.
std::string captionLines(const std::string& caption);

// How far the focus mark stands off the control it marks.
inline constexpr int kMarkGap = 3;

// The control whose focus a front end shows: the window's active one, once
// the keyboard has been used; a text box shows its own caret instead.
const ui::Control* markedControl(const ui::Window& window, bool keyboardUsed);

// A window's client area as it was last taken from the model: its
// background and the look of every control, in drawing order. A front end
// paints only from here, and repaints where a refresh found a change.
class Scene {
public:
    struct Backdrop {
        Size size;
        ui::Color back;
        ui::Picture picture;
        bool operator==(const Backdrop&) const = default;
    };

    // Takes what the window shows now, with the keyboard's focus mark round
    // `marked` if given; returns where that differs.
    std::vector<Rect> refresh(const ui::Window& window, const ui::Control* marked = nullptr);

    const Backdrop& backdrop() const { return backdrop_; }
    const std::vector<Look>& looks() const { return looks_; }
    // Where the focus mark is drawn, inside this rectangle; empty for none.
    const Rect& mark() const { return mark_; }

private:
    Backdrop backdrop_;
    std::vector<Look> looks_;
    Rect mark_;
};

}  // namespace zd::view
