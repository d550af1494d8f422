// Proves that the event loop was not held up.
#pragma once

#include <QTimer>

#include <algorithm>
#include <chrono>

namespace velmora::test {

/// Counts the turns that the event loop gave to a timer, and remembers the longest wait for one.
class LoopTicker
{
public:
    LoopTicker()
    {
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] {
            const auto now = std::chrono::steady_clock::now();
            const auto gap = std::chrono::duration_cast<std::chrono::milliseconds>(now - last_);
            longestGap_ = std::max(longestGap_, gap);
            last_ = now;
            ++ticks_;
        });
        timer_.setTimerType(Qt::PreciseTimer);
        timer_.start(std::chrono::milliseconds{5});
    }

    [[nodiscard]] int ticks() const { return ticks_; }

    [[nodiscard]] std::chrono::milliseconds longestGap() const { return longestGap_; }

private:
    QTimer timer_;
    std::chrono::steady_clock::time_point last_ = std::chrono::steady_clock::now();
    std::chrono::milliseconds longestGap_{0};
    int ticks_ = 0;
};

} // namespace velmora::test
