#include "front/win32/Win32FrontEnd.h"

#include <algorithm>
#include <cmath>

#include "front/win32/Children.h"
#include "front/win32/Guard.h"
#include "front/win32/NativeWindow.h"
#include "ui/view/Scene.h"

namespace zd::win32 {

namespace {

constexpr UINT kCheckActivation = WM_APP + 1;

// The key codes the windows' handlers expect: upper-case letters whatever
// the shift state, digits, and the named keys of the game and of keyboard
// play.
int keyCode(WPARAM vk) {
    if ((vk >= 'A' && vk <= 'Z') || (vk >= '0' && vk <= '9')) return static_cast<int>(vk);
    if (vk >= VK_F1 && vk <= VK_F12) return ui::kKeyF1 + static_cast<int>(vk - VK_F1);
    switch (vk) {
        case VK_ESCAPE:
            return ui::kKeyEscape;
        case VK_RETURN:
            return ui::kKeyReturn;
        case VK_TAB:
            return ui::kKeyTab;
        case VK_SPACE:
            return ui::kKeySpace;
        case VK_LEFT:
            return ui::kKeyLeft;
        case VK_RIGHT:
            return ui::kKeyRight;
        default:
            return 0;
    }
}

bool isFunctionKey(int code) {
    return code >= ui::kKeyF1 && code <= ui::kKeyF12;
}

bool isLetterOrDigit(int code) {
    return (code >= 'A' && code <= 'Z') || (code >= '0' && code <= '9');
}

std::string keyName(int code) {
    if (isFunctionKey(code)) return "F" + std::to_string(code - ui::kKeyF1 + 1);
    return std::string(1, static_cast<char>(code));
}

LRESULT CALLBACK messageProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    if (msg == kCheckActivation) {
        auto* frontEnd = reinterpret_cast<Win32FrontEnd*>(lp);
        guarded([frontEnd] { frontEnd->checkActivation(); });
        return 0;
    }
    return DefWindowProcW(hwnd, msg, wp, lp);
}

// A cursor from a picture with straight alpha, as cursors take it.
HCURSOR cursorFrom(const Bitmap& picture, POINT hotSpot) {
    BITMAPV5HEADER header{};
    header.bV5Size = sizeof(header);
    header.bV5Width = picture.width;
    header.bV5Height = -picture.height;
    header.bV5Planes = 1;
    header.bV5BitCount = 32;
    header.bV5Compression = BI_BITFIELDS;
    header.bV5RedMask = 0x00ff0000;
    header.bV5GreenMask = 0x0000ff00;
    header.bV5BlueMask = 0x000000ff;
    header.bV5AlphaMask = 0xff000000;
    void* bits = nullptr;
    HDC screen = GetDC(nullptr);
    HBITMAP color = CreateDIBSection(screen, reinterpret_cast<BITMAPINFO*>(&header), DIB_RGB_COLORS,
                                     &bits, nullptr, 0);
    ReleaseDC(nullptr, screen);
    if (!color) return nullptr;
    auto* out = static_cast<std::uint32_t*>(bits);
    for (std::size_t i = 0; i < picture.pixels.size(); ++i) {
        const std::uint32_t p = picture.pixels[i];
        const std::uint32_t a = p >> 24;
        const auto straight = [&](int shift) {
            const std::uint32_t v = (p >> shift) & 0xff;
            return (a == 0 ? 0 : std::min<std::uint32_t>(255, (v * 255 + a / 2) / a)) << shift;
        };
        out[i] = (a << 24) | straight(16) | straight(8) | straight(0);
    }
    HBITMAP mask = CreateBitmap(picture.width, picture.height, 1, 1, nullptr);
    ICONINFO info{FALSE, static_cast<DWORD>(hotSpot.x), static_cast<DWORD>(hotSpot.y), mask, color};
    HCURSOR cursor = CreateIconIndirect(&info);
    DeleteObject(mask);
    DeleteObject(color);
    return cursor;
}

}  // namespace

Win32FrontEnd::Win32FrontEnd(ui::Toolkit& toolkit, Win32Loop& loop) : tk_(toolkit), loop_(loop) {
    systemScale_ = GetDpiForSystem() / 96.0;
    tk_.setFrontEnd(this);
    loop_.filter = [this](const MSG& msg) {
        bool taken = false;
        guarded([&] { taken = key(msg); });
        return taken;
    };
    WNDCLASSEXW wc{};
    wc.cbSize = sizeof(wc);
    wc.lpfnWndProc = messageProc;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.lpszClassName = L"Zifferndach.Messages";
    RegisterClassExW(&wc);
    messages_ = CreateWindowExW(0, wc.lpszClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                wc.hInstance, nullptr);
    hiddenOwner_ = CreateWindowExW(0, wc.lpszClassName, L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                                   wc.hInstance, nullptr);
}

