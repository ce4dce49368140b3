// Whole games per second through the headless program: the real die, every
// question answered Ja, until the given number of games has been played.
//   headless_bench [GAMES]
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "front/drive/PlayerBot.h"

int main(int argc, char** argv) {
    const long games = argc > 1 ? std::atol(argv[1]) : 5000;
    const std::string root = zd::drive::freshFolder("zd-headless-bench");
    const auto start = std::chrono::steady_clock::now();
    long rounds = 0;
    {
        zd::drive::PlayerBot bot(ZD_PROGRAM_DIR, root);
        bot.newGame = [&bot, games] { return bot.games() < games; };
        bot.play(1L << 40);
        rounds = bot.rounds();
    }
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    std::printf(
        "%ld games, %ld rounds in %.2f s: %.0f games/s, %.0f rounds/s (target: 1000 games/s)\n",
        games, rounds, seconds, games / seconds, rounds / seconds);
    std::filesystem::remove_all(root);
    return 0;
}
