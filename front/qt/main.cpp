#include <QApplication>
#include <cstdio>
#include <cstdlib>

#include "front/qt/Guard.h"
#include "front/qt/QtFrontEnd.h"
#include "front/qt/QtProgram.h"
#include "game/Start.h"

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Zifferndach"));
    // The program ends when its logic says so, never because a window closed.
    QApplication::setQuitOnLastWindowClosed(false);

    int result = 0;
    zd::qt::guarded([&] {
        zd::qt::QtProgram program;
        zd::qt::QtFrontEnd frontEnd(program.p.tk, zd::qt::QtProgram::artCache());
        // The start may already end the program, in a message at start-up.
        program.p.tk.dispatch([&program] { zd::Main(program.p); });
        if (!program.p.tk.ended()) result = QApplication::exec();
        // The program ends at once, with its windows. Nothing is left to
        // save (the list is written when it changes), and the tidying up of
        // sound, windows and the display connection would only keep the
        // process alive after its last window has gone.
        std::fflush(nullptr);
        std::_Exit(result);
    });
    return result;
}
