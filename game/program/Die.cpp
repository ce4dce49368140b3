#include "game/program/Die.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace zd {

namespace {

std::uint64_t splitmix64(std::uint64_t x) {
    x += 0x9E3779B97F4A7C15ull;
    x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9ull;
    x = (x ^ (x >> 27)) * 0x94D049BB133111EBull;
    return x ^ (x >> 31);
}

}  // namespace

float Die::draw() {
    // Reseeded from the clock before every draw. Two draws within one clock
    // tick would repeat each other, so a count of draws is mixed in.
    const auto ticks = std::chrono::high_resolution_clock::now().time_since_epoch().count();
    const std::uint64_t seed = static_cast<std::uint64_t>(ticks) ^ splitmix64(++draws_);
    const std::uint64_t bits = splitmix64(seed) >> 40;  // 24 bits: exact in a float
    return static_cast<float>(bits) / static_cast<float>(1u << 24);
}

int ZufallsWurf(Die& die) {
    if (die.fixed) return die.fixed();
    const float r = die.drawing ? die.drawing() : die.draw();
    const int wurf = static_cast<int>(std::floor(static_cast<double>(r) * 6.0)) + 1;
    // A draw just below 1 must not round up to 7.
    return std::clamp(wurf, 1, 6);
}

}  // namespace zd