Win32FrontEnd::~Win32FrontEnd() {
    tk_.setFrontEnd(nullptr);
    loop_.filter = nullptr;
    windows_.clear();
    gone_.clear();
    for (auto& [dpi, cursor] : handCursors_) DestroyCursor(cursor);
    DestroyWindow(hiddenOwner_);
    DestroyWindow(messages_);
}

NativeWindow* Win32FrontEnd::nativeFor(const ui::Window& w) const {
    auto it = windows_.find(&w);
    return it == windows_.end() ? nullptr : it->second.get();
}

HWND Win32FrontEnd::hwndFor(const ui::Window& w) const {
    const NativeWindow* native = nativeFor(w);
    return native ? native->hwnd() : nullptr;
}

void Win32FrontEnd::sync() {
    resync_.run([this] { syncOnce(); });
}

void Win32FrontEnd::reap() {
    gone_.erase(std::remove_if(gone_.begin(), gone_.end(),
                               [](const std::unique_ptr<NativeWindow>& n) { return !n->busy(); }),
                gone_.end());
}

void Win32FrontEnd::dropWindow(const ui::Window* w) {
    auto it = windows_.find(w);
    if (it == windows_.end()) return;
    std::unique_ptr<NativeWindow> native = std::move(it->second);
    windows_.erase(it);
    appliedEnabled_.erase(w);
    if (appliedActive_ == w) appliedActive_ = nullptr;
    appliedStacking_.erase(std::remove(appliedStacking_.begin(), appliedStacking_.end(), w),
                           appliedStacking_.end());
    native->detach();
    // Its own message may be below us on the stack.
    gone_.push_back(std::move(native));
}

