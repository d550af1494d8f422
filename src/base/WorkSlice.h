// A share of the one thread's time: long work is done in slices, between which events get their
// turn.
#pragma once

#include "base/Clock.h"

namespace velmora {

class WorkSlice
{
public:
    explicit WorkSlice(const Clock &clock)
        : clock_(clock)
        , began_(clock.monotonicNow())
    {
    }

    /// True when it is time to yield.
    [[nodiscard]] bool isOver() const { return clock_.monotonicNow() - began_ >= kLength; }

    /// A new slice begins, after a yield.
    void begin() { began_ = clock_.monotonicNow(); }

private:
    static constexpr std::chrono::milliseconds kLength{5};

    const Clock &clock_;
    std::chrono::milliseconds began_;
};

} // namespace velmora
