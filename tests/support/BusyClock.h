// A clock on which work takes time: every look at it costs some, so that a test sees when long work
// lets events be handled, however fast the machine is. Otherwise it goes as the clock behind it.
#pragma once

#include "base/Clock.h"

#include <functional>
#include <stdexcept>
#include <utility>

namespace velmora::test {

class BusyClock final : public Clock
{
public:
    explicit BusyClock(Clock &clock, std::chrono::milliseconds cost = std::chrono::milliseconds{1})
        : clock_(clock)
        , cost_(cost)
    {
    }

    [[nodiscard]] WallTime localNow() const override { return clock_.localNow(); }

    [[nodiscard]] std::chrono::seconds utcOffset() const override { return clock_.utcOffset(); }

    [[nodiscard]] std::chrono::milliseconds monotonicNow() const override
    {
        worked_ += cost_;
        return clock_.monotonicNow() + worked_;
    }

    QCoro::Task<Wake> sleep(std::chrono::milliseconds duration, std::stop_token stop) override
    {
        return clock_.sleep(duration, std::move(stop));
    }

    QCoro::Task<> yield() override
    {
        ++yields_;
        if (yields_ == failAt_) {
            throw std::runtime_error("the clock is broken");
        }
        if (onYield_) {
            onYield_(yields_);
        }
        co_await clock_.yield();
    }

    /// The cost of one look.
    void setCost(std::chrono::milliseconds cost) { cost_ = cost; }

    /// Makes the yield of this number, from 1 on, throw.
    void failAtYield(int number) { failAt_ = number; }

    /// Called with the number of each yield.
    void setOnYield(std::function<void(int)> call) { onYield_ = std::move(call); }

    [[nodiscard]] int yields() const { return yields_; }

    /// Yields since the last call, which are counted from 1 again.
    int takeYields() { return std::exchange(yields_, 0); }

private:
    Clock &clock_;
    std::chrono::milliseconds cost_;
    mutable std::chrono::milliseconds worked_{0};
    int yields_ = 0;
    int failAt_ = 0;
    std::function<void(int)> onYield_;
};

} // namespace velmora::test
