// The game on the Win32 front end, from the start of the process to the
// first painted playing field, and then the spin of the human player's die.
//   wine win32_start_probe.exe            ends once the field is painted
//   wine win32_start_probe.exe spins N    then N throws: the spin frames'
//                                         intervals, median and p95, in ms
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <windows.h>

#include "front/win32/Win32FrontEnd.h"
#include "front/win32/Win32Program.h"
#include "game/Start.h"

namespace {

class Watching : public zd::win32::Win32FrontEnd {
public:
    Watching(zd::win32::Win32Program& program)
        : Win32FrontEnd(program.p.tk, program.loop), p_(program.p) {}

    void settled() override {
        Win32FrontEnd::settled();
        if (!p_.tk.loaded("frmSpielfeld")) return;
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

}  // namespace

int main(int argc, char* argv[]) {
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    zd::win32::Win32Program program;
    Watching frontEnd(program);
    zd::Program& p = program.p;
    p.tk.dispatch([&p] { zd::Main(p); });
    HWND field = frontEnd.hwndFor(p.frmSpielfeld());
    UpdateWindow(field);
    if (argc < 3 || std::string(argv[1]) != "spins") ExitProcess(0);

    const int throws = std::atoi(argv[2]);
    const auto waitFor = [&](auto done) {
        const UINT_PTR tick = SetTimer(nullptr, 0, 10, nullptr);
        program.loop.run(done);
        KillTimer(nullptr, tick);
    };
    auto& f = p.frmSpielfeld();
    p.tk.click(f.imgNeu);
    std::vector<std::int64_t> gaps;
    for (int i = 0; i < throws && !p.tk.ended(); ++i) {
        waitFor([&] { return f.imgWuerfeln.Visible || f.imgNaechsterLevel.Visible; });
        if (f.imgNaechsterLevel.Visible) {
            p.tk.click(f.imgNaechsterLevel);
            --i;
            continue;
        }
        frontEnd.frames.clear();
        p.tk.click(f.imgWuerfeln);
        waitFor([&] { return !f.timDrehen.running(); });
        const auto& t = frontEnd.frames;
        // The last change is the thrown die, not a spin frame.
        for (std::size_t k = 1; k + 1 < t.size(); ++k) gaps.push_back(t[k] - t[k - 1]);
        std::printf("throw %d: %zu pictures over %lld ms\n", i + 1, t.size(),
                    static_cast<long long>(t.empty() ? 0 : t.back() - t.front()));
        // Choose a free place when asked, so the round goes on.
        waitFor([&] { return !f.timZeit.running(); });
        for (int place = 1; place <= 3; ++place) {
            if (f.imgAuswahl[place].Visible) {
                p.tk.click(f.imgAuswahl[place]);
                break;
            }
        }
    }
    std::sort(gaps.begin(), gaps.end());
    if (!gaps.empty()) {
        std::printf("spin frames: %zu intervals, median %lld ms, p95 %lld ms, max %lld ms%s\n",
                    gaps.size(), static_cast<long long>(gaps[gaps.size() / 2]),
                    static_cast<long long>(gaps[gaps.size() * 95 / 100]),
                    static_cast<long long>(gaps.back()),
                    program.loop.highResolution() ? " (high-resolution timer)" : " (1 ms period)");
    }
    std::fflush(stdout);
    ExitProcess(0);
}
