// A clock by which every piece of work takes long, so that long work yields after each piece.
#pragma once

#include "support/FakeClock.h"

#include <functional>
#include <utility>

namespace velmora::test {

class BusyClock final : public Clock
{
public:
    [[nodiscard]] WallTime localNow() const override { return clock_.localNow(); }

    [[nodiscard]] std::chrono::seconds utcOffset() const override { return clock_.utcOffset(); }

    [[nodiscard]] std::chrono::milliseconds monotonicNow() const override
    {
        return now_ += std::chrono::milliseconds{10};
    }

    QCoro::Task<Wake> sleep(std::chrono::milliseconds duration, std::stop_token stop) override
    {
        return clock_.sleep(duration, std::move(stop));
    }

    QCoro::Task<> yield() override
    {
        ++yields_;
        if (onYield_) {
            onYield_(yields_);
        }
        return clock_.yield();
    }

    /// Yields since the last call.
    int takeYields() { return std::exchange(yields_, 0); }

    /// Called with the number of each yield.
    void setOnYield(std::function<void(int)> call) { onYield_ = std::move(call); }

private:
    FakeClock clock_;
    mutable std::chrono::milliseconds now_{0};
    int yields_ = 0;
    std::function<void(int)> onYield_;
};

} // namespace velmora::test
