// Long work that lets events through.
#pragma once

#include "base/WorkSlice.h"

#include <QCoro/QCoroTask>

#include <functional>
#include <stop_token>

namespace velmora {

/// Runs work in short steps, with a turn of the event loop after every few milliseconds of it.
///
/// A class that paces itself between waits of its own uses WorkSlice alone.
class Turns
{
public:
    /// clock: outlives the object.
    Turns(Clock &clock, std::stop_token stop);

    /// Calls `step` until it gives false. False when a stop was requested before that; then the
    /// work is left as it is.
    QCoro::Task<bool> run(std::function<bool()> step);

private:
    [[nodiscard]] bool isSliceOver();

    Clock &clock_;
    std::stop_token stop_;
    WorkSlice slice_;
    int steps_ = 0;
};

} // namespace velmora
