#pragma once

#include <cstdint>
#include <functional>

namespace zd {

// The one die of the game.
class Die {
public:
    // A draw r with 0 <= r < 1, the generator reseeded from the clock first.
    float draw();

    // Tests may replace the draw, or the whole throw (the driver's --dice).
    std::function<float()> drawing;
    std::function<int()> fixed;

private:
    std::uint64_t draws_ = 0;
};

// 1 to 6, all equally likely; never adjusted to the state of the game.
int ZufallsWurf(Die& die);

}  // namespace zd
