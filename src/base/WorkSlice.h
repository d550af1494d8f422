// A slice of the one thread's time: long work is done in slices, and events are handled in between.
#pragma once

#include "base/Clock.h"

#include <QCoro/QCoroTask>

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

    /// Starts a new slice, after a yield.
    void begin() { began_ = clock_.monotonicNow(); }

private:
    static constexpr std::chrono::milliseconds kLength{5};

    const Clock &clock_;
    std::chrono::milliseconds began_;
};

/// Lets events be handled if the slice is over, and then starts a new one. Both outlive the task.
QCoro::Task<> letEventsRun(WorkSlice *slice, Clock *clock);

} // namespace velmora
