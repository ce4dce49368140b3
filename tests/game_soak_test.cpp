// Two thousand whole games with the real die, Ja to every question but the
// last new game: the promises of a round, of a game's end and of the best
// list hold throughout, and memory does not grow with the games played.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "PlayerBot.h"

namespace zd::test {
namespace {

long residentKiB() {
    std::ifstream statm("/proc/self/statm");
    long size = 0;
    long resident = 0;
    statm >> size >> resident;
    return resident * 4;
}

int linesOf(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    int lines = 0;
    for (std::size_t pos = 0; (pos = text.find("\r\n", pos)) != std::string::npos; pos += 2)
        ++lines;
    return lines;
}

TEST(GameSoak, TwoThousandGamesKeepTheirPromises) {
    const std::filesystem::path root = freshFolder("zd-game-soak");
    const auto list = root / "wuerfelhof" / "zifdach.txt";
    constexpr long kGames = 2000;
    PlayerBot bot(root.string());
    Program& p = bot.program();
    bot.newGame = [&] { return bot.games() < kGames; };
    long memoryAfterWarmUp = 0;
    bot.roundEnded = [&] {
        const SharedVariables& g = p.g;
        int sum = 0;
        int beginners = 0;
        bool someoneOut = false;
        for (std::size_t i = 0; i < 4; ++i) {
            sum += g.Guthaben[i];
            beginners += g.Gewinner[i] ? 1 : 0;
            ASSERT_GE(g.Guthaben[i], 0);
            someoneOut = someoneOut || g.Guthaben[i] == 0;
        }
        ASSERT_EQ(sum, 48);
        ASSERT_EQ(beginners, 1);
        ASSERT_EQ(someoneOut, bot.gameEnded()) << "round " << bot.rounds();
        ASSERT_EQ(linesOf(list), 10);
        if (bot.games() == 200 && memoryAfterWarmUp == 0) memoryAfterWarmUp = residentKiB();
    };
    bot.play(1L << 30);
    EXPECT_TRUE(p.tk.ended());
    EXPECT_EQ(bot.games(), kGames);
    const long growth = residentKiB() - memoryAfterWarmUp;
    RecordProperty("rounds", static_cast<int>(bot.rounds()));
    RecordProperty("memory_growth_kib", static_cast<int>(growth));
#if !defined(__SANITIZE_ADDRESS__)
    // (AddressSanitizer holds freed memory back on purpose, and finds leaks itself.)
    EXPECT_LT(growth, 2048) << "resident memory grew by " << growth << " KiB over 1,800 games";
#endif
    std::filesystem::remove_all(root);
}

}  // namespace
}  // namespace zd::test
