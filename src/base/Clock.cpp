#include "base/Clock.h"

#include "base/OneShot.h"

#include <QTimer>

#include <ctime>
#include <utility>

namespace velmora {

namespace {

std::chrono::seconds offsetAt(std::time_t moment)
{
    std::tm wall = {};
    ::localtime_r(&moment, &wall);
    return std::chrono::seconds{wall.tm_gmtoff};
}

} // namespace

WallTime SystemClock::localNow() const
{
    const std::time_t now = std::time(nullptr);
    return WallTime{std::chrono::seconds{now} + offsetAt(now)};
}

std::chrono::seconds SystemClock::utcOffset() const
{
    return offsetAt(std::time(nullptr));
}

std::chrono::milliseconds SystemClock::monotonicNow() const
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
}

QCoro::Task<Wake> SystemClock::sleep(std::chrono::milliseconds duration, std::stop_token stop)
{
    OneShot<Wake> wakeUp;
    QTimer timer;
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, &timer, [&wakeUp] { wakeUp.set(Wake::Elapsed); });
    const std::stop_callback onStop(std::move(stop), [&wakeUp] { wakeUp.set(Wake::Stopped); });
    timer.start(duration);
    const Wake wake = co_await wakeUp;
    co_return wake;
}

// A zero-length timer runs after all other events of the turn; a queued call would starve them.
QCoro::Task<> SystemClock::yield()
{
    const Wake wake = co_await sleep(std::chrono::milliseconds{0}, std::stop_token{});
    Q_UNUSED(wake);
}

} // namespace velmora
