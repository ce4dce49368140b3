#include "front/win32/NativeWindow.h"

#include <cmath>

#include <commctrl.h>

#include "front/win32/Children.h"
#include "front/win32/Guard.h"
#include "front/win32/Menus.h"
#include "front/win32/Text.h"
#include "front/win32/Win32FrontEnd.h"
#include "ui/model/Toolkit.h"
#include "ui/view/Placement.h"

namespace zd::win32 {

namespace {

constexpr wchar_t kClassName[] = L"Zifferndach";
// While the system runs a loop of its own (a menu, a move), the program's
// timers are looked at this often; 10 ms is the shortest a system timer has.
constexpr UINT_PTR kSystemLoopTimer = 1;
constexpr UINT kSystemLoopMs = USER_TIMER_MINIMUM;

// The buttons the windows hear of: left, right and middle.
constexpr int kLeft = 1;
constexpr int kRight = 2;
constexpr int kMiddle = 4;

int buttonsOf(WPARAM keys) {
    int b = 0;
    if (keys & MK_LBUTTON) b |= kLeft;
    if (keys & MK_RBUTTON) b |= kRight;
    if (keys & MK_MBUTTON) b |= kMiddle;
    return b;
}

void registerClass() {
    static bool registered = false;
    if (registered) return;
    registered = true;
    WNDCLASSEXW wc{};
    wc.cbSize = sizeof(wc);
    wc.lpfnWndProc = DefWindowProcW;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.lpszClassName = kClassName;
    RegisterClassExW(&wc);
}

}  // namespace

NativeWindow::NativeWindow(Win32FrontEnd& frontEnd, ui::Window& window)
    : frontEnd_(frontEnd), window_(&window), painter_(frontEnd.art(), frontEnd.fonts()) {
    registerClass();
    HWND owner = nullptr;
    if (window.titleBar) {
        // A fixed border: a title and perhaps a close box, nothing to
        // minimise, maximise or resize.
        style_ = WS_OVERLAPPED | WS_CAPTION | (window.closeBox ? WS_SYSMENU : 0);
        if (!window.inTaskbar) owner = frontEnd.hiddenOwner();
    } else {
        style_ = WS_POPUP;
        if (!window.inTaskbar) exStyle_ = WS_EX_TOOLWINDOW;
    }
    style_ |= WS_CLIPCHILDREN;
    if (!window.menuBar.empty()) menus_ = std::make_unique<Menus>(frontEnd, window);
    hwnd_ = CreateWindowExW(exStyle_, kClassName, L"", style_, 0, 0, 0, 0, owner,
                            menus_ ? menus_->bar() : nullptr, GetModuleHandleW(nullptr), nullptr);
    SetWindowLongPtrW(hwnd_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetWindowLongPtrW(hwnd_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&NativeWindow::proc));
    if (window.icon) {
        // The program's icon, from its own resources, at the sizes the
        // window's screen asks for.
        const UINT dpi = GetDpiForWindow(hwnd_);
        HINSTANCE self = GetModuleHandleW(nullptr);
        const auto load = [&](int metric) {
            const int size = GetSystemMetricsForDpi(metric, dpi);
            return reinterpret_cast<LPARAM>(
                LoadImageW(self, MAKEINTRESOURCEW(1), IMAGE_ICON, size, size, 0));
        };
        SendMessageW(hwnd_, WM_SETICON, ICON_BIG, load(SM_CXICON));
        SendMessageW(hwnd_, WM_SETICON, ICON_SMALL, load(SM_CXSMICON));
    }
    children_ = std::make_unique<Children>(*this, window);

    // One tooltip for the window; its area is the control under the mouse.
    INITCOMMONCONTROLSEX controls{sizeof(controls), ICC_WIN95_CLASSES};
    InitCommonControlsEx(&controls);
    tip_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                           WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT, CW_USEDEFAULT,
                           CW_USEDEFAULT, CW_USEDEFAULT, hwnd_, nullptr, nullptr, nullptr);
    TOOLINFOW tool{};
    tool.cbSize = sizeof(tool);
    tool.uFlags = 0;
    tool.hwnd = hwnd_;
    tool.uId = 1;
    tool.lpszText = LPSTR_TEXTCALLBACKW;
    SendMessageW(tip_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

NativeWindow::~NativeWindow() {
    children_.reset();
    SetWindowLongPtrW(hwnd_, GWLP_USERDATA, 0);
    DestroyWindow(hwnd_);
}

void NativeWindow::detach() {
    window_ = nullptr;
    pressed_ = nullptr;
    tipControl_ = nullptr;
    ShowWindow(hwnd_, SW_HIDE);
}

double NativeWindow::scale() const {
    return GetDpiForWindow(hwnd_) / 96.0;
}

void NativeWindow::syncFromModel() {
    if (!window_) return;
    if (!appliedCaption_ || *appliedCaption_ != window_->Caption) {
        appliedCaption_ = window_->Caption;
        SetWindowTextW(hwnd_, wide(window_->Caption).c_str());
    }
    syncGeometry();
    if (menus_ && menus_->sync()) DrawMenuBar(hwnd_);
    const double s = scale();
    children_->sync(s);
    const ui::Control* marked = view::markedControl(*window_, window_->toolkit().keyboardUsed());
    for (const view::Rect& r : scene_.refresh(*window_, marked)) {
        // Rounding at the edges may reach a pixel further.
        const view::Rect p = view::scaled(r, s).adjusted(-1, -1, 1, 1);
        const RECT rect{p.left, p.top, p.right(), p.bottom()};
        InvalidateRect(hwnd_, &rect, FALSE);
    }
}

void NativeWindow::syncGeometry() {
    const UINT dpi = GetDpiForWindow(hwnd_);
    const view::Size client = view::clientSizeOf(*window_);
    const view::Rect physical =
        view::scaled(view::Rect{0, 0, client.width, client.height}, dpi / 96.0);
    RECT outer{0, 0, physical.width, physical.height};
    AdjustWindowRectExForDpi(&outer, style_, menus_ != nullptr, exStyle_, dpi);
    const double system = frontEnd_.systemScale();
    const int left = static_cast<int>(std::lround(window_->Left / 15.0 * system));
    const int top = static_cast<int>(std::lround(window_->Top / 15.0 * system));
    RECT want{left, top, left + outer.right - outer.left, top + outer.bottom - outer.top};
    if (appliedRect_ && EqualRect(&*appliedRect_, &want)) return;
    appliedRect_ = want;
    applying_ = true;
    SetWindowPos(hwnd_, nullptr, want.left, want.top, want.right - want.left,
                 want.bottom - want.top, SWP_NOZORDER | SWP_NOACTIVATE);
    // A menu bar too long for the width takes two lines: the client area
    // keeps its size all the same.
    RECT got;
    GetClientRect(hwnd_, &got);
    if (got.bottom != physical.height) {
        want.bottom += physical.height - got.bottom;
        appliedRect_ = want;
        SetWindowPos(hwnd_, nullptr, 0, 0, want.right - want.left, want.bottom - want.top,
                     SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOMOVE);
    }
    applying_ = false;
}

void NativeWindow::movedBySystem() {
    if (applying_ || !window_ || !IsWindowVisible(hwnd_)) return;
    RECT r;
    GetWindowRect(hwnd_, &r);
    if (appliedRect_ && appliedRect_->left == r.left && appliedRect_->top == r.top) return;
    // Moved by the user or the system: the model learns where to.
    const double system = frontEnd_.systemScale();
    frontEnd_.toolkit().moved(*window_, static_cast<int>(std::lround(r.left / system)) * 15,
                              static_cast<int>(std::lround(r.top / system)) * 15);
    appliedRect_ = r;
}

view::Point NativeWindow::logicalPoint(LPARAM lp) const {
    const double s = scale();
    const int x = static_cast<short>(LOWORD(lp));
    const int y = static_cast<short>(HIWORD(lp));
    return view::Point{static_cast<int>(std::floor(x / s)), static_cast<int>(std::floor(y / s))};
}

LRESULT CALLBACK NativeWindow::proc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    auto* self = reinterpret_cast<NativeWindow*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
    if (!self) return DefWindowProcW(hwnd, msg, wp, lp);
    ++self->depth_;
    LRESULT result = 0;
    guarded([&] { result = self->handle(msg, wp, lp); });
    --self->depth_;
    return result;
}

LRESULT NativeWindow::handle(UINT msg, WPARAM wp, LPARAM lp) {
    ui::Toolkit& tk = frontEnd_.toolkit();
    if (msg >= WM_MOUSEFIRST && msg <= WM_MOUSELAST && tip_) {
        // The tooltip learns of the mouse to time its showing.
        MSG relayed{hwnd_, msg, wp, lp, 0, {}};
        SendMessageW(tip_, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&relayed));
    }
    switch (msg) {
        case WM_PAINT: {
            PAINTSTRUCT ps;
            HDC dc = BeginPaint(hwnd_, &ps);
            painter_.paint(scene_, scale(), ps.rcPaint, dc);
            EndPaint(hwnd_, &ps);
            return 0;
        }
        case WM_ERASEBKGND:
            return 1;
        case WM_CTLCOLOREDIT:
        case WM_CTLCOLORSTATIC:
            // A read-only box is white too, as a list to be read.
            SetBkColor(reinterpret_cast<HDC>(wp), RGB(255, 255, 255));
            return reinterpret_cast<LRESULT>(GetStockObject(WHITE_BRUSH));
        case WM_LBUTTONDOWN:
            onPress(kLeft, lp, wp);
            return 0;
        case WM_RBUTTONDOWN:
            onPress(kRight, lp, wp);
            return 0;
        case WM_MBUTTONDOWN:
            onPress(kMiddle, lp, wp);
            return 0;
        case WM_LBUTTONUP:
            onRelease(kLeft, lp, wp);
            return 0;
        case WM_RBUTTONUP:
            onRelease(kRight, lp, wp);
            return 0;
        case WM_MBUTTONUP:
            onRelease(kMiddle, lp, wp);
            return 0;
        case WM_MOUSEMOVE:
            onMouseMove(lp, wp);
            return 0;
        case WM_CAPTURECHANGED:
            // The system took the mouse (a move of the window): the press
            // ends without a release.
            if (reinterpret_cast<HWND>(lp) != hwnd_) {
                pressed_ = nullptr;
                pressedWindow_ = false;
            }
            return 0;
        case WM_SETCURSOR:
            if (reinterpret_cast<HWND>(wp) == hwnd_ && LOWORD(lp) == HTCLIENT && setCursor()) {
                return TRUE;
            }
            break;
        case WM_ACTIVATE:
            if (LOWORD(wp) != WA_INACTIVE && window_) frontEnd_.activatedBySystem();
            break;
        case WM_CLOSE:
            // The model decides whether and how the window goes.
            if (window_) tk.close(*window_);
            return 0;
        case WM_WINDOWPOSCHANGED:
            if (!(reinterpret_cast<const WINDOWPOS*>(lp)->flags & SWP_NOMOVE)) movedBySystem();
            break;
        case WM_DPICHANGED: {
            // To the new screen's scale: the system's suggested place, the
            // size worked out anew, everything repainted with art for it.
            const RECT* suggested = reinterpret_cast<const RECT*>(lp);
            SetWindowPos(hwnd_, nullptr, suggested->left, suggested->top, 0, 0,
                         SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOSIZE);
            appliedRect_.reset();
            if (window_) {
                movedBySystem();
                syncFromModel();
            }
            InvalidateRect(hwnd_, nullptr, FALSE);
            return 0;
        }
        case WM_COMMAND:
            if (lp == 0 && HIWORD(wp) == 0 && menus_) {
                menus_->command(LOWORD(wp));
                return 0;
            }
            if (lp != 0 && children_->command(reinterpret_cast<HWND>(lp), HIWORD(wp))) return 0;
            break;
        case WM_NOTIFY: {
            auto* header = reinterpret_cast<NMHDR*>(lp);
            if (header->hwndFrom == tip_ && header->code == TTN_GETDISPINFOW) {
                tipText_ = tipControl_ ? wide(tipControl_->ToolTipText) : std::wstring();
                reinterpret_cast<NMTTDISPINFOW*>(lp)->lpszText = tipText_.data();
                return 0;
            }
            break;
        }
        case WM_INITMENUPOPUP:
            if (menus_ && !HIWORD(lp)) menus_->opened(reinterpret_cast<HMENU>(wp));
            return 0;
        case WM_ENTERMENULOOP:
        case WM_ENTERSIZEMOVE:
            SetTimer(hwnd_, kSystemLoopTimer, kSystemLoopMs, nullptr);
            break;
        case WM_EXITMENULOOP:
        case WM_EXITSIZEMOVE:
            KillTimer(hwnd_, kSystemLoopTimer);
            break;
        case WM_TIMER:
            if (wp == kSystemLoopTimer) {
                frontEnd_.loop().fire();
                return 0;
            }
            break;
        default:
            break;
    }
    return DefWindowProcW(hwnd_, msg, wp, lp);
}

