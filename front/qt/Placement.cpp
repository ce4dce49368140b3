#include "front/qt/Placement.h"

#include <cmath>

#include "front/qt/QtValues.h"

namespace zd::qt {

namespace {

// The width of a bordered picture box's sunken edge.
constexpr int kBoxBorder = 2;

// Controls the mouse passes through to what lies beneath: shapes and lines
// are only drawn, timers and menus not even that. A frame drawn round a die
// must not swallow the clicks meant for the die.
bool takesMouse(const ui::Control& c) {
    return !dynamic_cast<const ui::Timer*>(&c) && !dynamic_cast<const ui::MenuItem*>(&c) &&
           !dynamic_cast<const ui::Line*>(&c) && !dynamic_cast<const ui::Shape*>(&c);
}

// The origin of a control's coordinates and the clip of its containers.
void containerFrame(const ui::Control* container, QSize clientSize, QPoint& origin, QRect& clip) {
    if (!container) {
        origin = QPoint(0, 0);
        clip = QRect(QPoint(0, 0), clientSize);
        return;
    }
    containerFrame(container->container, clientSize, origin, clip);
    const QRect outer(origin + QPoint(toPixels(container->Left), toPixels(container->Top)),
                      QSize(toPixels(container->Width), toPixels(container->Height)));
    const QRect inner = innerOf(*container, outer);
    clip &= inner;
    origin = inner.topLeft();
}

}  // namespace

QRect innerOf(const ui::Control& control, const QRect& rect) {
    const auto* box = dynamic_cast<const ui::PictureBox*>(&control);
    if (box && box->border) return rect.adjusted(kBoxBorder, kBoxBorder, -kBoxBorder, -kBoxBorder);
    return rect;
}

Placement placementOf(const ui::Control& control, QSize clientSize) {
    QPoint origin;
    QRect clip;
    containerFrame(control.container, clientSize, origin, clip);
    const QRect rect(origin + QPoint(toPixels(control.Left), toPixels(control.Top)),
                     QSize(toPixels(control.Width), toPixels(control.Height)));
    return Placement{rect, clip};
}

QSize clientSizeOf(const ui::Window& window) {
    return QSize(toPixels(window.clientWidth()), toPixels(window.clientHeight()));
}

PixelGrid::PixelGrid(QPointF origin, qreal dpr) : origin_(origin), dpr_(dpr > 0 ? dpr : 1) {}

QRect PixelGrid::cover(const QRect& logical) const {
    // Halves go right and down, as Qt rounds what it paints itself.
    const auto edge = [this](int at, qreal origin) {
        return static_cast<int>(std::floor(at * dpr_ + origin + 0.5));
    };
    const int left = edge(logical.left(), origin_.x());
    const int top = edge(logical.top(), origin_.y());
    const int right = edge(logical.left() + logical.width(), origin_.x());
    const int bottom = edge(logical.top() + logical.height(), origin_.y());
    return QRect(left, top, right - left, bottom - top);
}

QRectF PixelGrid::snapped(const QRect& logical) const {
    const QRectF device(cover(logical));
    return QRectF((device.topLeft() - origin_) / dpr_, device.size() / dpr_);
}

QPoint PixelGrid::pixelAt(QPointF pos) const {
    // The window system counts the mouse in whole device pixels; what comes
    // back from dividing by the scale is a hair off either way.
    constexpr qreal kSlack = 1.0 / 64;
    const QPointF device = pos * dpr_ + origin_;
    return QPoint(static_cast<int>(std::floor(device.x() + kSlack)),
                  static_cast<int>(std::floor(device.y() + kSlack)));
}

ui::Control* controlAt(const ui::Window& window, QPointF pos, QSize clientSize,
                       const PixelGrid& grid) {
    const QPoint pixel = grid.pixelAt(pos);
    const auto& controls = window.controls();
    for (auto it = controls.rbegin(); it != controls.rend(); ++it) {
        ui::Control& c = **it;
        if (!c.shown() || !takesMouse(c)) continue;
        const Placement place = placementOf(c, clientSize);
        if (grid.cover(place.rect & place.clip).contains(pixel)) return &c;
    }
    return nullptr;
}

}  // namespace zd::qt
