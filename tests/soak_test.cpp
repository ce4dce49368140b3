// Rounds and whole games with the real die, played by a bot: the promises of
// a round, of a game's end and of the best list hold after every round.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "best/modBeste.h"
#include "front/drive/PlayerBot.h"

namespace zd::test {

using drive::freshFolder;
using drive::PlayerBot;
namespace {

int linesOf(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    int lines = 0;
    for (std::size_t pos = 0; (pos = text.find("\r\n", pos)) != std::string::npos; pos += 2)
        ++lines;
    return lines;
}

// Credit is only moved, never made or lost; one player begins the next
// round; every place is filled with a die; a game ends exactly when somebody
// is out; the list stays ten lines.
void expectRoundPromises(PlayerBot& bot, const std::filesystem::path& list) {
    Program& p = bot.program();
    const SharedVariables& g = p.g;
    int sum = 0;
    int beginners = 0;
    bool someoneOut = false;
    for (int i = 0; i < 4; ++i) {
        const auto k = static_cast<std::size_t>(i);
        sum += g.Guthaben[k];
        beginners += g.Gewinner[k] ? 1 : 0;
        someoneOut = someoneOut || g.Guthaben[k] == 0;
        EXPECT_GE(g.Guthaben[k], 0);
        EXPECT_EQ(g.Ergebnis[k], 0);
        const int number = bot.boardNumber(i);
        EXPECT_GE(number % 10, 1);
        EXPECT_GE(number / 10 % 10, 1);
        EXPECT_GE(number / 100, 1);
        EXPECT_LE(number, 666);
        EXPECT_EQ(pointsOf(p.frmSpielfeld().lblErgebnis[i].Caption), number);
    }
    EXPECT_EQ(sum, 48);
    EXPECT_EQ(beginners, 1);
    EXPECT_EQ(someoneOut, bot.gameEnded());
    EXPECT_EQ(linesOf(list), 10);
}

void play(PlayerBot& bot, const std::filesystem::path& root, long rounds) {
    const auto list = root / "wuerfelhof" / "zifdach.txt";
    bot.roundEnded = [&] {
        expectRoundPromises(bot, list);
        ASSERT_FALSE(::testing::Test::HasFailure()) << "after round " << bot.rounds();
    };
    bot.play(rounds);
}

TEST(Soak, TenThousandRounds) {
    const std::filesystem::path root = freshFolder("zd-round-soak");
    PlayerBot bot(ZD_PROGRAM_DIR, root.string());
    play(bot, root, 10000);
    EXPECT_EQ(bot.rounds(), 10000);
    EXPECT_GT(bot.games(), 100);
    std::filesystem::remove_all(root);
}

TEST(Soak, TwoThousandWholeGamesUntilNoNewGameIsWanted) {
    const std::filesystem::path root = freshFolder("zd-game-soak");
    PlayerBot bot(ZD_PROGRAM_DIR, root.string());
    bot.newGame = [&] { return bot.games() < 2000; };
    play(bot, root, 1L << 30);
    EXPECT_TRUE(bot.program().tk.ended());
    EXPECT_EQ(bot.games(), 2000);
    std::filesystem::remove_all(root);
}

}  // namespace
}  // namespace zd::test
