#include "Random.h"

#include <bit>
#include <cmath>

namespace mirvalde {

std::int64_t DrawWhole(std::int64_t low, std::int64_t high, float u) {
    const double span = static_cast<double>(high - low + 1);
    return static_cast<std::int64_t>(
        std::floor(span * static_cast<double>(u) + static_cast<double>(low)));
}

void MersenneRandom::Seed(double seed) {
    // Every bit of the seed counts: two seeds a millisecond apart give different sequences.
    const auto bits = std::bit_cast<std::uint64_t>(seed);
    std::seed_seq sequence{static_cast<std::uint32_t>(bits),
                           static_cast<std::uint32_t>(bits >> 32)};
    engine_.seed(sequence);
}

float MersenneRandom::Next() {
    // 24 random bits fill a float's mantissa exactly, so the largest value is 1 - 2^-24.
    constexpr float kScale = 1.0f / 16777216.0f;
    return static_cast<float>(engine_() >> 8) * kScale;
}

}  // namespace mirvalde
