// The game on the Win32 front end, assembled in this process: its windows
// read back through Win32, input sent as the system sends it, and the pixels
// read back from the window after painting.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <functional>
#include <memory>
#include <vector>

#include <windows.h>

#include <gtest/gtest.h>

#include "front/win32/NativeWindow.h"
#include "front/win32/Win32FrontEnd.h"
#include "front/win32/Win32Program.h"
#include "game/Start.h"
#include "ui/view/Placement.h"

namespace {

using zd::win32::Win32FrontEnd;
using zd::win32::Win32Program;

// Notes the moments at which the human player's die shows another picture.
class Watching : public Win32FrontEnd {
public:
    Watching(zd::ui::Toolkit& tk, zd::win32::Win32Loop& loop, zd::Program& p)
        : Win32FrontEnd(tk, loop), p_(p) {}

    void settled() override {
        Win32FrontEnd::settled();
        const zd::ui::Window* field = p_.tk.loaded("frmSpielfeld");
        if (!field) return;
        const zd::ui::PictureData* now = p_.frmSpielfeld().imgWurf[0].picture.get();
        if (now != shown_) {
            shown_ = now;
            frames.push_back(p_.tk.loop().now());
        }
    }

    std::vector<std::int64_t> frames;

private:
    zd::Program& p_;
    const zd::ui::PictureData* shown_ = nullptr;
};

std::wstring menuText(HMENU menu, UINT position) {
    wchar_t text[128] = {};
    GetMenuStringW(menu, position, text, 128, MF_BYPOSITION);
    return text;
}

INPUT mouse(DWORD flags) {
    INPUT in{};
    in.type = INPUT_MOUSE;
    in.mi.dwFlags = flags;
    return in;
}

// The test's steps run on a fiber of their own, the program's loop on the
// thread's first: a step that waits hands the thread back to the loop, which
// resumes the steps, at whatever depth of modal shows it stands, once what
// they wait for holds. So a test can go on while a modal window is up, as a
// user does.
class FrontEnd : public ::testing::Test {
protected:
    void SetUp() override {
        program_ = std::make_unique<Win32Program>();
        frontEnd_ = std::make_unique<Watching>(program_->p.tk, program_->loop, program_->p);
        program_->p.tk.dispatch([this] { zd::Main(program_->p); });
        ASSERT_TRUE(field() && IsWindowVisible(field()));
    }

    void TearDown() override {
        frontEnd_.reset();
        program_.reset();
    }

