#include "front/qt/QtProgram.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QScreen>
#include <QStandardPaths>

#include "front/qt/DesktopPlatform.h"
#include "front/qt/QtGerman.h"
#include "game/Start.h"

namespace zd::qt {

namespace {

QSize screenSize() {
    const QScreen* primary = QGuiApplication::primaryScreen();
    return primary ? primary->availableGeometry().size() : QSize(1024, 768);
}

}  // namespace

QtProgram::QtProgram()
    : platform(desktopPlatform()),
      p(loop, *platform, screenSize().width() * ui::kTwipsPerPixel,
        screenSize().height() * ui::kTwipsPerPixel),
      frontEnd(p.tk, artCache()) {
    speakGerman(*QCoreApplication::instance());
    loop.attach(p.tk);
    bindEventRoutines(p);
}

bool QtProgram::start() {
    p.tk.dispatch([this] { Main(p); });
    return !p.tk.ended();
}

QString QtProgram::artCache() {
    return QStandardPaths::writableLocation(QStandardPaths::CacheLocation) + QStringLiteral("/art");
}

}  // namespace zd::qt
