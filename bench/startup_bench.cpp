// Start-up of the game against a bare Qt window of the same size: the time
// from launching the process to the first painted window, and the peak
// resident memory. Runs each probe several times and prints the medians.
//   startup_bench PROBE [RUNS]
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

struct Run {
    double ms = 0;
    long peakKiB = 0;
};

Run launch(const char* probe, const char* mode) {
    int out[2];
    if (pipe(out) != 0) std::exit(1);
    const long long now = std::chrono::duration_cast<std::chrono::nanoseconds>(
                              std::chrono::steady_clock::now().time_since_epoch())
                              .count();
    const std::string launched = std::to_string(now);
    const pid_t pid = fork();
    if (pid == 0) {
        dup2(out[1], 1);
        close(out[0]);
        setenv("ZD_LAUNCHED_NS", launched.c_str(), 1);
        execl(probe, probe, mode, static_cast<char*>(nullptr));
        _exit(127);
    }
    close(out[1]);
    char buffer[64] = {};
    const ssize_t n = read(out[0], buffer, sizeof buffer - 1);
    close(out[0]);
    int status = 0;
    rusage usage{};
    wait4(pid, &status, 0, &usage);
    if (n <= 0 || !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        std::fprintf(stderr, "the %s probe failed\n", mode);
        std::exit(1);
    }
    return Run{std::atof(buffer), usage.ru_maxrss};
}

double median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: startup_bench PROBE [RUNS]\n");
        return 2;
    }
    const int runs = argc > 2 ? std::atoi(argv[2]) : 11;
    double result[2][2];
    const char* modes[2] = {"bare", "game"};
    for (int m = 0; m < 2; ++m) {
        launch(argv[1], modes[m]);  // warm the file cache
        std::vector<double> times;
        std::vector<double> peaks;
        for (int i = 0; i < runs; ++i) {
            const Run r = launch(argv[1], modes[m]);
            times.push_back(r.ms);
            peaks.push_back(static_cast<double>(r.peakKiB));
        }
        result[m][0] = median(times);
        result[m][1] = median(peaks) / 1024.0;
    }
    std::printf("%-6s %14s %14s\n", "", "first paint ms", "peak RSS MiB");
    for (int m = 0; m < 2; ++m) {
        std::printf("%-6s %14.1f %14.1f\n", modes[m], result[m][0], result[m][1]);
    }
    std::printf("game/bare time: %.2f   (aim: at most 1.5, and at most 45 MiB)\n",
                result[1][0] / result[0][0]);
    return 0;
}
