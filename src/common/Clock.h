#pragma once

#include <cstdint>

namespace mirvalde {

// Time of day and a millisecond tick count, injected so that tests pin them.
class Clock {
  public:
    virtual ~Clock() = default;
    // Seconds since midnight, local time, with their fraction.
    virtual double SecondsSinceMidnight() const = 0;
    // Milliseconds since an arbitrary start; wraps like any 32-bit tick count.
    virtual std::uint32_t TickCount() const = 0;
    // Gives the processor away for about this long; never handles an event.
    virtual void Sleep(std::uint32_t milliseconds) const = 0;
    // Sleeps until the tick count reaches `tick`, at once when it has; a clock that knows the
    // time between its ticks wakes on the tick itself rather than up to a millisecond late.
    virtual void SleepUntilTick(std::uint32_t tick) const {
        const std::uint32_t ahead = tick - TickCount();
        if (ahead != 0 && ahead < 0x80000000u) Sleep(ahead);
    }
};

class SystemClock final : public Clock {
  public:
    double SecondsSinceMidnight() const override;
    std::uint32_t TickCount() const override;
    void Sleep(std::uint32_t milliseconds) const override;
    void SleepUntilTick(std::uint32_t tick) const override;
};

}  // namespace mirvalde
