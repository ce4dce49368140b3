#include "front/qt/ClientArea.h"

#include <QHelpEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QToolTip>

#include "front/qt/Placement.h"
#include "front/qt/QtFrontEnd.h"
#include "front/qt/QtValues.h"
#include "front/qt/WindowWidget.h"

namespace zd::qt {

ClientArea::ClientArea(WindowWidget& owner) : QWidget(&owner), owner_(owner) {
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::NoFocus);
}

bool ClientArea::event(QEvent* e) {
    if (e->type() == QEvent::ToolTip) {
        auto* help = static_cast<QHelpEvent*>(e);
        const ui::Window* w = owner_.modelWindow();
        const ui::Control* c =
            w ? controlAt(*w, QPointF(help->pos()), size(), owner_.pixelGrid()) : nullptr;
        if (c && !c->ToolTipText.empty()) {
            const Placement place = placementOf(*c, size());
            QToolTip::showText(help->globalPos(), text(c->ToolTipText), this,
                               place.rect & place.clip);
        } else {
            QToolTip::hideText();
            e->ignore();
        }
        return true;
    }
    return QWidget::event(e);
}

void ClientArea::paintEvent(QPaintEvent* e) {
    QPainter painter(this);
    owner_.scene().paint(painter, e->rect(), owner_.frontEnd().art());
}

void ClientArea::mousePressEvent(QMouseEvent* e) {
    owner_.onPress(e);
}

void ClientArea::mouseDoubleClickEvent(QMouseEvent* e) {
    // A quick second click is a click like any other.
    owner_.onPress(e);
}

void ClientArea::mouseReleaseEvent(QMouseEvent* e) {
    owner_.onRelease(e);
}

void ClientArea::mouseMoveEvent(QMouseEvent* e) {
    owner_.onMouseMove(e);
}

}  // namespace zd::qt
