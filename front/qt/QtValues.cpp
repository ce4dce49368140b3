#include "front/qt/QtValues.h"

#include <algorithm>
#include <cmath>

#include "ui/view/Geometry.h"
#include "ui/view/Scene.h"

namespace zd::qt {

QString text(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

QString captionText(const std::string& caption) {
    return text(view::captionLines(caption));
}

QColor color(const ui::Color& c) {
    return QColor(c.r, c.g, c.b);
}

QFont fontOf(const ui::Font& f) {
    // The fonts of the design are Windows fonts; Liberation Sans has the
    // same metrics as Arial and stands in for both.
    QString family = text(f.family);
    if (f.family.empty() || f.family == "Arial" || f.family == "MS Sans Serif") {
        family = QStringLiteral("Liberation Sans");
    }
    QFont font;
    font.setFamilies({family, QStringLiteral("Liberation Sans")});
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(f.points * 96.0 / 72.0))));
    font.setBold(f.bold);
    return font;
}

Qt::Alignment horizontal(ui::Align a) {
    switch (a) {
        case ui::Align::Center:
            return Qt::AlignHCenter;
        case ui::Align::Right:
            return Qt::AlignRight;
        case ui::Align::Left:
            break;
    }
    return Qt::AlignLeft;
}

int toPixels(int twips) {
    return view::toPixels(twips);
}

}  // namespace zd::qt
