#include "front/qt/ClientScene.h"

#include <QPainter>
#include <QPen>
#include <QTransform>
#include <algorithm>

#include "front/qt/ArtCache.h"
#include "front/qt/Placement.h"
#include "front/qt/QtValues.h"

namespace zd::qt {

namespace {

// A picture at its own size from `at`, rendered to the very device pixels
// that place covers.
void drawPicture(QPainter& painter, ArtCache& art, const PixelGrid& grid,
                 const ui::Picture& picture, QPoint at) {
    if (!picture) return;
    const QRect place(at, QSize(picture->widthPx, picture->heightPx));
    const QPixmap pixmap = art.covering(*picture, grid.cover(place).size(), grid.dpr());
    if (!pixmap.isNull()) painter.drawPixmap(grid.snapped(place).topLeft(), pixmap);
}

void sunkenBorder(QPainter& painter, const PixelGrid& grid, const QRect& r) {
    // Two lines each way: dark outside top and left, light at the bottom
    // and right, as a box set into the window. Drawn as bands on the grid,
    // so they meet the box's fill without a gap at any scale.
    const auto edge = [&painter, &grid](const QRect& box, const QColor& topLeft,
                                        const QColor& bottomRight) {
        const auto band = [&](int x, int y, int w, int h, const QColor& c) {
            painter.fillRect(grid.snapped(QRect(x, y, w, h)), c);
        };
        band(box.left(), box.top(), box.width(), 1, topLeft);
        band(box.left(), box.top(), 1, box.height(), topLeft);
        band(box.left(), box.bottom(), box.width(), 1, bottomRight);
        band(box.right(), box.top() + 1, 1, box.height() - 1, bottomRight);
    };
    edge(r, QColor(128, 128, 128), QColor(255, 255, 255));
    edge(r.adjusted(1, 1, -1, -1), QColor(64, 64, 64), QColor(212, 208, 200));
}

// Each look is drawn inside its bounds, with the painter as it found it,
// and every edge on the device pixel the grid gives it.
class Drawer {
public:
    Drawer(QPainter& painter, ArtCache& art, const PixelGrid& grid)
        : p_(painter), art_(art), grid_(grid) {}

    void operator()(std::monostate) const {}

    void operator()(const view::TextLook& l) const {
        const QRectF rect = grid_.snapped(qrect(l.rect));
        if (!l.transparent) p_.fillRect(rect, color(l.back));
        p_.setPen(color(l.fore));
        p_.setFont(fontOf(l.font));
        p_.drawText(rect, Qt::AlignTop | Qt::TextWordWrap | horizontal(l.align),
                    captionText(l.caption));
    }

    void operator()(const view::PictureLook& l) const {
        if (!l.picture) return;
        const ui::PictureData& picture = *l.picture;
        if (!l.stretch) {
            drawPicture(p_, art_, grid_, l.picture, qrect(l.rect).topLeft());
        } else if (qrect(l.rect).width() <= picture.widthPx &&
                   qrect(l.rect).height() <= picture.heightPx) {
            // Shrunk: rendered at the size it is shown, to stay sharp.
            const QPixmap pixmap =
                art_.covering(picture, grid_.cover(qrect(l.rect)).size(), grid_.dpr());
            if (!pixmap.isNull()) p_.drawPixmap(grid_.snapped(qrect(l.rect)).topLeft(), pixmap);
        } else {
            // Stretched across a screen: the soft backdrop loses nothing by
            // being scaled up, and a screen-sized rendering would cost the
            // start several megabytes and milliseconds.
            const QPixmap pixmap = art_.pixmap(picture, grid_.dpr());
            p_.setRenderHint(QPainter::SmoothPixmapTransform);
            if (!pixmap.isNull())
                p_.drawPixmap(grid_.snapped(qrect(l.rect)), pixmap, pixmap.rect());
        }
    }

    void operator()(const view::BoxLook& l) const {
        p_.fillRect(grid_.snapped(qrect(l.rect)), color(l.back));
        p_.save();
        p_.setClipRect(grid_.snapped(qrect(l.inner)), Qt::IntersectClip);
        drawPicture(p_, art_, grid_, l.picture, qrect(l.inner).topLeft());
        p_.restore();
        if (l.border) sunkenBorder(p_, grid_, qrect(l.rect));
    }

    void operator()(const view::FrameLook& l) const {
        QPen pen(color(l.color));
        pen.setWidth(l.width);
        pen.setJoinStyle(Qt::MiterJoin);
        p_.setPen(pen);
        p_.setBrush(Qt::NoBrush);
        // The border lies inside the shape's rectangle.
        const qreal half = l.width / 2.0;
        p_.drawRect(grid_.snapped(qrect(l.rect)).adjusted(half, half, -half, -half));
    }

    void operator()(const view::LineLook& l) const {
        QPen pen(color(l.color));
        pen.setWidth(l.width);
        p_.setPen(pen);
        p_.drawLine(QPoint(l.from.x, l.from.y), QPoint(l.to.x, l.to.y));
    }

private:
    QPainter& p_;
    ArtCache& art_;
    const PixelGrid& grid_;
};

// A dotted line on a light one, to be seen on dark and pale ground alike;
// drawn inside `bounds`.
void drawFocusMark(QPainter& painter, const QRect& bounds) {
    painter.save();
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::white, 1));
    painter.drawRect(bounds.adjusted(0, 0, -1, -1));
    painter.setPen(QPen(Qt::black, 1, Qt::DotLine));
    painter.drawRect(bounds.adjusted(1, 1, -2, -2));
    painter.restore();
}

}  // namespace

QRegion ClientScene::refresh(const ui::Window& window, const ui::Control* marked) {
    QRegion changed;
    for (const view::Rect& r : scene_.refresh(window, marked)) changed += qrect(r);
    return changed;
}

void ClientScene::paint(QPainter& painter, const QRect& area, ArtCache& art) const {
    const view::Scene::Backdrop& backdrop = scene_.backdrop();
    const QRect client = QRect(0, 0, backdrop.size.width, backdrop.size.height) & area;
    if (client.isEmpty()) return;
    // Where the painter's device pixels lie: the window's own on screen,
    // or those of an image the window is rendered into.
    const QTransform& device = painter.deviceTransform();
    const PixelGrid grid(device.map(QPointF(0, 0)), device.m11());
    painter.save();
    painter.setClipRect(grid.snapped(client));
    painter.fillRect(grid.snapped(client), color(backdrop.back));
    drawPicture(painter, art, grid, backdrop.picture, QPoint(0, 0));
    const Drawer draw(painter, art, grid);
    for (const view::Look& look : scene_.looks()) {
        const QRect bounds = qrect(view::boundsOf(look)) & client;
        if (bounds.isEmpty()) continue;
        painter.save();
        painter.setClipRect(grid.snapped(bounds), Qt::IntersectClip);
        std::visit(draw, look);
        painter.restore();
    }
    if (qrect(scene_.mark()).intersects(client)) drawFocusMark(painter, qrect(scene_.mark()));
    painter.restore();
}

}  // namespace zd::qt
