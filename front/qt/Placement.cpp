#include "front/qt/Placement.h"

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

ui::Control* controlAt(const ui::Window& window, QPoint pos, QSize clientSize) {
    return view::controlAt(window, view::Point{pos.x(), pos.y()}, sizeOf(clientSize));
}

}  // namespace zd::qt
