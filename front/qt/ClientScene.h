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
    // Takes what the window shows now; returns where that differs.
    QRegion refresh(const ui::Window& window);
    // Paints the part `area` of the client area at `dpr` pixels a point.
    void paint(QPainter& painter, const QRect& area, ArtCache& art, qreal dpr) const;

private:
    view::Scene scene_;
};

}  // namespace zd::qt
