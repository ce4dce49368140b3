#include "front/win32/Painter.h"

#include <algorithm>
#include <cmath>

#include "front/win32/Text.h"
#include "ui/view/Overloaded.h"

namespace zd::win32 {

namespace {

int px(double v) {
    return static_cast<int>(std::lround(v));
}

RECT toRect(const view::Rect& r) {
    return RECT{r.left, r.top, r.right(), r.bottom()};
}

RECT cut(const RECT& a, const RECT& b) {
    RECT r{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
           std::min(a.bottom, b.bottom)};
    if (r.right < r.left) r.right = r.left;
    if (r.bottom < r.top) r.bottom = r.top;
    return r;
}

bool isEmpty(const RECT& r) {
    return r.right <= r.left || r.bottom <= r.top;
}

COLORREF colorRef(ui::Color c) {
    return RGB(c.r, c.g, c.b);
}

// The faces of the design as Windows has them: MS Sans Serif is a bitmap
// font that does not scale, Microsoft Sans Serif its outline twin.
const wchar_t* faceOf(const std::string& family) {
    if (family == "Arial") return L"Arial";
    return L"Microsoft Sans Serif";
}

}  // namespace

Fonts::~Fonts() {
    for (auto& [key, font] : fonts_) DeleteObject(font);
}

HFONT Fonts::font(const ui::Font& f, double scale) {
    // Points at 96 pixels an inch, as the design was laid out, times the scale.
    const int height = std::max(1, px(f.points * 96.0 / 72.0 * scale));
    const auto key = std::make_tuple(f.family, height, f.bold);
    if (auto it = fonts_.find(key); it != fonts_.end()) return it->second;
    HFONT font = CreateFontW(-height, 0, 0, 0, f.bold ? FW_BOLD : FW_NORMAL, FALSE, FALSE, FALSE,
                             DEFAULT_CHARSET, OUT_TT_PRECIS, CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY,
                             DEFAULT_PITCH | FF_SWISS, faceOf(f.family));
    return fonts_.emplace(key, font).first->second;
}

Painter::~Painter() {
    if (dc_) {
        SelectObject(dc_, oldBitmap_);
        DeleteDC(dc_);
    }
    if (dib_) DeleteObject(dib_);
}

void Painter::ensureBuffer(int width, int height) {
    if (dc_ && width == width_ && height == height_) return;
    if (!dc_) {
        dc_ = CreateCompatibleDC(nullptr);
        SetBkMode(dc_, TRANSPARENT);
    }
    if (dib_) {
        SelectObject(dc_, oldBitmap_);
        DeleteObject(dib_);
    }
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = std::max(1, width);
    info.bmiHeader.biHeight = -std::max(1, height);  // top row first
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    dib_ = CreateDIBSection(dc_, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    bits_ = static_cast<std::uint32_t*>(bits);
    oldBitmap_ = SelectObject(dc_, dib_);
    width_ = width;
    height_ = height;
}

void Painter::fill(const RECT& r, ui::Color c) {
    const RECT area = cut(r, RECT{0, 0, width_, height_});
    const std::uint32_t value =
        0xff000000u | (std::uint32_t{c.r} << 16) | (std::uint32_t{c.g} << 8) | std::uint32_t{c.b};
    for (int y = area.top; y < area.bottom; ++y) {
        std::fill(bits_ + static_cast<std::ptrdiff_t>(y) * width_ + area.left,
                  bits_ + static_cast<std::ptrdiff_t>(y) * width_ + area.right, value);
    }
}

void Painter::blend(const Bitmap& bitmap, int x, int y, const RECT& clip) {
    const RECT area = cut(cut(clip, RECT{x, y, x + bitmap.width, y + bitmap.height}),
                          RECT{0, 0, width_, height_});
    for (int row = area.top; row < area.bottom; ++row) {
        const std::uint32_t* src =
            bitmap.pixels.data() + static_cast<std::ptrdiff_t>(row - y) * bitmap.width - x;
        std::uint32_t* dst = bits_ + static_cast<std::ptrdiff_t>(row) * width_;
        for (int col = area.left; col < area.right; ++col) {
            const std::uint32_t s = src[col];
            const std::uint32_t a = s >> 24;
            if (a == 255) {
                dst[col] = s;
            } else if (a != 0) {
                // Premultiplied: what lies beneath shows through by 1 - alpha.
                const std::uint32_t d = dst[col];
                const std::uint32_t keep = 255 - a;
                const auto channel = [&](int shift) {
                    const std::uint32_t v =
                        ((s >> shift) & 0xff) + (((d >> shift) & 0xff) * keep + 127) / 255;
                    return std::min<std::uint32_t>(v, 255) << shift;
                };
                dst[col] = 0xff000000u | channel(16) | channel(8) | channel(0);
            }
        }
    }
}

void Painter::draw(const view::Look& look, double scale, const RECT& clip) {
    std::visit(
        view::Overloaded{
            [](std::monostate) {},
            [&](const view::TextLook& l) {
                const RECT rect = toRect(view::scaled(l.rect, scale));
                if (!l.transparent) fill(cut(rect, clip), l.back);
                if (l.caption.empty()) return;
                GdiFlush();
                const int saved = SaveDC(dc_);
                IntersectClipRect(dc_, clip.left, clip.top, clip.right, clip.bottom);
                SelectObject(dc_, fonts_.font(l.font, scale));
                SetTextColor(dc_, colorRef(l.fore));
                UINT format = DT_TOP | DT_WORDBREAK | DT_NOPREFIX;
                format |= l.align == ui::Align::Center  ? DT_CENTER
                          : l.align == ui::Align::Right ? DT_RIGHT
                                                        : DT_LEFT;
                std::wstring text = wide(view::captionLines(l.caption));
                RECT r = rect;
                DrawTextW(dc_, text.c_str(), static_cast<int>(text.size()), &r, format);
                RestoreDC(dc_, saved);
                GdiFlush();
            },
            [&](const view::PictureLook& l) {
                if (!l.picture) return;
                const ui::PictureData& p = *l.picture;
                const view::Rect rect = view::scaled(l.rect, scale);
                // Unstretched, a picture keeps its own size from the top left.
                const int w = l.stretch ? rect.width : px(p.widthPx * scale);
                const int h = l.stretch ? rect.height : px(p.heightPx * scale);
                const bool enlarged =
                    l.stretch && (l.rect.width > p.widthPx || l.rect.height > p.heightPx);
                const int percent = enlarged ? px(scale * 100) : 0;
                if (const Bitmap* b = art_.picture(p, w, h, percent)) {
                    blend(*b, rect.left, rect.top, clip);
                }
            },
            [&](const view::BoxLook& l) {
                const RECT rect = toRect(view::scaled(l.rect, scale));
                fill(cut(rect, clip), l.back);
                const view::Rect inner = view::scaled(l.inner, scale);
                if (l.picture) {
                    const ui::PictureData& p = *l.picture;
                    if (const Bitmap* b =
                            art_.picture(p, px(p.widthPx * scale), px(p.heightPx * scale))) {
                        blend(*b, inner.left, inner.top, cut(clip, toRect(inner)));
                    }
                }
                if (!l.border) return;
                // Two lines each way: dark outside top and left, light at
                // the bottom and right, as a box set into the window.
                const int t = std::max(1, px(scale));
                const auto edge = [&](RECT box, ui::Color topLeft, ui::Color bottomRight) {
                    fill(cut(RECT{box.left, box.top, box.right, box.top + t}, clip), topLeft);
                    fill(cut(RECT{box.left, box.top, box.left + t, box.bottom}, clip), topLeft);
                    fill(cut(RECT{box.left, box.bottom - t, box.right, box.bottom}, clip),
                         bottomRight);
                    fill(cut(RECT{box.right - t, box.top, box.right, box.bottom}, clip),
                         bottomRight);
                };
                edge(rect, ui::Color{128, 128, 128}, ui::Color{255, 255, 255});
                edge(RECT{rect.left + t, rect.top + t, rect.right - t, rect.bottom - t},
                     ui::Color{64, 64, 64}, ui::Color{212, 208, 200});
            },
            [&](const view::FrameLook& l) {
                // The border lies inside the shape's rectangle.
                const RECT r = toRect(view::scaled(l.rect, scale));
                const int t = std::max(1, px(l.width * scale));
                fill(cut(RECT{r.left, r.top, r.right, r.top + t}, clip), l.color);
                fill(cut(RECT{r.left, r.bottom - t, r.right, r.bottom}, clip), l.color);
                fill(cut(RECT{r.left, r.top, r.left + t, r.bottom}, clip), l.color);
                fill(cut(RECT{r.right - t, r.top, r.right, r.bottom}, clip), l.color);
            },
            [&](const view::LineLook& l) {
                // The lines of the design run across or down; the pen's width
                // is centred on them.
                const double half = l.width / 2.0;
                const double x0 = std::min(l.from.x, l.to.x) - (l.from.x == l.to.x ? half : 0);
                const double x1 = std::max(l.from.x, l.to.x) + (l.from.x == l.to.x ? half : 0);
                const double y0 = std::min(l.from.y, l.to.y) - (l.from.y == l.to.y ? half : 0);
                const double y1 = std::max(l.from.y, l.to.y) + (l.from.y == l.to.y ? half : 0);
                fill(
                    cut(RECT{px(x0 * scale), px(y0 * scale), px(x1 * scale), px(y1 * scale)}, clip),
                    l.color);
            },
        },
        look);
}

// A dotted line on a light one, to be seen on dark and pale ground alike,
// as the Qt front end draws it: inside `r`, a logical pixel wide.
void Painter::drawFocusMark(const view::Rect& r, double scale, const RECT& clip) {
    const int w = std::max(1, px(scale));
    const auto band = [&](int left, int top, int width, int height, ui::Color c) {
        fill(cut(RECT{left, top, left + width, top + height}, clip), c);
    };
    const ui::Color light{255, 255, 255};
    const ui::Color dark{0, 0, 0};
    band(r.left, r.top, r.width, w, light);
    band(r.left, r.bottom() - w, r.width, w, light);
    band(r.left, r.top, w, r.height, light);
    band(r.right() - w, r.top, w, r.height, light);
    const view::Rect d = r.adjusted(w, w, -w, -w);
    for (int x = d.left; x + w <= d.right(); x += 2 * w) {
        band(x, d.top, w, w, dark);
        band(x, d.bottom() - w, w, w, dark);
    }
    for (int y = d.top; y + w <= d.bottom(); y += 2 * w) {
        band(d.left, y, w, w, dark);
        band(d.right() - w, y, w, w, dark);
    }
}

void Painter::paint(const view::Scene& scene, double scale, const RECT& area, HDC target) {
    const view::Scene::Backdrop& backdrop = scene.backdrop();
    const view::Rect client =
        view::scaled(view::Rect{0, 0, backdrop.size.width, backdrop.size.height}, scale);
    ensureBuffer(client.width, client.height);
    const RECT whole = cut(area, RECT{0, 0, client.width, client.height});
    if (isEmpty(whole)) return;
    GdiFlush();
    fill(whole, backdrop.back);
    if (backdrop.picture) {
        const ui::PictureData& p = *backdrop.picture;
        if (const Bitmap* b = art_.picture(p, px(p.widthPx * scale), px(p.heightPx * scale))) {
            blend(*b, 0, 0, whole);
        }
    }
    for (const view::Look& look : scene.looks()) {
        const view::Rect bounds = view::boundsOf(look);
        if (bounds.empty()) continue;
        // A look's pixels stay inside its bounds; the scaled bounds widened
        // by a pixel take in what rounding may add at the edges.
        const RECT clip = cut(toRect(view::scaled(view::boundsOf(look), scale)), whole);
        if (isEmpty(clip)) continue;
        draw(look, scale, clip);
    }
    if (!scene.mark().empty()) drawFocusMark(view::scaled(scene.mark(), scale), scale, whole);
    GdiFlush();
    BitBlt(target, whole.left, whole.top, whole.right - whole.left, whole.bottom - whole.top, dc_,
           whole.left, whole.top, SRCCOPY);
}

}  // namespace zd::win32
