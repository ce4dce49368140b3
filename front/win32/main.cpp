#include <windows.h>

#include "front/win32/Guard.h"
#include "front/win32/Win32FrontEnd.h"
#include "front/win32/Win32Program.h"
#include "game/Start.h"

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    zd::win32::guarded([] {
        zd::win32::Win32Program program;
        zd::win32::Win32FrontEnd frontEnd(program.p.tk, program.loop);
        // The start may already end the program, in a message at start-up.
        program.p.tk.dispatch([&program] { zd::Main(program.p); });
        program.loop.run([] { return false; });
    });
    // The program ends at once, with its windows. Nothing is left to save
    // (the list is written when it changes), and tidying up would only keep
    // the process alive after its last window has gone.
    ExitProcess(0);
}
