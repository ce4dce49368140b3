#pragma once

#include <algorithm>
#include <cmath>

namespace zd::view {

// Logical pixels of a window's client area: 15 twips each, and as many
// physical pixels as the display's scale says.
struct Point {
    int x = 0, y = 0;
    friend bool operator==(const Point&, const Point&) = default;
    friend Point operator+(Point a, Point b) { return {a.x + b.x, a.y + b.y}; }
    friend Point operator-(Point a, Point b) { return {a.x - b.x, a.y - b.y}; }
};

struct Size {
    int width = 0, height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};

// Half-open: [left, left + width) across, [top, top + height) down.
struct Rect {
    int left = 0, top = 0, width = 0, height = 0;

    int right() const { return left + width; }
    int bottom() const { return top + height; }
    bool empty() const { return width <= 0 || height <= 0; }
    Point topLeft() const { return {left, top}; }
    Size size() const { return {width, height}; }
    bool contains(Point p) const {
        return !empty() && p.x >= left && p.x < right() && p.y >= top && p.y < bottom();
    }
    Rect translated(Point by) const { return {left + by.x, top + by.y, width, height}; }
    Rect adjusted(int dl, int dt, int dr, int db) const {
        return {left + dl, top + dt, width - dl + dr, height - dt + db};
    }
    friend bool operator==(const Rect&, const Rect&) = default;
};

Rect intersect(const Rect& a, const Rect& b);
// The smallest rectangle holding both; an empty one adds nothing.
Rect unite(const Rect& a, const Rect& b);
// The rectangle between two points, whichever way round they are given.
Rect spanning(Point a, Point b);

// Twips to logical pixels.
inline int toPixels(int twips) {
    return static_cast<int>(std::lround(twips / 15.0));
}

// A logical rectangle in physical pixels at `scale`: its edges are scaled and
// rounded, so neighbours stay neighbours with no gap and no overlap.
inline Rect scaled(const Rect& r, double scale) {
    const auto at = [scale](int v) { return static_cast<int>(std::lround(v * scale)); };
    const int left = at(r.left);
    const int top = at(r.top);
    return {left, top, at(r.right()) - left, at(r.bottom()) - top};
}

}  // namespace zd::view
