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

void SystemClock::Sleep(std::uint32_t milliseconds) const {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

}  // namespace mirvalde
