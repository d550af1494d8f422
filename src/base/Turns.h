// Splits long work so that events are handled in between.
#pragma once

#include "base/WorkSlice.h"

#include <QCoro/QCoroTask>

#include <functional>
#include <stop_token>

namespace velmora {

/// Runs work in short steps, with a turn of the event loop after every few milliseconds of it.
///
/// For a class that paces itself between waits of its own, WorkSlice alone is enough.
class Turns
{
public:
    /// clock: outlives the object.
    Turns(Clock &clock, std::stop_token stop);

    /// Calls `step` until it returns false. False when a stop was requested first; the work is then
    /// left unfinished.
    QCoro::Task<bool> run(std::function<bool()> step);

private:
    [[nodiscard]] bool isSliceOver() const;

    Clock &clock_;
    std::stop_token stop_;
    WorkSlice slice_;
    int steps_ = 0;
};

} // namespace velmora