    // Runs `steps` with the program's events going on whenever they wait.
    void play(std::function<void()> steps) {
        // The thread becomes a fiber once, for all tests.
        static void* const thread = ConvertThreadToFiber(nullptr);
        main_ = thread;
        steps_ = CreateFiber(
            0,
            [](void* self) {
                auto* test = static_cast<FrontEnd*>(self);
                test->body_();
                test->done_ = true;
                SwitchToFiber(test->main_);
            },
            this);
        body_ = std::move(steps);
        // A timer procedure is called from any loop that dispatches, the
        // system's own (a window being dragged) too.
        current_ = this;
        tick_ = SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR, DWORD) {
            FrontEnd* test = current_;
            if (test->waiting_ &&
                (test->waiting_() || std::chrono::steady_clock::now() > test->deadline_)) {
                test->waiting_ = nullptr;
                SwitchToFiber(test->steps_);
            }
        });
        SwitchToFiber(steps_);
        program_->loop.run([this] { return done_; });
        KillTimer(nullptr, tick_);
        DeleteFiber(steps_);
    }

    zd::Program& p() { return program_->p; }
    HWND hwnd(const zd::ui::Window& w) const { return frontEnd_->hwndFor(w); }
    HWND field() const {
        const zd::ui::Window* w = program_->p.tk.loaded("frmSpielfeld");
        return w ? hwnd(*w) : nullptr;
    }
    double scale() const { return GetDpiForWindow(field()) / 96.0; }

    // From the steps: lets the program run, real time passing, until `done`
    // holds or `ms` have passed.
    bool pumpUntil(std::function<bool()> done, int ms = 5000) {
        deadline_ = std::chrono::steady_clock::now() + std::chrono::milliseconds(ms);
        waiting_ = done;
        SwitchToFiber(main_);
        return done();
    }
    void pump(int ms) {
        pumpUntil([] { return false; }, ms);
    }

    // The middle of a control on the screen, in physical pixels.
    POINT onScreen(const zd::ui::Control& c, zd::view::Point offset = {}) {
        const zd::ui::Window& w = c.window();
        const zd::view::Placement place = zd::view::placementOf(c, zd::view::clientSizeOf(w));
        return onScreen(w, zd::view::Point{place.rect.left + place.rect.width / 2,
                                           place.rect.top + place.rect.height / 2} +
                               offset);
    }
    POINT onScreen(const zd::ui::Window& w, zd::view::Point logical) {
        const double s = GetDpiForWindow(hwnd(w)) / 96.0;
        POINT at{static_cast<LONG>(std::lround((logical.x + 0.5) * s)),
                 static_cast<LONG>(std::lround((logical.y + 0.5) * s))};
        ClientToScreen(hwnd(w), &at);
        return at;
    }

    // The field's pixels in `r` (physical pixels of its client area), read
    // back from the window after painting, as 0xAARRGGBB.
    std::vector<std::uint32_t> shown(const zd::view::Rect& r) {
        RedrawWindow(field(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        HDC window = GetDC(field());
        HDC memory = CreateCompatibleDC(window);
        BITMAPINFO info{};
        info.bmiHeader = {
            sizeof(BITMAPINFOHEADER), r.width, -r.height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        void* bits = nullptr;
        HBITMAP copy = CreateDIBSection(memory, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        HGDIOBJ old = SelectObject(memory, copy);
        BitBlt(memory, 0, 0, r.width, r.height, window, r.left, r.top, SRCCOPY);
        GdiFlush();
        const auto* first = static_cast<const std::uint32_t*>(bits);
        std::vector<std::uint32_t> pixels(first,
                                          first + static_cast<std::size_t>(r.width) * r.height);
        SelectObject(memory, old);
        DeleteObject(copy);
        DeleteDC(memory);
        ReleaseDC(field(), window);
        return pixels;
    }

    void press(WORD vk) {
        INPUT key[2]{};
        key[0].type = key[1].type = INPUT_KEYBOARD;
        key[0].ki.wVk = key[1].ki.wVk = vk;
        key[1].ki.dwFlags = KEYEVENTF_KEYUP;
        SendInput(2, key, sizeof(INPUT));
    }

    void click(POINT at) {
        SetCursorPos(at.x, at.y);
        pump(50);
        INPUT in[2] = {mouse(MOUSEEVENTF_LEFTDOWN), mouse(MOUSEEVENTF_LEFTUP)};
        SendInput(2, in, sizeof(INPUT));
    }

    std::unique_ptr<Win32Program> program_;
    std::unique_ptr<Watching> frontEnd_;

private:
    static inline FrontEnd* current_ = nullptr;
    void* main_ = nullptr;
    void* steps_ = nullptr;
    std::function<void()> body_;
    bool done_ = false;
    UINT_PTR tick_ = 0;
    std::function<bool()> waiting_;
    std::chrono::steady_clock::time_point deadline_;
};

TEST_F(FrontEnd, FieldHasItsClientSizeMenusAndHandCursor) {
    play([&] {
        // At the display's scale (the test's prefix sets it), the client area
        // of the design's size.
        HDC screen = GetDC(nullptr);
        EXPECT_EQ(static_cast<int>(GetDpiForWindow(field())), GetDeviceCaps(screen, LOGPIXELSX));
        ReleaseDC(nullptr, screen);
        RECT client;
        GetClientRect(field(), &client);
        EXPECT_EQ(client.right, std::lround(784 * scale()));
        EXPECT_EQ(client.bottom, std::lround(450 * scale()));

        HMENU bar = GetMenu(field());
        ASSERT_NE(bar, nullptr);
        EXPECT_EQ(menuText(bar, 0), L"&Spiel               ");
        EXPECT_EQ(menuText(bar, 2), L"&Informationen");
        HMENU spiel = GetSubMenu(bar, 0);
        EXPECT_EQ(menuText(spiel, 0), L"&Neues Spiel");
        EXPECT_EQ(menuText(spiel, 2), L"b&eenden\tStrg+E");
        EXPECT_EQ(menuText(GetSubMenu(bar, 2), 0), L"&Spielanleitung\tF1");
        HMENU sound = GetSubMenu(GetSubMenu(bar, 1), 0);
        EXPECT_TRUE(GetMenuState(sound, 0, MF_BYPOSITION) & MF_CHECKED);
        EXPECT_FALSE(GetMenuState(sound, 1, MF_BYPOSITION) & MF_CHECKED);

        // Over the button Neues Spiel the hand, beside it the arrow.
        const auto cursorAt = [this](POINT at) {
            SetCursorPos(at.x, at.y);
            pump(100);
            CURSORINFO info{};
            info.cbSize = sizeof(info);
            GetCursorInfo(&info);
            return info.hCursor;
        };
        EXPECT_EQ(cursorAt(onScreen(p().frmSpielfeld().imgNeu)),
                  frontEnd_->handCursor(GetDpiForWindow(field())));
        EXPECT_EQ(cursorAt(onScreen(p().frmSpielfeld(), zd::view::Point{460, 300})),
                  LoadCursorA(nullptr, IDC_ARROW));
    });
}

TEST_F(FrontEnd, ClicksStartAGameAndThrowInThirtyMillisecondFrames) {
    play([&] {
        auto& f = p().frmSpielfeld();
        click(onScreen(f.imgNeu));
        ASSERT_TRUE(pumpUntil([&] { return f.imgWuerfeln.Visible; }));
        pump(200);
        frontEnd_->frames.clear();
        click(onScreen(f.imgWuerfeln));
        ASSERT_TRUE(pumpUntil([&] { return f.lblInfo.Caption == "Treffe eine Auswahl"; }, 3000));

        // The spin's frames 30 ms apart, for 700 ms: a coarse system tick would
        // make them 31 or 47 ms, and the spin shorter or longer in frames.
        const auto& t = frontEnd_->frames;
        ASSERT_GE(t.size(), 15u);
        std::vector<std::int64_t> gaps;
        for (std::size_t i = 1; i + 1 < t.size(); ++i) gaps.push_back(t[i] - t[i - 1]);
        std::sort(gaps.begin(), gaps.end());
        const std::int64_t median = gaps[gaps.size() / 2];
        EXPECT_GE(median, 28);
        EXPECT_LE(median, 36);
        EXPECT_GE(t.back() - t.front(), 650);
    });
}

TEST_F(FrontEnd, MessageWindowIsDraggedAndAnsweredByKeyWhileTimersFire) {
    play([&] {
        auto& f = p().frmSpielfeld();
        click(onScreen(f.lblAllgemein));
        ASSERT_TRUE(pumpUntil([&] {
            const zd::ui::Window* m = p().tk.loaded("frmMsgOk");
            return m && hwnd(*m) && IsWindowVisible(hwnd(*m));
        }));
        pump(200);
        const zd::ui::Window& message = *p().tk.loaded("frmMsgOk");
        const HWND msg = hwnd(message);
        EXPECT_EQ(GetActiveWindow(), msg);
        EXPECT_FALSE(IsWindowEnabled(field()));

        // Dragged by its free surface, by the system's move of a caption.
        const zd::view::Point free{20, 20};
        ASSERT_EQ(zd::view::controlAt(message, free, zd::view::clientSizeOf(message)), nullptr);
        RECT before;
        GetWindowRect(msg, &before);
        const POINT from = onScreen(message, free);
        SetCursorPos(from.x, from.y);
        pump(50);
        INPUT down = mouse(MOUSEEVENTF_LEFTDOWN);
        SendInput(1, &down, sizeof(INPUT));
        for (int step = 1; step <= 5; ++step) {
            pump(40);
            SetCursorPos(from.x + 8 * step, from.y + 5 * step);
        }
        pump(40);
        INPUT up = mouse(MOUSEEVENTF_LEFTUP);
        SendInput(1, &up, sizeof(INPUT));
        pump(300);
        RECT after;
        GetWindowRect(msg, &after);
        // The first move with the button down starts the drag, and the
        // window follows the moves after it: four or five of the steps.
        EXPECT_GE(after.left - before.left, 32);
        EXPECT_LE(after.left - before.left, 40);
        EXPECT_GE(after.top - before.top, 20);
        EXPECT_LE(after.top - before.top, 25);

        // The arrow beside Neues Spiel blinks on behind the message.
        const zd::ui::PictureData* blink = f.imgStart.picture.get();
        EXPECT_TRUE(pumpUntil([&] { return f.imgStart.picture.get() != blink; }, 1500));

        press(VK_ESCAPE);
        EXPECT_TRUE(pumpUntil([&] { return !p().tk.loaded("frmMsgOk"); }));
        EXPECT_TRUE(IsWindowEnabled(field()));
    });
}

TEST_F(FrontEnd, PaintsTheArtRenderedForTheScreensScale) {
    play([&] {
        pump(300);
        const zd::ui::Image& die = p().frmSpielfeld().imgWurf[1];
        const double s = scale();
        const zd::view::Rect r = zd::view::scaled(
            zd::view::placementOf(die, zd::view::clientSizeOf(p().frmSpielfeld())).rect, s);
        const int w = static_cast<int>(std::lround(69 * s));
        const int h = static_cast<int>(std::lround(66 * s));
        const zd::win32::Bitmap* art = frontEnd_->art().picture(*die.picture, w, h);
        ASSERT_NE(art, nullptr);

        // The window's pixels where the die stands, read back from the screen.
        const std::vector<std::uint32_t> pixels = shown(zd::view::Rect{r.left, r.top, w, h});
        const std::uint32_t* shownPixels = pixels.data();

        // Where the art is opaque the window shows exactly the art.
        int opaque = 0;
        int differing = 0;
        for (int i = 0; i < w * h; ++i) {
            const std::uint32_t a = art->pixels[static_cast<std::size_t>(i)];
            if ((a >> 24) != 255) continue;
            ++opaque;
            for (int shift : {0, 8, 16}) {
                if (std::abs(static_cast<int>((a >> shift) & 0xff) -
                             static_cast<int>((shownPixels[i] >> shift) & 0xff)) > 2) {
                    ++differing;
                    break;
                }
            }
        }
        EXPECT_GT(opaque, w * h / 2);
        EXPECT_LE(differing, opaque / 100);
    });
}

TEST_F(FrontEnd, KeysAlonePlayAndTheFocusIsMarkedOnlyOnceTheyAreUsed) {
    play([&] {
        auto& f = p().frmSpielfeld();
        pump(300);
        const double s = scale();
        const zd::view::Size client = zd::view::clientSizeOf(f);
        // The mark's light outer edge round a control, top left.
        const auto markCorner = [&](const zd::ui::Control& c) {
            const zd::view::Rect r =
                zd::view::scaled(zd::view::placementOf(c, client).rect.adjusted(
                                     -zd::view::kMarkGap, -zd::view::kMarkGap, 0, 0),
                                 s);
            return shown(zd::view::Rect{r.left, r.top, 1, 1}).front() & 0xffffff;
        };
        EXPECT_NE(markCorner(f.imgNeu), 0xffffffu);

        // Space presses Neues Spiel; the focus goes to Würfeln, marked.
        press(VK_SPACE);
        ASSERT_TRUE(pumpUntil([&] { return f.imgWuerfeln.Visible; }));
        pump(100);
        EXPECT_EQ(f.activeControl(), &f.imgWuerfeln);
        EXPECT_EQ(markCorner(f.imgWuerfeln), 0xffffffu);

        // Return throws, and the first free place has the focus.
        press(VK_RETURN);
        ASSERT_TRUE(pumpUntil([&] { return f.imgAuswahl[3].Visible; }, 3000));
        pump(100);
        EXPECT_EQ(f.activeControl(), &f.imgAuswahl[3]);
    });
}

}  // namespace
