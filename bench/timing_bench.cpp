// Timing of the real Qt program: plays rounds with a fixed die and records
// when every spin frame and every end of a spin happens, then reports the
// median and 95th percentile against the targets (30 ms a frame, 700 ms for
// the player's spin, 500 ms for a computer player's). Last, the CPU used
// while the start arrow blinks alone for 10 s, once the windows are painted.
//   QT_QPA_PLATFORM=offscreen timing_bench [ROUNDS]
#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include <sys/resource.h>

#include "front/qt/Guard.h"
#include "front/qt/QtFrontEnd.h"
#include "front/qt/QtProgram.h"

namespace {

struct Stats {
    double median = 0, p95 = 0;
    std::size_t n = 0;
};

Stats stats(std::vector<double> v) {
    Stats s;
    s.n = v.size();
    if (v.empty()) return s;
    std::sort(v.begin(), v.end());
    s.median = v[v.size() / 2];
    s.p95 = v[std::min(v.size() - 1, v.size() * 95 / 100)];
    return s;
}

void report(const char* what, const std::vector<double>& v, double target) {
    const Stats s = stats(v);
    std::printf("%-26s n=%5zu  median %7.2f ms  p95 %7.2f ms  target %5.0f ms\n", what, s.n,
                s.median, s.p95, target);
}

double cpuMs() {
    rusage u{};
    getrusage(RUSAGE_SELF, &u);
    return (u.ru_utime.tv_sec + u.ru_stime.tv_sec) * 1e3 +
           (u.ru_utime.tv_usec + u.ru_stime.tv_usec) / 1e3;
}

}  // namespace

int main(int argc, char* argv[]) {
    const int rounds = argc > 1 ? std::atoi(argv[1]) : 3;
    qputenv("XDG_DATA_HOME", QByteArray("/tmp/zd-timing-bench"));
    QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    zd::qt::guarded([&] {
        zd::qt::QtProgram program;
        zd::Program& p = program.p;
        p.die.fixed = [] { return 3; };  // ties only: the game never ends
        program.start();
        zd::ui::FrmSpielfeld& f = p.frmSpielfeld();

        // The start arrow alone, for 10 s after a first second in which the
        // windows are painted for the first time.
        const double cpuAtStart = cpuMs();
        double cpuBefore = 0;
        QElapsedTimer wall;
        QTimer::singleShot(1000, Qt::PreciseTimer, [&] {
            cpuBefore = cpuMs();
            wall.start();
            QTimer::singleShot(10000, Qt::PreciseTimer, [] { QCoreApplication::exit(0); });
        });
        QApplication::exec();
        const double firstSecondCpu = cpuBefore - cpuAtStart;
        const double blinkCpu = cpuMs() - cpuBefore;
        const double blinkWall = static_cast<double>(wall.elapsed());

        // Every frame and every end of a spin, stamped as it happens.
        QElapsedTimer clock;
        clock.start();
        std::vector<double> frames, playerSpins, computerSpins;
        double lastFrame = -1, spinStarted = -1;
        auto stamp = [&clock] { return static_cast<double>(clock.nsecsElapsed()) / 1e6; };
        auto frame = [&](const std::function<void()>& original) {
            return [&, original] {
                const double t = stamp();
                if (lastFrame >= 0) frames.push_back(t - lastFrame);
                lastFrame = t;
                original();
            };
        };
        f.timDrehen.TimerEvent = frame(f.timDrehen.TimerEvent);
        f.timComputerDrehe.TimerEvent = frame(f.timComputerDrehe.TimerEvent);
        auto spinEnd = [&](std::vector<double>& into, const std::function<void()>& original) {
            return [&, original] {
                const double t = stamp();
                into.push_back(t - spinStarted);
                spinStarted = t;  // the next spin starts in this same event
                lastFrame = -1;
                original();
            };
        };
        f.timZeit.TimerEvent = spinEnd(playerSpins, f.timZeit.TimerEvent);
        f.timComputerStopp.TimerEvent = spinEnd(computerSpins, f.timComputerStopp.TimerEvent);

        // A player who clicks the moment a button shows.
        int played = 0;
        QTimer player;
        QObject::connect(&player, &QTimer::timeout, [&] {
            if (f.imgNaechsterLevel.Visible) {
                if (++played >= rounds) {
                    QCoreApplication::exit(0);
                    return;
                }
                p.tk.click(f.imgNaechsterLevel);
            } else if (f.imgWuerfeln.Visible) {
                lastFrame = -1;
                spinStarted = stamp();
                p.tk.click(f.imgWuerfeln);
            } else {
                for (int i = 1; i <= 3; ++i) {
                    if (f.imgAuswahl[i].Visible) {
                        spinStarted = stamp();
                        p.tk.click(f.imgAuswahl[i]);
                        break;
                    }
                }
            }
        });
        p.tk.click(f.imgNeu);
        player.start(1);
        QApplication::exec();
        player.stop();

        std::printf("%d rounds with the Qt event loop (%s)\n", rounds,
                    qPrintable(QGuiApplication::platformName()));
        report("spin frame interval", frames, 30);
        report("player's spin", playerSpins, 700);
        report("computer player's spin", computerSpins, 500);
        std::printf("first second, the windows shown and painted: %.0f ms CPU\n", firstSecondCpu);
        std::printf("start arrow blinking alone: %.1f ms CPU in %.0f ms (%.2f %%)\n", blinkCpu,
                    blinkWall, 100.0 * blinkCpu / blinkWall);
        p.tk.dispatch([&p] { p.tk.end(); });
    });
    return 0;
}
