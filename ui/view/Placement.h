#pragma once

#include "ui/model/Window.h"
#include "ui/view/Geometry.h"

namespace zd::view {

// Where a control is drawn in its window's client area, in logical pixels:
// its own rectangle, and the part of the client area its containers let it
// show in.
struct Placement {
    Rect rect;
    Rect clip;
};

Placement placementOf(const ui::Control& control, Size clientSize);
Size clientSizeOf(const ui::Window& window);
// What a control holds its children in: a picture box with a border keeps
// them inside its sunken edge.
Rect innerOf(const ui::Control& control, const Rect& rect);

// Controls the mouse passes through to what lies beneath: shapes and lines
// are only drawn, timers and menus not even that.
bool takesMouse(const ui::Control& c);

// The control a mouse at `pos` is over, topmost first; controls that take
// no mouse (timers, menus, lines, shapes) are passed through.
ui::Control* controlAt(const ui::Window& window, Point pos, Size clientSize);

}  // namespace zd::view
