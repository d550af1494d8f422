// A clock that stands still until a test advances it: a day of ticks passes in a moment, and no
// test has to sleep.
#pragma once

#include "base/Clock.h"
#include "base/OneShot.h"

#include <QObject>

#include <chrono>
#include <map>
#include <utility>

namespace velmora::test {

/// 7 March 2006, 14:05:09: every field has a different value.
inline constexpr WallTime kFakeStart =
    std::chrono::local_days{std::chrono::year{2006} / std::chrono::March / 7} +
    std::chrono::hours{14} + std::chrono::minutes{5} + std::chrono::seconds{9};

class FakeClock final : public Clock
{
public:
    explicit FakeClock(WallTime start = kFakeStart);
    ~FakeClock() override;

    Q_DISABLE_COPY_MOVE(FakeClock)

    [[nodiscard]] WallTime localNow() const override;

    [[nodiscard]] std::chrono::seconds utcOffset() const override { return utcOffset_; }

    [[nodiscard]] std::chrono::milliseconds monotonicNow() const override { return now_; }

    /// Ends with Elapsed once advance() has reached its moment.
    QCoro::Task<Wake> sleep(std::chrono::milliseconds duration, std::stop_token stop) override;

    /// A real turn of the event loop; needs no advance().
    QCoro::Task<> yield() override;

    /// Moves only the local time, like a user who sets the clock.
    void setLocal(WallTime local);

    /// Moves to another time zone with the same local time.
    void setUtcOffset(std::chrono::seconds offset) { utcOffset_ = offset; }

    /// Lets both times run on: ends the sleeps that fall due, one after another in order of their
    /// moments, each at its moment, and lets the event loop settle after each. The next sleep of a
    /// woken coroutine counts too. Nothing waits for real time.
    void advance(std::chrono::milliseconds duration);

    /// Lets both times run on while nothing is woken, as when a disk that does not answer holds up
    /// the program; what fell due meanwhile is woken by the next advance().
    void stall(std::chrono::milliseconds duration) { now_ += duration; }

    /// Number of sleeps that have not ended.
    [[nodiscard]] int sleeping() const { return static_cast<int>(sleeps_.size()); }

private:
    /// Moment, then order of arrival.
    using Key = std::pair<std::chrono::milliseconds, quint64>;
    using Sleeps = std::map<Key, OneShot<Wake> *>;

    /// Sees every event that is delivered, so that settling knows when there are no more.
    class EventCounter final : public QObject
    {
    public:
        bool eventFilter(QObject *watched, QEvent *event) override;

        quint64 events = 0;
    };

    class SleepEntry;

    void settle();

    std::chrono::milliseconds now_;
    WallTime localBase_;
    std::chrono::seconds utcOffset_{0};
    std::chrono::milliseconds localSince_;
    quint64 arrivals_ = 0;
    int yields_ = 0;
    Sleeps sleeps_;
    EventCounter counter_;
};

} // namespace velmora::test
