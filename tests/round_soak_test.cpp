// Ten thousand rounds with the real die: what must hold after every one.
#include <filesystem>

#include <gtest/gtest.h>

#include "PlayerBot.h"
#include "best/modBeste.h"

namespace zd::test {
namespace {

TEST(RoundSoak, TenThousandRoundsKeepTheirPromises) {
    const std::string root = freshFolder("zd-round-soak");
    PlayerBot bot(root);
    Program& p = bot.program();
    long failures = 0;
    bot.roundEnded = [&] {
        const SharedVariables& g = p.g;
        int sum = 0;
        int beginners = 0;
        for (int i = 0; i < 4; ++i) {
            sum += g.Guthaben[static_cast<std::size_t>(i)];
            beginners += g.Gewinner[static_cast<std::size_t>(i)] ? 1 : 0;
            EXPECT_GE(g.Guthaben[static_cast<std::size_t>(i)], 0);
            EXPECT_EQ(g.Ergebnis[static_cast<std::size_t>(i)], 0);
            const int number = bot.boardNumber(i);
            // Every place filled: three digits, none of them zero.
            EXPECT_GE(number % 10, 1);
            EXPECT_GE(number / 10 % 10, 1);
            EXPECT_GE(number / 100, 1);
            EXPECT_LE(number, 666);
            EXPECT_EQ(pointsOf(p.frmSpielfeld().lblErgebnis[i].Caption), number);
        }
        EXPECT_EQ(sum, 48);
        EXPECT_EQ(beginners, 1);
        if (::testing::Test::HasFailure()) ++failures;
        ASSERT_EQ(failures, 0) << "after round " << bot.rounds();
    };
    bot.play(10000);
    EXPECT_EQ(bot.rounds(), 10000);
    EXPECT_GT(bot.games(), 100);
    std::filesystem::remove_all(root);
}

}  // namespace
}  // namespace zd::test
