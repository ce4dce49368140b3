#include "front/win32/Children.h"

#include <algorithm>

#include "front/win32/NativeWindow.h"
#include "front/win32/Text.h"
#include "front/win32/Win32FrontEnd.h"
#include "ui/model/Toolkit.h"
#include "ui/view/Placement.h"

namespace zd::win32 {

namespace {

constexpr wchar_t kChildProp[] = L"Zifferndach.Child";

DWORD alignStyle(ui::Align a) {
    switch (a) {
        case ui::Align::Center:
            return ES_CENTER;
        case ui::Align::Right:
            return ES_RIGHT;
        case ui::Align::Left:
            break;
    }
    return ES_LEFT;
}

}  // namespace

Children::Children(NativeWindow& owner, ui::Window& window) : owner_(owner) {
    for (const auto& control : window.controls()) {
        auto c = std::make_unique<Child>();
        c->control = control.get();
        if (auto* box = dynamic_cast<ui::TextBox*>(control.get())) {
            c->edit = true;
            c->hwnd = CreateWindowExW(box->border ? WS_EX_CLIENTEDGE : 0, L"EDIT", L"",
                                      WS_CHILD | ES_AUTOHSCROLL | alignStyle(box->Alignment), 0, 0,
                                      0, 0, owner.hwnd(), nullptr, nullptr, nullptr);
            SetPropW(c->hwnd, kChildProp, c.get());
            c->original = reinterpret_cast<WNDPROC>(SetWindowLongPtrW(
                c->hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Children::editProc)));
        } else if (auto* button = dynamic_cast<ui::CommandButton*>(control.get())) {
            c->hwnd = CreateWindowExW(0, L"BUTTON", wide(button->Caption).c_str(),
                                      WS_CHILD | BS_PUSHBUTTON, 0, 0, 0, 0, owner.hwnd(), nullptr,
                                      nullptr, nullptr);
        } else {
            continue;
        }
        children_.push_back(std::move(c));
    }
}

Children::~Children() {
    for (const auto& c : children_) {
        if (c->edit) RemovePropW(c->hwnd, kChildProp);
    }
}

LRESULT CALLBACK Children::editProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
    auto* c = static_cast<Child*>(GetPropW(hwnd, kChildProp));
    if (!c) return DefWindowProcW(hwnd, msg, wp, lp);
    const auto* box = static_cast<const ui::TextBox*>(c->control);
    if (box->Locked) {
        switch (msg) {
            case WM_SETFOCUS:
                // Only read: the focus stays with the window.
                SetFocus(GetParent(hwnd));
                return 0;
            case WM_LBUTTONDOWN:
            case WM_LBUTTONDBLCLK:
            case WM_RBUTTONDOWN:
            case WM_MBUTTONDOWN:
                return 0;
            default:
                break;
        }
    }
    return CallWindowProcW(c->original, hwnd, msg, wp, lp);
}

Children::Child* Children::find(HWND hwnd) {
    for (const auto& c : children_) {
        if (c->hwnd == hwnd) return c.get();
    }
    return nullptr;
}

HWND Children::handleOf(const ui::Control& control) const {
    for (const auto& c : children_) {
        if (c->control == &control) return c->hwnd;
    }
    return nullptr;
}

bool Children::isEdit(HWND hwnd) const {
    for (const auto& c : children_) {
        if (c->hwnd == hwnd) return c->edit;
    }
    return false;
}

