#include <QApplication>
#include <QScreen>
#include <QStandardPaths>

#include "game/Programm.h"
#include "game/Spiel.h"
#include "ui/model/Toolkit.h"
#include "ui/qt/Guard.h"
#include "ui/qt/QtFrontEnd.h"
#include "ui/qt/QtLoop.h"
#include "ui/qt/QtPlatform.h"

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Zifferndach"));
    // The program ends when its logic says so, never because a window closed.
    QApplication::setQuitOnLastWindowClosed(false);

    zd::qt::QtLoop loop;
    zd::qt::QtPlatform platform;
    QSize screen(1024, 768);
    if (const QScreen* primary = QGuiApplication::primaryScreen()) {
        screen = primary->availableGeometry().size();
    }
    zd::Programm p(loop, platform, screen.width() * zd::ui::kTwipsPerPixel,
                   screen.height() * zd::ui::kTwipsPerPixel);
    loop.attach(p.tk);
    int result = 0;
    zd::qt::guarded([&] {
        zd::richteEin(p);
        zd::qt::QtFrontEnd frontEnd(
            p.tk, loop, QStandardPaths::writableLocation(QStandardPaths::CacheLocation) + "/art");
        // The start may already end the program, in a message at start-up.
        p.tk.dispatch([&p] { zd::Main(p); });
        if (!p.tk.ended()) result = QApplication::exec();
    });
    return result;
}
