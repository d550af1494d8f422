// A clock on which work takes time: every look at it costs some, so that a test sees when long work
// lets events run, however fast the machine is.
#pragma once

#include "base/Clock.h"

#include <stdexcept>
#include <utility>

namespace velmora::test {

class BusyClock final : public Clock
{
public:
    explicit BusyClock(Clock &clock)
        : clock_(clock)
    {
    }

    [[nodiscard]] WallTime localNow() const override { return clock_.localNow(); }

    [[nodiscard]] std::chrono::seconds utcOffset() const override { return clock_.utcOffset(); }

    [[nodiscard]] std::chrono::milliseconds monotonicNow() const override
    {
        now_ += cost_;
        return now_;
    }

    QCoro::Task<Wake> sleep(std::chrono::milliseconds duration, std::stop_token stop) override
    {
        const Wake wake = co_await clock_.sleep(duration, std::move(stop));
        co_return wake;
    }

    QCoro::Task<> yield() override
    {
        ++yields_;
        if (yields_ == failAt_) {
            throw std::runtime_error("the clock is broken");
        }
        co_await clock_.yield();
    }

    /// What one look costs.
    void setCost(std::chrono::milliseconds cost) { cost_ = cost; }

    /// The yield of this number, from 1 on, throws.
    void failAtYield(int number) { failAt_ = number; }

    [[nodiscard]] int yields() const { return yields_; }

private:
    Clock &clock_;
    std::chrono::milliseconds cost_{1};
    mutable std::chrono::milliseconds now_{0};
    int yields_ = 0;
    int failAt_ = 0;
};

} // namespace velmora::test
