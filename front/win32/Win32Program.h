#pragma once

#include "front/win32/Win32Loop.h"
#include "game/program/Program.h"
#include "system/windows/WindowsPlatform.h"

namespace zd::win32 {

// The program as it runs on Windows: the Windows message loop, the Windows
// platform, and one program instance sized to the primary screen, with its
// event routines bound. The process must be aware of each screen's scale.
class Win32Program {
public:
    Win32Program();
    Win32Program(const Win32Program&) = delete;
    Win32Program& operator=(const Win32Program&) = delete;

    Win32Loop loop;
    sys::WindowsPlatform platform;
    Program p;
};

}  // namespace zd::win32
