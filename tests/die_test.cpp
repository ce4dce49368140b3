// The die: every draw maps onto 1 to 6, the edges included.
#include "game/program/Die.h"

#include <array>
#include <cmath>

#include <gtest/gtest.h>

namespace zd {
namespace {

int throwWith(float r) {
    Die w;
    w.drawing = [r] { return r; };
    return ZufallsWurf(w);
}

TEST(Die, DrawsAtTheEdgesStayWithinOneToSix) {
    EXPECT_EQ(throwWith(0.0f), 1);
    EXPECT_EQ(throwWith(std::nextafter(1.0f / 6.0f, 0.0f)), 1);
    EXPECT_EQ(throwWith(0.5f), 4);
    EXPECT_EQ(throwWith(std::nextafter(1.0f, 0.0f)), 6);
}

TEST(Die, TheRealDrawIsUniformAndNeverRepeatsItselfWithinAClockTick) {
    Die w;
    std::array<int, 7> counts{};
    constexpr int kThrows = 60000;
    for (int i = 0; i < kThrows; ++i) {
        const int n = ZufallsWurf(w);
        ASSERT_GE(n, 1);
        ASSERT_LE(n, 6);
        ++counts[static_cast<std::size_t>(n)];
    }
    for (int face = 1; face <= 6; ++face) {
        // 10,000 expected; 5 standard deviations is about 460.
        EXPECT_NEAR(counts[static_cast<std::size_t>(face)], kThrows / 6.0, 500) << "face " << face;
    }
}

}  // namespace
}  // namespace zd
