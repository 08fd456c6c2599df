#include "Clock.h"

#include <QTime>
#include <chrono>
#include <thread>

#ifdef _WIN32
#include <windows.h>
// After <windows.h>, which it needs.
#include <mmsystem.h>
#endif

namespace mirvalde {

double SystemClock::SecondsSinceMidnight() const {
    return QTime::currentTime().msecsSinceStartOfDay() / 1000.0;
}

std::uint32_t SystemClock::TickCount() const {
#ifdef _WIN32
    return GetTickCount();
#else
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint32_t>(
        std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
#endif
}

#ifdef _WIN32
// Windows counts its ticks and wakes its sleepers every 15.6 ms unless asked for finer: the
// blink's pauses of 20 ms would grow by half. The finer timer is asked for the pause only.
void SystemClock::SleepUntilTick(std::uint32_t tick) const {
    const std::uint32_t ahead = tick - TickCount();
    if (ahead == 0 || ahead >= 0x80000000u) return;
    timeBeginPeriod(1);
    Sleep(ahead);
    timeEndPeriod(1);
}
#else
void SystemClock::SleepUntilTick(std::uint32_t tick) const {
    using std::chrono::milliseconds;
    const auto now = std::chrono::duration_cast<milliseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
    const std::uint32_t ahead = tick - static_cast<std::uint32_t>(now.count());
    if (ahead == 0 || ahead >= 0x80000000u) return;
    std::this_thread::sleep_until(std::chrono::steady_clock::time_point(now + milliseconds(ahead)));
}
#endif

void SystemClock::Sleep(std::uint32_t milliseconds) const {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

}  // namespace mirvalde
