#include "front/qt/Placement.h"

#include <cmath>

#include "ui/view/Placement.h"

namespace zd::qt {

namespace {

view::Size sizeOf(QSize s) {
    return view::Size{s.width(), s.height()};
}

}  // namespace

QRect qrect(const view::Rect& r) {
    return QRect(r.left, r.top, r.width, r.height);
}

QRect innerOf(const ui::Control& control, const QRect& rect) {
    return qrect(
        view::innerOf(control, view::Rect{rect.x(), rect.y(), rect.width(), rect.height()}));
}

Placement placementOf(const ui::Control& control, QSize clientSize) {
    const view::Placement place = view::placementOf(control, sizeOf(clientSize));
    return Placement{qrect(place.rect), qrect(place.clip)};
}

QSize clientSizeOf(const ui::Window& window) {
    const view::Size size = view::clientSizeOf(window);
    return QSize(size.width, size.height);
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
    // Topmost first: the controls are kept in drawing order.
    const auto& controls = window.controls();
    for (std::size_t i = controls.size(); i-- > 0;) {
        ui::Control& c = *controls[i];
        if (!c.shown() || !view::takesMouse(c)) continue;
        const Placement place = placementOf(c, clientSize);
        if (grid.cover(place.rect & place.clip).contains(pixel)) return &c;
    }
    return nullptr;
}

}  // namespace zd::qt
