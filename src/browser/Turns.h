// Long work that lets events through.
#pragma once

#include "base/Clock.h"

#include <functional>
#include <stop_token>

namespace velmora {

/// Runs work in short steps, with a turn of the event loop after every few milliseconds of it.
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
    std::chrono::milliseconds sliceBegan_;
    int steps_ = 0;
};

} // namespace velmora