bool NativeWindow::setCursor() {
    if (!window_) return false;
    POINT at;
    GetCursorPos(&at);
    ScreenToClient(hwnd_, &at);
    const double s = scale();
    const view::Point p{static_cast<int>(std::floor(at.x / s)),
                        static_cast<int>(std::floor(at.y / s))};
    const ui::Control* over = view::controlAt(*window_, p, view::clientSizeOf(*window_));
    SetCursor(over && over->handCursor ? frontEnd_.handCursor(GetDpiForWindow(hwnd_))
                                       : LoadCursorA(nullptr, IDC_ARROW));
    return true;
}

void NativeWindow::tipFor(const ui::Control* over) {
    if (over && over->ToolTipText.empty()) over = nullptr;
    if (over == tipControl_) return;
    tipControl_ = over;
    SendMessageW(tip_, TTM_POP, 0, 0);
    TOOLINFOW tool{};
    tool.cbSize = sizeof(tool);
    tool.hwnd = hwnd_;
    tool.uId = 1;
    if (over) {
        const view::Placement place = view::placementOf(*over, view::clientSizeOf(*window_));
        const view::Rect r = view::scaled(view::intersect(place.rect, place.clip), scale());
        tool.rect = RECT{r.left, r.top, r.right(), r.bottom()};
    }
    SendMessageW(tip_, TTM_NEWTOOLRECTW, 0, reinterpret_cast<LPARAM>(&tool));
}