void Win32FrontEnd::syncOnce() {
    if (tk_.ended()) return;
    reap();
    const std::vector<ui::Window*> stacking = tk_.stacking();

    std::vector<const ui::Window*> hidden;
    for (const auto& [window, native] : windows_) {
        if (std::find(stacking.begin(), stacking.end(), window) == stacking.end()) {
            hidden.push_back(window);
        }
    }
    for (const ui::Window* w : hidden) dropWindow(w);

    bool created = false;
    for (ui::Window* w : stacking) {
        std::unique_ptr<NativeWindow>& slot = windows_[w];
        if (!slot) {
            slot = std::make_unique<NativeWindow>(*this, *w);
            slot->syncFromModel();
            ShowWindow(slot->hwnd(), SW_SHOWNOACTIVATE);
            created = true;
        } else {
            slot->syncFromModel();
        }
    }

    bool restored = false;
    for (const ui::Window* w : toFront_) {
        const HWND hwnd = hwndFor(*w);
        if (hwnd && IsIconic(hwnd)) {
            ShowWindow(hwnd, SW_RESTORE);
            restored = true;
        }
    }
    toFront_.clear();

    // What a modal window blocks takes no input.
    for (ui::Window* w : stacking) {
        const bool enabled = tk_.reachable(*w);
        auto applied = appliedEnabled_.find(w);
        if (applied != appliedEnabled_.end() && applied->second == enabled) continue;
        appliedEnabled_[w] = enabled;
        EnableWindow(hwndFor(*w), enabled);
    }

    if (created || restored || stacking != appliedStacking_) {
        for (ui::Window* w : stacking) {
            SetWindowPos(hwndFor(*w), HWND_TOP, 0, 0, 0, 0,
                         SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        }
        appliedStacking_ = stacking;
    }

    ui::Window* active = tk_.activeWindow();
    if (active != appliedActive_ || created || restored) {
        appliedActive_ = active;
        if (const HWND hwnd = active ? hwndFor(*active) : nullptr) {
            SetForegroundWindow(hwnd);
            SetActiveWindow(hwnd);
        }
    }
}

void Win32FrontEnd::broughtToFront(ui::Window& w) {
    toFront_.insert(&w);
}

void Win32FrontEnd::windowGone(ui::Window& w) {
    toFront_.erase(&w);
    dropWindow(&w);
}

void Win32FrontEnd::dragWindow(ui::Window& w) {
    NativeWindow* native = nativeFor(w);
    if (!native || GetKeyState(VK_LBUTTON) >= 0) return;
    native->dragStarted();
    // As a caption is dragged: the system moves the window with the mouse
    // until the button is released, and returns then.
    ReleaseCapture();
    SendMessageA(native->hwnd(), WM_NCLBUTTONDOWN, HTCAPTION, 0);
}

void Win32FrontEnd::programEnded() {
    std::vector<const ui::Window*> all;
    for (const auto& entry : windows_) all.push_back(entry.first);
    for (const ui::Window* w : all) dropWindow(w);
}

void Win32FrontEnd::activatedBySystem() {
    if (resync_.running() || activationCheckQueued_) return;
    activationCheckQueued_ = true;
    // Looked at once the system has finished its round of changes.
    PostMessageW(messages_, kCheckActivation, 0, reinterpret_cast<LPARAM>(this));
}

void Win32FrontEnd::checkActivation() {
    activationCheckQueued_ = false;
    if (tk_.ended()) return;
    const HWND activeHwnd = GetActiveWindow();
    ui::Window* w = nullptr;
    for (const auto& [window, native] : windows_) {
        if (native->hwnd() == activeHwnd) w = const_cast<ui::Window*>(window);
    }
    if (!w) return;
    // Refused while a modal window is up; then the sync below puts the
    // model's active window back in front.
    if (w != tk_.activeWindow()) tk_.userActivated(*w);
    appliedStacking_.clear();
    appliedActive_ = w == tk_.activeWindow() ? w : nullptr;
    sync();
}

HCURSOR Win32FrontEnd::handCursor(UINT dpi) {
    auto it = handCursors_.find(dpi);
    if (it != handCursors_.end()) return it->second;
    const double s = dpi / 96.0;
    const int size = static_cast<int>(std::lround(32 * s));
    const Bitmap* picture =
        art_.picture(view::kHandCursor.sheet, view::kHandCursor.element, 32, 32, size, size);
    // The hot spot counts the picture's own pixels: it stays on the fingertip.
    const POINT tip{static_cast<LONG>(std::lround(view::kHandCursor.hotSpot.x * s)),
                    static_cast<LONG>(std::lround(view::kHandCursor.hotSpot.y * s))};
    HCURSOR cursor = picture ? cursorFrom(*picture, tip) : nullptr;
    if (!cursor) cursor = CopyCursor(LoadCursorA(nullptr, IDC_HAND));
    return handCursors_.emplace(dpi, cursor).first->second;
}

bool Win32FrontEnd::key(const MSG& msg) {
    if (msg.message != WM_KEYDOWN && msg.message != WM_SYSKEYDOWN) return false;
    const HWND root = GetAncestor(msg.hwnd, GA_ROOT);
    const NativeWindow* native = nullptr;
    for (const auto& [window, n] : windows_) {
        if (n->hwnd() == root && n->modelWindow()) native = n.get();
    }
    if (!native) return false;
    ui::Window& w = *native->modelWindow();
    const int code = keyCode(msg.wParam);
    if (code == 0) return false;
    const bool alt = msg.message == WM_SYSKEYDOWN && (msg.lParam & (1 << 29));
    const bool ctrl = GetKeyState(VK_CONTROL) < 0;
    if (alt) {
        // Alt with a letter or digit presses a button with that access key,
        // or else is the window's own key; the system opens the menu of a
        // letter no button takes, and does what it does with the rest.
        return isLetterOrDigit(code) && tk_.shortcut("Alt+" + keyName(code));
    }
    if (ctrl) return isLetterOrDigit(code) && tk_.shortcut("Ctrl+" + keyName(code));
    if (isFunctionKey(code)) return tk_.shortcut(keyName(code));
    // In a text box letters, digits, blanks and the arrows are typing; Tab
    // leaves it, and Esc and Return are the window's.
    const bool inEdit = msg.hwnd != root && native->children().isEdit(msg.hwnd);
    if (inEdit && code != ui::kKeyTab && code != ui::kKeyEscape && code != ui::kKeyReturn) {
        return false;
    }
    if (!ui::Toolkit::takesKey(w, code)) return false;
    tk_.keyDown(w, code, GetKeyState(VK_SHIFT) < 0);
    return true;
}

}  // namespace zd::win32
