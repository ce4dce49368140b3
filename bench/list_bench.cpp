// The best list under hostile conditions.
//   list_bench DRIVE [KILLS]
// 1. Peak memory of the headless driver DRIVE at start, with a normal list
//    and with a 100 MB list of many lines.
// 2. KILLS kill -9 at random moments (half during repeated saves, half
//    during repeated clearing); after each, the list must be a whole old or
//    whole new one, or missing during clearing and then shown as the
//    default list by the next start.
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <random>
#include <string>
#include <thread>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "best/modBeste.h"
#include "front/drive/PlayerBot.h"

namespace {

namespace fs = std::filesystem;
using zd::drive::PlayerBot;

const std::string kDefault =
    "Niemand\r\nNiemand\r\nNiemand\r\nNiemand\r\nNiemand\r\n26\r\n24\r\n22\r\n20\r\n18\r\n";

std::string contents(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// Peak resident memory, in KiB, of the driver started on `root`.
long driverPeakKiB(const std::string& drive, const fs::path& root) {
    int script[2];
    if (pipe(script) != 0) std::exit(1);
    const pid_t child = fork();
    if (child == 0) {
        dup2(script[0], 0);
        close(script[1]);
        freopen("/dev/null", "w", stdout);
        execl(drive.c_str(), drive.c_str(), "--drive-root", root.c_str(),
              static_cast<char*>(nullptr));
        _exit(127);
    }
    close(script[0]);
    const char start[] = "start\n";
    if (write(script[1], start, sizeof start - 1) < 0) std::exit(1);
    close(script[1]);
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        std::fprintf(stderr, "the driver failed\n");
        std::exit(1);
    }
    return usage.ru_maxrss;
}

void measureMemory(const std::string& drive) {
    const fs::path root = zd::drive::freshFolder("zd-list-bench-memory");
    fs::create_directories(root / "wuerfelhof");
    const fs::path list = root / "wuerfelhof" / "zifdach.txt";
    std::ofstream(list, std::ios::binary) << kDefault;
    const long normal = driverPeakKiB(drive, root);
    {
        std::ofstream big(list, std::ios::binary | std::ios::app);
        const std::string line = "Noch eine Zeile, die niemand liest\r\n";
        for (std::size_t written = 0; written < 100u << 20; written += line.size()) big << line;
    }
    const long huge = driverPeakKiB(drive, root);
    std::printf(
        "peak memory at start: %.1f MiB with a 65-byte list, %.1f MiB with a %.0f MB list "
        "(target: < 60 MB)\n",
        normal / 1024.0, huge / 1024.0, fs::file_size(list) / 1e6);
    fs::remove_all(root);
}

// The list that only a whole save of `name` makes: the default list with
// its first entry replaced.
std::string listOf(const std::string& name) {
    return name + "\r\nNiemand\r\nNiemand\r\nNiemand\r\nNiemand\r\n30\r\n24\r\n22\r\n20\r\n18\r\n";
}

void save(zd::Program& p, const std::string& name) {
    zd::ui::FrmBeste& f = p.frmBeste();
    f.lstName.setList(0, name);
    f.lstPunkte.setList(0, "30");
    p.g.NeuerEintrag = true;
    p.g.EintragPlatz = 0;
    zd::SpeichereBeste(p);
}

// The work that is killed: saving two lists by turns, or saving and
// clearing by turns. Tells the parent through `ready` once it is running.
[[noreturn]] void work(const fs::path& root, bool clearing, int ready) {
    PlayerBot bot(ZD_PROGRAM_DIR, root.string());
    zd::Program& p = bot.program();
    const char one = 1;
    if (write(ready, &one, 1) < 0) _exit(1);
    for (long n = 0;; ++n) {
        if (!clearing) {
            save(p, n % 2 ? "Bert" : "Anna");
            continue;
        }
        if (n % 2) {
            save(p, "Anna");
            continue;
        }
        // As the window's clearing does it: delete, write the defaults,
        // read them back.
        p.platform.deleteFile(zd::BesteDatei(p));
        zd::SchreibeBesteStandard(p);
        zd::LeseBeste(p);
    }
}

void killTest(int kills) {
    const fs::path root = zd::drive::freshFolder("zd-list-bench-kill");
    const fs::path list = root / "wuerfelhof" / "zifdach.txt";
    std::mt19937 random(20261123);
    std::map<std::string, int> seen;
    int bad = 0;
    for (int k = 0; k < kills; ++k) {
        const bool clearing = k % 2 == 1;
        int ready[2];
        if (pipe(ready) != 0) std::exit(1);
        const pid_t child = fork();
        if (child == 0) {
            close(ready[0]);
            work(root, clearing, ready[1]);
        }
        close(ready[1]);
        char byte = 0;
        if (read(ready[0], &byte, 1) != 1) std::exit(1);
        close(ready[0]);
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 40000));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);

        std::string state;
        if (!fs::exists(list)) {
            // Killed between deleting and writing: the next start must
            // show the default list.
            PlayerBot next(ZD_PROGRAM_DIR, root.string());
            const bool defaults = next.program().frmBeste().lstPunkte.List(0) == "26" &&
                                  next.program().frmBeste().lstName.List(0) == "Niemand";
            state = defaults ? "missing, default list at the next start" : "missing, and LOST";
        } else {
            const std::string bytes = contents(list);
            state = bytes == listOf("Anna")   ? "Anna's list"
                    : bytes == listOf("Bert") ? "Bert's list"
                    : bytes == kDefault       ? "default list"
                                              : "DAMAGED";
        }
        if (state == "DAMAGED" || state == "missing, and LOST") ++bad;
        ++seen[std::string(clearing ? "clearing: " : "saving:   ") + state];
    }
    int strays = 0;
    for (const auto& entry : fs::directory_iterator(root / "wuerfelhof")) {
        const std::string name = entry.path().filename().string();
        if (name != "zifdach.txt" && name != "zifdach.txt.lock") ++strays;
    }
    std::printf("%d kills, %d with a damaged or lost list; %d temporary files left behind\n", kills,
                bad, strays);
    for (const auto& [state, count] : seen) std::printf("  %-50s %d\n", state.c_str(), count);
    fs::remove_all(root);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: list_bench DRIVE [KILLS]\n");
        return 2;
    }
    measureMemory(argv[1]);
    killTest(argc > 2 ? std::atoi(argv[2]) : 300);
    return 0;
}
