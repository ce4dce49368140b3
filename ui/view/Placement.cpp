#include "ui/view/Placement.h"

namespace zd::view {

namespace {

// The width of a bordered picture box's sunken edge.
constexpr int kBoxBorder = 2;

// The origin of a control's coordinates and the clip of its containers.
void containerFrame(const ui::Control* container, Size clientSize, Point& origin, Rect& clip) {
    if (!container) {
        origin = Point{0, 0};
        clip = Rect{0, 0, clientSize.width, clientSize.height};
        return;
    }
    containerFrame(container->container, clientSize, origin, clip);
    const Rect outer{origin.x + toPixels(container->Left), origin.y + toPixels(container->Top),
                     toPixels(container->Width), toPixels(container->Height)};
    const Rect inner = innerOf(*container, outer);
    clip = intersect(clip, inner);
    origin = inner.topLeft();
}

}  // namespace

bool takesMouse(const ui::Control& c) {
    // A frame drawn round a die must not swallow the clicks meant for the die.
    return !dynamic_cast<const ui::Timer*>(&c) && !dynamic_cast<const ui::MenuItem*>(&c) &&
           !dynamic_cast<const ui::Line*>(&c) && !dynamic_cast<const ui::Shape*>(&c);
}

Rect innerOf(const ui::Control& control, const Rect& rect) {
    const auto* box = dynamic_cast<const ui::PictureBox*>(&control);
    if (box && box->border) return rect.adjusted(kBoxBorder, kBoxBorder, -kBoxBorder, -kBoxBorder);
    return rect;
}

Placement placementOf(const ui::Control& control, Size clientSize) {
    Point origin;
    Rect clip;
    containerFrame(control.container, clientSize, origin, clip);
    const Rect rect{origin.x + toPixels(control.Left), origin.y + toPixels(control.Top),
                    toPixels(control.Width), toPixels(control.Height)};
    return Placement{rect, clip};
}

Size clientSizeOf(const ui::Window& window) {
    return Size{toPixels(window.clientWidth()), toPixels(window.clientHeight())};
}

ui::Control* controlAt(const ui::Window& window, Point pos, Size clientSize) {
    // Topmost first: the controls are kept in drawing order.
    const auto& controls = window.controls();
    for (std::size_t i = controls.size(); i-- > 0;) {
        ui::Control& c = *controls[i];
        if (!c.shown() || !takesMouse(c)) continue;
        const Placement place = placementOf(c, clientSize);
        if (intersect(place.rect, place.clip).contains(pos)) return &c;
    }
    return nullptr;
}

}  // namespace zd::view