void NativeWindow::onPress(int button, LPARAM lp, WPARAM keys) {
    if (!window_) return;
    if (button == kLeft) dragged_ = false;
    // The first button down captures the mouse for what it went down on;
    // MouseDown comes for every button, the click only for the left one.
    if (!(buttonsOf(keys) & ~button)) {
        pressed_ = view::controlAt(*window_, logicalPoint(lp), view::clientSizeOf(*window_));
        pressedWindow_ = pressed_ == nullptr;
        SetCapture(hwnd_);
    }
    if (ui::Control* c = pressed_) frontEnd_.toolkit().mouseDown(*c);
}

void NativeWindow::onRelease(int button, LPARAM lp, WPARAM keys) {
    ui::Control* c = pressed_;
    if (!buttonsOf(keys)) {
        pressed_ = nullptr;
        pressedWindow_ = false;
        if (GetCapture() == hwnd_) ReleaseCapture();
    }
    if (button == kLeft && dragged_) {
        // A drag of the window ends in no click.
        dragged_ = false;
        return;
    }
    if (!c || !window_) return;
    ui::Toolkit& tk = frontEnd_.toolkit();
    tk.mouseUp(*c);
    if (button != kLeft || !window_) return;
    if (view::controlAt(*window_, logicalPoint(lp), view::clientSizeOf(*window_)) == c) {
        tk.click(*c);
    }
}

void NativeWindow::onMouseMove(LPARAM lp, WPARAM keys) {
    if (!window_) return;
    const int buttons = buttonsOf(keys);
    if (dragged_ && (buttons & kLeft)) return;
    ui::Control* over = view::controlAt(*window_, logicalPoint(lp), view::clientSizeOf(*window_));
    tipFor(over);
    // While a button is down, moves go to what it went down on.
    ui::Control* target = over;
    if (buttons && (pressed_ || pressedWindow_)) target = pressed_;
    ui::Toolkit& tk = frontEnd_.toolkit();
    if (target) {
        tk.mouseMove(*target, buttons);
    } else {
        tk.windowMouseMove(*window_, buttons);
    }
}

}  // namespace zd::win32
