#pragma once

#include <map>
#include <tuple>

#include <windows.h>

#include "front/win32/Art.h"
#include "ui/view/Scene.h"

namespace zd::win32 {

// GDI fonts of the design's faces, made once per size in physical pixels.
class Fonts {
public:
    Fonts() = default;
    ~Fonts();
    Fonts(const Fonts&) = delete;
    Fonts& operator=(const Fonts&) = delete;

    HFONT font(const ui::Font& f, double scale);

private:
    std::map<std::tuple<std::string, int, bool>, HFONT> fonts_;
};

// Paints a window's scene into a 32-bit picture of its client area in
// physical pixels: the art blended by its alpha, the texts by GDI.
class Painter {
public:
    Painter(Art& art, Fonts& fonts) : art_(art), fonts_(fonts) {}
    ~Painter();
    Painter(const Painter&) = delete;
    Painter& operator=(const Painter&) = delete;

    // Paints `area` (physical pixels) of the scene at `scale` into the
    // painter's own picture, made anew when the size changed, and copies
    // that part onto `target`.
    void paint(const view::Scene& scene, double scale, const RECT& area, HDC target);

private:
    void ensureBuffer(int width, int height);
    void fill(const RECT& r, ui::Color c);
    void blend(const Bitmap& bitmap, int x, int y, const RECT& clip);
    void draw(const view::Look& look, double scale, const RECT& clip);
    void drawFocusMark(const view::Rect& bounds, double scale, const RECT& clip);

    Art& art_;
    Fonts& fonts_;
    HDC dc_ = nullptr;
    HBITMAP dib_ = nullptr;
    HGDIOBJ oldBitmap_ = nullptr;
    std::uint32_t* bits_ = nullptr;
    int width_ = 0;
    int height_ = 0;
};

}  // namespace zd::win32
