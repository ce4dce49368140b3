#include <QApplication>
#include <cstdio>
#include <cstdlib>

#include "front/qt/Guard.h"
#include "front/qt/QtProgram.h"

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Zifferndach"));
    // The program ends when its logic says so, never because a window closed.
    QApplication::setQuitOnLastWindowClosed(false);

    int result = 0;
    zd::qt::guarded([&] {
        zd::qt::QtProgram program;
        if (program.start()) result = QApplication::exec();
        // The program ends at once, with its windows. Nothing is left to
        // save (the list is written when it changes), and the tidying up of
        // sound, windows and the display connection would only keep the
        // process alive after its last window has gone.
        std::fflush(nullptr);
        std::_Exit(result);
    });
    return result;
}
