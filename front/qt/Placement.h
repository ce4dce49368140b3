#pragma once

#include <QPoint>
#include <QPointF>
#include <QRect>
#include <QRectF>
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

// How the client area's logical pixels fall on the screen's device pixels.
// At a scale like 1.25 or 1.5 an edge in logical pixels lies between two
// device pixels, and the client area itself may begin between two (below
// a menu bar 19 pixels high, at 23.75), so every edge is rounded where the
// pixel grid is: in the device pixels of the whole window. Painting places
// each control by this rounding and the hit test asks it which device
// pixel the mouse is on, so a click reaches a control exactly where its
// picture is drawn.
class PixelGrid {
public:
    // The client area's top left in the window's device pixels, and the
    // device pixels per logical pixel.
    PixelGrid(QPointF origin, qreal dpr);

    // The window's device pixels that a rectangle of the client area covers.
    QRect cover(const QRect& logical) const;
    // The same pixels in the client area's coordinates: what a painter is
    // given, so that it lands on whole device pixels.
    QRectF snapped(const QRect& logical) const;
    // The window's device pixel under a mouse at `pos` in the client area.
    QPoint pixelAt(QPointF pos) const;
    qreal dpr() const { return dpr_; }

    QPointF origin_;
    qreal dpr_;
};

// The control a mouse at `pos` is over, topmost first; controls that take
// no mouse (timers, menus, lines, shapes) are passed through.
ui::Control* controlAt(const ui::Window& window, QPointF pos, QSize clientSize,
                       const PixelGrid& grid);

}  // namespace zd::qt
