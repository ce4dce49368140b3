#include "front/qt/ClientScene.h"

#include <QPainter>
#include <QPen>
#include <algorithm>

#include "front/qt/ArtCache.h"
#include "front/qt/Placement.h"
#include "front/qt/QtValues.h"

namespace zd::qt {

namespace {

void drawPicture(QPainter& painter, ArtCache& art, const ui::Picture& picture, QPoint at,
                 qreal dpr) {
    if (!picture) return;
    const QPixmap pixmap = art.pixmap(*picture, dpr);
    if (!pixmap.isNull()) painter.drawPixmap(at, pixmap);
}

void sunkenBorder(QPainter& painter, const QRect& r) {
    // Two lines each way: dark outside top and left, light at the bottom
    // and right, as a box set into the window.
    const auto edge = [&painter](const QRect& box, const QColor& topLeft,
                                 const QColor& bottomRight) {
        painter.setPen(topLeft);
        painter.drawLine(box.topLeft(), box.topRight());
        painter.drawLine(box.topLeft(), box.bottomLeft());
        painter.setPen(bottomRight);
        painter.drawLine(box.bottomLeft(), box.bottomRight());
        painter.drawLine(box.topRight(), box.bottomRight());
    };
    edge(r, QColor(128, 128, 128), QColor(255, 255, 255));
    edge(r.adjusted(1, 1, -1, -1), QColor(64, 64, 64), QColor(212, 208, 200));
}

// Each look is drawn inside its bounds, with the painter as it found it.
class Drawer {
public:
    Drawer(QPainter& painter, ArtCache& art, qreal dpr) : p_(painter), art_(art), dpr_(dpr) {}

    void operator()(std::monostate) const {}

    void operator()(const view::TextLook& l) const {
        if (!l.transparent) p_.fillRect(qrect(l.rect), color(l.back));
        p_.setPen(color(l.fore));
        p_.setFont(fontOf(l.font));
        p_.drawText(qrect(l.rect), Qt::AlignTop | Qt::TextWordWrap | horizontal(l.align),
                    captionText(l.caption));
    }

    void operator()(const view::PictureLook& l) const {
        const QRect rect = qrect(l.rect);
        if (!l.picture) return;
        const ui::PictureData& picture = *l.picture;
        if (!l.stretch) {
            drawPicture(p_, art_, l.picture, rect.topLeft(), dpr_);
        } else if (rect.width() <= picture.widthPx && rect.height() <= picture.heightPx) {
            // Shrunk: rendered at the size it is shown, to stay sharp.
            const QPixmap pixmap = art_.pixmap(picture, rect.size(), dpr_);
            if (!pixmap.isNull()) p_.drawPixmap(rect.topLeft(), pixmap);
        } else {
            // Stretched across a screen: the soft backdrop loses nothing by
            // being scaled up, and a screen-sized rendering would cost the
            // start several megabytes and milliseconds.
            const QPixmap pixmap = art_.pixmap(picture, dpr_);
            p_.setRenderHint(QPainter::SmoothPixmapTransform);
            if (!pixmap.isNull()) p_.drawPixmap(rect, pixmap);
        }
    }

    void operator()(const view::BoxLook& l) const {
        const QRect inner = qrect(l.inner);
        p_.fillRect(qrect(l.rect), color(l.back));
        p_.save();
        p_.setClipRect(inner, Qt::IntersectClip);
        drawPicture(p_, art_, l.picture, inner.topLeft(), dpr_);
        p_.restore();
        if (l.border) sunkenBorder(p_, qrect(l.rect));
    }

    void operator()(const view::FrameLook& l) const {
        QPen pen(color(l.color));
        pen.setWidth(l.width);
        pen.setJoinStyle(Qt::MiterJoin);
        p_.setPen(pen);
        p_.setBrush(Qt::NoBrush);
        // The border lies inside the shape's rectangle.
        const qreal half = l.width / 2.0;
        p_.drawRect(QRectF(qrect(l.rect)).adjusted(half, half, -half, -half));
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
    qreal dpr_;
};

}  // namespace

QRegion ClientScene::refresh(const ui::Window& window) {
    QRegion changed;
    for (const view::Rect& r : scene_.refresh(window)) changed += qrect(r);
    return changed;
}

void ClientScene::paint(QPainter& painter, const QRect& area, ArtCache& art, qreal dpr) const {
    const view::Scene::Backdrop& backdrop = scene_.backdrop();
    const QRect client = QRect(0, 0, backdrop.size.width, backdrop.size.height) & area;
    if (client.isEmpty()) return;
    painter.save();
    painter.setClipRect(client);
    painter.fillRect(client, color(backdrop.back));
    drawPicture(painter, art, backdrop.picture, QPoint(0, 0), dpr);
    const Drawer draw(painter, art, dpr);
    for (const view::Look& look : scene_.looks()) {
        const QRect bounds = qrect(view::boundsOf(look)) & client;
        if (bounds.isEmpty()) continue;
        painter.save();
        painter.setClipRect(bounds, Qt::IntersectClip);
        std::visit(draw, look);
        painter.restore();
    }
    painter.restore();
}

}  // namespace zd::qt
