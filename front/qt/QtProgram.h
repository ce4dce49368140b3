#pragma once

#include <QString>
#include <memory>

#include "front/qt/QtLoop.h"
#include "game/program/Program.h"
#include "system/Platform.h"

namespace zd::qt {

// The program as it runs on Qt: Qt's event loop, the desktop platform, Qt's
// own texts in German, and one program instance sized to the primary
// screen, with its event routines bound. Needs a QApplication.
class QtProgram {
public:
    QtProgram();
    QtProgram(const QtProgram&) = delete;
    QtProgram& operator=(const QtProgram&) = delete;

    // Where rendered art is kept between runs.
    static QString artCache();

    QtLoop loop;
    std::unique_ptr<sys::Platform> platform;
    Program p;
};

}  // namespace zd::qt
