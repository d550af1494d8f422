// Time as the program sees it, so that tests can stop it, jump ahead, or run a day in a moment.
#pragma once

#include <QCoro/QCoroTask>

#include <chrono>
#include <stop_token>

namespace velmora {

/// A date and time of day as shown on the wall, without a zone.
using WallTime = std::chrono::local_seconds;

/// The origin of date serials, 30 December 1899 at midnight: what an unknown date counts as.
inline constexpr WallTime kZeroDate =
    std::chrono::local_days{std::chrono::year{1899} / std::chrono::December / 30};

enum class Wake { Elapsed, Stopped };

class Clock
{
public:
    Clock() = default;
    Q_DISABLE_COPY_MOVE(Clock)
    virtual ~Clock() = default;

    /// The local date and time, which the user may set back and forth.
    [[nodiscard]] virtual WallTime localNow() const = 0;

    /// How far local time is ahead of UTC at the moment.
    [[nodiscard]] virtual std::chrono::seconds utcOffset() const = 0;

    /// The date and time in UTC.
    [[nodiscard]] WallTime universalNow() const { return localNow() - utcOffset(); }

    /// A time that never goes back.
    [[nodiscard]] virtual std::chrono::milliseconds monotonicNow() const = 0;

    /// Waits on the event loop for a duration, or until a stop is requested.
    virtual QCoro::Task<Wake> sleep(std::chrono::milliseconds duration, std::stop_token stop) = 0;

    /// Lets every pending event run, timers, sockets and painting included.
    virtual QCoro::Task<> yield() = 0;
};

/// The clock of the machine.
class SystemClock final : public Clock
{
public:
    [[nodiscard]] WallTime localNow() const override;
    [[nodiscard]] std::chrono::seconds utcOffset() const override;
    [[nodiscard]] std::chrono::milliseconds monotonicNow() const override;
    QCoro::Task<Wake> sleep(std::chrono::milliseconds duration, std::stop_token stop) override;
    QCoro::Task<> yield() override;
};

} // namespace velmora
