// The yardstick for the game's start on Windows: a bare Win32 window of the
// playing field's size, 784 x 450 with a menu bar of three menus, that ends
// as soon as it has painted once.
//   wine win32_bare_window.exe
// beside
//   wine win32_start_probe.exe
#include <initializer_list>

#include <windows.h>

namespace {

LRESULT CALLBACK proc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == WM_PAINT) {
        PAINTSTRUCT ps;
        HDC dc = BeginPaint(hwnd, &ps);
        FillRect(dc, &ps.rcPaint, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
        EndPaint(hwnd, &ps);
        PostQuitMessage(0);
        return 0;
    }
    return DefWindowProcW(hwnd, msg, wp, lp);
}

}  // namespace

int WINAPI WinMain(HINSTANCE self, HINSTANCE, LPSTR, int) {
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    WNDCLASSEXW wc{};
    wc.cbSize = sizeof(wc);
    wc.lpfnWndProc = proc;
    wc.hInstance = self;
    wc.lpszClassName = L"Bare";
    RegisterClassExW(&wc);
    HMENU bar = CreateMenu();
    for (const wchar_t* caption : {L"&Spiel", L"&Optionen", L"&Informationen"}) {
        HMENU menu = CreatePopupMenu();
        AppendMenuW(menu, MF_STRING, 1, L"Eintrag");
        AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(menu), caption);
    }
    const DWORD style = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU;
    RECT r{0, 0, 784, 450};
    AdjustWindowRectEx(&r, style, TRUE, 0);
    HWND hwnd = CreateWindowExW(0, L"Bare", L"Bare", style, CW_USEDEFAULT, CW_USEDEFAULT,
                                r.right - r.left, r.bottom - r.top, nullptr, bar, self, nullptr);
    ShowWindow(hwnd, SW_SHOW);
    MSG msg;
    while (GetMessageW(&msg, nullptr, 0, 0) > 0) DispatchMessageW(&msg);
    ExitProcess(0);
}
