#include "front/qt/ClientScene.h"

#include <QPainter>
#include <QPen>
#include <algorithm>

#include "front/qt/ArtCache.h"
#include "front/qt/Placement.h"
#include "front/qt/QtValues.h"

namespace zd::qt {

namespace {

template <class... F>
struct Overloaded : F... {
    using F::operator()...;
};

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

    void operator()(const TextLook& l) const {
        if (!l.transparent) p_.fillRect(l.rect, color(l.back));
        p_.setPen(color(l.fore));
        p_.setFont(fontOf(l.font));
        p_.drawText(l.rect, Qt::AlignTop | Qt::TextWordWrap | horizontal(l.align),
                    captionText(l.caption));
    }

    void operator()(const PictureLook& l) const {
        if (!l.picture) return;
        const ui::PictureData& picture = *l.picture;
        if (!l.stretch) {
            drawPicture(p_, art_, l.picture, l.rect.topLeft(), dpr_);
        } else if (l.rect.width() <= picture.widthPx && l.rect.height() <= picture.heightPx) {
            // Shrunk: rendered at the size it is shown, to stay sharp.
            const QPixmap pixmap = art_.pixmap(picture, l.rect.size(), dpr_);
            if (!pixmap.isNull()) p_.drawPixmap(l.rect.topLeft(), pixmap);
        } else {
            // Stretched across a screen: the soft backdrop loses nothing by
            // being scaled up, and a screen-sized rendering would cost the
            // start several megabytes and milliseconds.
            const QPixmap pixmap = art_.pixmap(picture, dpr_);
            p_.setRenderHint(QPainter::SmoothPixmapTransform);
            if (!pixmap.isNull()) p_.drawPixmap(l.rect, pixmap);
        }
    }

    void operator()(const BoxLook& l) const {
        p_.fillRect(l.rect, color(l.back));
        p_.save();
        p_.setClipRect(l.inner, Qt::IntersectClip);
        drawPicture(p_, art_, l.picture, l.inner.topLeft(), dpr_);
        p_.restore();
        if (l.border) sunkenBorder(p_, l.rect);
    }

    void operator()(const FrameLook& l) const {
        QPen pen(color(l.color));
        pen.setWidth(l.width);
        pen.setJoinStyle(Qt::MiterJoin);
        p_.setPen(pen);
        p_.setBrush(Qt::NoBrush);
        // The border lies inside the shape's rectangle.
        const qreal half = l.width / 2.0;
        p_.drawRect(QRectF(l.rect).adjusted(half, half, -half, -half));
    }

    void operator()(const LineLook& l) const {
        QPen pen(color(l.color));
        pen.setWidth(l.width);
        p_.setPen(pen);
        p_.drawLine(l.from, l.to);
    }

private:
    QPainter& p_;
    ArtCache& art_;
    qreal dpr_;
};

// How far the focus mark stands off the control, in logical pixels.
constexpr int kMarkGap = 3;

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

Look lookOf(const ui::Control& c, QSize clientSize) {
    if (!c.shown()) return {};
    const auto [rect, clip] = placementOf(c, clientSize);
    if (const auto* label = dynamic_cast<const ui::Label*>(&c)) {
        return TextLook{.rect = rect,
                        .clip = clip,
                        .caption = label->Caption,
                        .fore = label->ForeColor,
                        .back = label->BackColor,
                        .transparent = label->transparent,
                        .font = label->font,
                        .align = label->Alignment};
    }
    if (const auto* image = dynamic_cast<const ui::Image*>(&c)) {
        return PictureLook{
            .rect = rect, .clip = clip, .picture = image->picture, .stretch = image->Stretch};
    }
    if (const auto* box = dynamic_cast<const ui::PictureBox*>(&c)) {
        return BoxLook{.rect = rect,
                       .clip = clip,
                       .inner = innerOf(*box, rect),
                       .picture = box->picture,
                       .back = box->BackColor,
                       .border = box->border};
    }
    if (const auto* shape = dynamic_cast<const ui::Shape*>(&c)) {
        return FrameLook{.rect = rect,
                         .clip = clip,
                         .color = shape->BorderColor,
                         .width = std::max(1, shape->BorderWidth)};
    }
    if (const auto* line = dynamic_cast<const ui::Line*>(&c)) {
        // The ends are in the container's coordinates, as the control's place.
        const QPoint origin = rect.topLeft() - QPoint(toPixels(c.Left), toPixels(c.Top));
        return LineLook{.clip = clip,
                        .from = origin + QPoint(toPixels(line->X1), toPixels(line->Y1)),
                        .to = origin + QPoint(toPixels(line->X2), toPixels(line->Y2)),
                        .color = line->BorderColor,
                        .width = std::max(1, line->BorderWidth)};
    }
    return {};
}

QRect boundsOf(const Look& look) {
    return std::visit(Overloaded{
                          [](std::monostate) { return QRect(); },
                          [](const LineLook& l) {
                              const int w = l.width;
                              return QRect(l.from, l.to).normalized().adjusted(-w, -w, w, w) &
                                     l.clip;
                          },
                          [](const auto& l) { return l.rect & l.clip; },
                      },
                      look);
}

QRegion ClientScene::refresh(const ui::Window& window, const ui::Control* marked) {
    const Backdrop backdrop{clientSizeOf(window), window.BackColor, window.picture};
    const auto& controls = window.controls();
    QRegion changed;
    if (!(backdrop == backdrop_) || looks_.size() != controls.size()) {
        backdrop_ = backdrop;
        looks_.assign(controls.size(), Look{});
        changed = QRect(QPoint(0, 0), backdrop.size);
    }
    for (std::size_t i = 0; i < controls.size(); ++i) {
        Look now = lookOf(*controls[i], backdrop.size);
        if (now == looks_[i]) continue;
        // Where it was and where it is now.
        changed += boundsOf(looks_[i]);
        changed += boundsOf(now);
        looks_[i] = std::move(now);
    }
    QRect mark;
    if (marked && marked->shown()) {
        const Placement place = placementOf(*marked, backdrop.size);
        if (!(place.rect & place.clip).isEmpty()) {
            mark = place.rect.adjusted(-kMarkGap, -kMarkGap, kMarkGap, kMarkGap) &
                   QRect(QPoint(0, 0), backdrop.size);
        }
    }
    if (mark != mark_) {
        changed += mark_;
        changed += mark;
        mark_ = mark;
    }
    return changed;
}

void ClientScene::paint(QPainter& painter, const QRect& area, ArtCache& art, qreal dpr) const {
    const QRect client = QRect(QPoint(0, 0), backdrop_.size) & area;
    if (client.isEmpty()) return;
    painter.save();
    painter.setClipRect(client);
    painter.fillRect(client, color(backdrop_.back));
    drawPicture(painter, art, backdrop_.picture, QPoint(0, 0), dpr);
    const Drawer draw(painter, art, dpr);
    for (const Look& look : looks_) {
        const QRect bounds = boundsOf(look) & client;
        if (bounds.isEmpty()) continue;
        painter.save();
        painter.setClipRect(bounds, Qt::IntersectClip);
        std::visit(draw, look);
        painter.restore();
    }
    if (mark_.intersects(client)) drawFocusMark(painter, mark_);
    painter.restore();
}

}  // namespace zd::qt