void Children::sync(double scale) {
    const ui::Window* window = owner_.modelWindow();
    if (!window) return;
    pushing_ = true;
    const view::Size client = view::clientSizeOf(*window);
    Fonts& fonts = owner_.frontEnd().fonts();
    for (const auto& c : children_) {
        const view::Placement place = view::placementOf(*c->control, client);
        const view::Rect visible = view::intersect(place.rect, place.clip);
        const view::Rect r = view::scaled(place.rect, scale);
        const RECT rect{r.left, r.top, r.right(), r.bottom()};
        if (!EqualRect(&rect, &c->place)) {
            c->place = rect;
            SetWindowPos(c->hwnd, nullptr, r.left, r.top, r.width, r.height,
                         SWP_NOZORDER | SWP_NOACTIVATE);
        }
        HFONT font = nullptr;
        if (auto* box = dynamic_cast<ui::TextBox*>(c->control)) {
            font = fonts.font(box->font, scale);
            syncEdit(*c, *box);
        } else if (auto* button = dynamic_cast<ui::CommandButton*>(c->control)) {
            font = fonts.font(ui::Font{}, scale);
            const std::string& caption = button->Caption;
            if (caption != c->text) {
                c->text = caption;
                SetWindowTextW(c->hwnd, wide(caption).c_str());
            }
        }
        if (font != c->font) {
            c->font = font;
            SendMessageW(c->hwnd, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
        }
        EnableWindow(c->hwnd, c->control->takesInput());
        const int shown = c->control->shown() && !visible.empty() ? 1 : 0;
        if (shown != c->shown) {
            c->shown = shown;
            ShowWindow(c->hwnd, shown ? SW_SHOWNA : SW_HIDE);
        }
    }
    // The model's focus, once this window is the one the user works in: a
    // text box takes the keys itself; any other focus leaves them with the
    // window, whose buttons are drawn, not Windows' own.
    const auto* box = dynamic_cast<const ui::TextBox*>(window->activeControl());
    const ui::TextBox* focus = box && !box->Locked ? box : nullptr;
    if (focus != lastFocus_ && GetActiveWindow() == owner_.hwnd()) {
        lastFocus_ = focus;
        HWND edit = focus ? handleOf(*focus) : nullptr;
        SetFocus(edit ? edit : owner_.hwnd());
    }
    pushing_ = false;
}

void Children::syncEdit(Child& c, ui::TextBox& box) {
    const int locked = box.Locked ? 1 : 0;
    if (locked != c.locked) {
        c.locked = locked;
        SendMessageW(c.hwnd, EM_SETREADONLY, box.Locked, 0);
        if (box.Locked && GetFocus() == c.hwnd) SetFocus(owner_.hwnd());
    }
    const bool textChanged = box.Text != c.text;
    if (textChanged) {
        c.text = box.Text;
        SetWindowTextW(c.hwnd, wide(box.Text).c_str());
    }
    if (textChanged || box.SelStart != c.selStart || box.SelLength != c.selLength) {
        c.selStart = box.SelStart;
        c.selLength = box.SelLength;
        const int length = GetWindowTextLengthW(c.hwnd);
        const int start = std::clamp(box.SelStart, 0, length);
        const int selected = std::clamp(box.SelLength, 0, length - start);
        SendMessageW(c.hwnd, EM_SETSEL, static_cast<WPARAM>(start),
                     static_cast<LPARAM>(start + selected));
    }
}

bool Children::command(HWND child, WORD code) {
    Child* c = find(child);
    if (!c) return false;
    if (pushing_) return true;
    ui::Toolkit& tk = owner_.frontEnd().toolkit();
    if (!c->edit) {
        if (code == BN_CLICKED) tk.click(*c->control);
        return true;
    }
    auto& box = static_cast<ui::TextBox&>(*c->control);
    if (code == EN_CHANGE) {
        typed(*c, box);
    } else if (code == EN_SETFOCUS) {
        if (tk.focused(box)) lastFocus_ = &box;
    }
    return true;
}

void Children::typed(Child& c, ui::TextBox& box) {
    const int length = GetWindowTextLengthW(c.hwnd);
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    GetWindowTextW(c.hwnd, text.data(), length + 1);
    text.resize(static_cast<std::size_t>(length));
    const HWND hwnd = c.hwnd;
    const bool taken = owner_.frontEnd().toolkit().type(box, utf8(text));
    if (!owner_.modelWindow() || !IsWindow(hwnd)) return;
    if (!taken) {
        pushing_ = true;
        SetWindowTextW(hwnd, wide(box.Text).c_str());
        pushing_ = false;
    }
    c.text = box.Text;
    selectionFromEdit(c, box);
}

void Children::selectionFromEdit(Child& c, ui::TextBox& box) {
    DWORD start = 0;
    DWORD end = 0;
    SendMessageW(c.hwnd, EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                 reinterpret_cast<LPARAM>(&end));
    owner_.frontEnd().toolkit().selected(box, static_cast<int>(start),
                                         static_cast<int>(end - start));
    c.selStart = box.SelStart;
    c.selLength = box.SelLength;
}

}  // namespace zd::win32
