#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

#include "ui/model/Window.h"
#include "ui/view/Geometry.h"

namespace zd::qt {

// The shared layout of ui/view in Qt's terms.
QRect qrect(const view::Rect& r);

// Where a control is drawn in its window's client area, in logical pixels:
// its own rectangle, and the part of the client area its containers let it
// show in.
struct Placement {
    QRect rect;
    QRect clip;
};

Placement placementOf(const ui::Control& control, QSize clientSize);
QSize clientSizeOf(const ui::Window& window);
// What a control holds its children in: a picture box with a border keeps
// them inside its sunken edge.
QRect innerOf(const ui::Control& control, const QRect& rect);

// The control a mouse at `pos` is over, topmost first; controls that take
// no mouse (timers, menus, lines, shapes) are passed through.
ui::Control* controlAt(const ui::Window& window, QPoint pos, QSize clientSize);

}  // namespace zd::qt
