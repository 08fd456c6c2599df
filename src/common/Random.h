#pragma once

#include <cstdint>
#include <random>

namespace mirvalde {

// Uniform single-precision values in [0, 1), re-seedable. The rules take it by reference so
// that a test can script every draw.
class Random {
  public:
    virtual ~Random() = default;
    virtual void Seed(double seed) = 0;
    // Never 1.0: a draw of a whole number must never reach one past its top.
    virtual float Next() = 0;
};

// The whole part of (high - low + 1) * u + low, in double precision.
std::int64_t DrawWhole(std::int64_t low, std::int64_t high, float u);

class MersenneRandom final : public Random {
  public:
    void Seed(double seed) override;
    float Next() override;

  private:
    std::mt19937 engine_{5489u};
};

}  // namespace mirvalde
