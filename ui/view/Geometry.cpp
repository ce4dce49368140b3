#include "ui/view/Geometry.h"

namespace zd::view {

Rect intersect(const Rect& a, const Rect& b) {
    const int left = std::max(a.left, b.left);
    const int top = std::max(a.top, b.top);
    const int right = std::min(a.right(), b.right());
    const int bottom = std::min(a.bottom(), b.bottom());
    if (right <= left || bottom <= top) return {};
    return {left, top, right - left, bottom - top};
}

Rect unite(const Rect& a, const Rect& b) {
    if (a.empty()) return b;
    if (b.empty()) return a;
    const int left = std::min(a.left, b.left);
    const int top = std::min(a.top, b.top);
    return {left, top, std::max(a.right(), b.right()) - left,
            std::max(a.bottom(), b.bottom()) - top};
}

Rect spanning(Point a, Point b) {
    const int left = std::min(a.x, b.x);
    const int top = std::min(a.y, b.y);
    return {left, top, std::max(a.x, b.x) - left + 1, std::max(a.y, b.y) - top + 1};
}

}  // namespace zd::view
