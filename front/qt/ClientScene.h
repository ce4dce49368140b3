#pragma once

#include <QRect>
#include <QRegion>

#include "ui/model/Window.h"
#include "ui/view/Scene.h"

class QPainter;

namespace zd::qt {

class ArtCache;

// A window's client area as it was last taken from the model (the shared
// scene of ui/view), painted with Qt.
class ClientScene {
public:
    // Takes what the window shows now, with the focus mark round `marked`
    // if given; returns where that differs.
    QRegion refresh(const ui::Window& window, const ui::Control* marked = nullptr);
    // Paints the part `area` of the client area, at the density of what
    // the painter paints on.
    void paint(QPainter& painter, const QRect& area, ArtCache& art) const;

private:
    view::Scene scene_;
};

}  // namespace zd::qt
