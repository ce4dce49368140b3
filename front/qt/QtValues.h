#pragma once

#include <QColor>
#include <QFont>
#include <QString>
#include <string>

#include "ui/model/Control.h"

namespace zd::qt {

// The model's values in Qt's terms.
QString text(const std::string& utf8);
// A caption's line ends (CR LF, or a lone CR) as Qt breaks lines.
QString captionText(const std::string& caption);
QColor color(const ui::Color& c);
QFont fontOf(const ui::Font& f);
Qt::Alignment horizontal(ui::Align a);
// Twips to logical pixels.
int toPixels(int twips);

}  // namespace zd::qt
