#pragma once

#include <QString>
#include <memory>

#include "front/qt/QtFrontEnd.h"
#include "front/qt/QtLoop.h"
#include "game/program/Program.h"
#include "system/Platform.h"

namespace zd::qt {

// The game as it runs on Qt: Qt's event loop, the desktop platform, Qt's
// own texts in German, one program instance sized to the primary screen
// with its event routines bound, and the front end that shows it. Needs a
// QApplication.
class QtProgram {
public:
    QtProgram();
    QtProgram(const QtProgram&) = delete;
    QtProgram& operator=(const QtProgram&) = delete;

    // Runs Main; false when the program has already ended, in a message at
    // start-up.
    bool start();

    // Where rendered art is kept between runs.
    static QString artCache();

    QtLoop loop;
    std::unique_ptr<sys::Platform> platform;
    Program p;
    QtFrontEnd frontEnd;
};

}  // namespace zd::qt
