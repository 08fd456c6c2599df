#include "Clock.h"

#include <QTime>
#include <chrono>
#include <thread>

namespace mirvalde {

double SystemClock::SecondsSinceMidnight() const {
    return QTime::currentTime().msecsSinceStartOfDay() / 1000.0;
}

std::uint32_t SystemClock::TickCount() const {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint32_t>(
        std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}

void SystemClock::SleepUntilTick(std::uint32_t tick) const {
    using std::chrono::milliseconds;
    const auto now = std::chrono::duration_cast<milliseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
    const std::uint32_t ahead = tick - static_cast<std::uint32_t>(now.count());
    if (ahead == 0 || ahead >= 0x80000000u) return;
    std::this_thread::sleep_until(std::chrono::steady_clock::time_point(now + milliseconds(ahead)));
}

void SystemClock::Sleep(std::uint32_t milliseconds) const {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

}  // namespace mirvalde
