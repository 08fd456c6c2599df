#pragma once

#include <deque>
#include <string>
#include <vector>

#include "Clock.h"
#include "Random.h"
#include "Shell.h"
#include "Sound.h"

namespace mirvalde::testing {

// Hands out the values a test scripts, then a fixed one; records every seed.
class ScriptedRandom final : public Random {
  public:
    ScriptedRandom(std::initializer_list<float> values = {}, float then = 0.5f)
        : values_(values), then_(then) {}
    void Seed(double seed) override { seeds.push_back(seed); }
    float Next() override {
        if (values_.empty()) return then_;
        const float value = values_.front();
        values_.pop_front();
        return value;
    }
    void Push(std::initializer_list<float> values) { values_.insert(values_.end(), values); }

    std::vector<double> seeds;

  private:
    std::deque<float> values_;
    float then_;
};

class FakeClock final : public Clock {
  public:
    double SecondsSinceMidnight() const override { return seconds; }
    std::uint32_t TickCount() const override { return ticks; }
    // Time passes only while the code under test sleeps, unless the tick count is frozen.
    void Sleep(std::uint32_t milliseconds) const override {
        ticks += frozen ? 0 : milliseconds;
        slept += milliseconds;
    }
    double seconds = 36000.25;
    mutable std::uint32_t ticks = 0;
    mutable std::uint32_t slept = 0;
    bool frozen = false;
};

class RecordingSound final : public Sound {
  public:
    void Play(const std::string& path) override { played.push_back(path); }
    std::vector<std::string> played;
};

// Records what the game asks of the desktop; starts a program or not, as the test says.
class RecordingShell final : public Shell {
  public:
    bool StartDetached(const std::string& commandLine) override {
        started.push_back(commandLine);
        return starts;
    }
    bool Open(const std::string& address) override {
        opened.push_back(address);
        return true;
    }
    std::vector<std::string> started;
    std::vector<std::string> opened;
    bool starts = true;
};

// The largest value a single-precision generator in [0, 1) can give.
inline constexpr float kLargestUniform = 1.0f - 1.0f / 16777216.0f;

}  // namespace mirvalde::testing
