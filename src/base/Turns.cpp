#include "base/Turns.h"

#include <utility>

namespace velmora {
namespace {

constexpr int kMostSteps = 48; // also for a clock that is slow to show that time has passed

} // namespace

Turns::Turns(Clock &clock, std::stop_token stop)
    : clock_(clock)
    , stop_(std::move(stop))
    , slice_(clock)
{
}

bool Turns::isSliceOver() const
{
    return steps_ >= kMostSteps || slice_.isOver();
}

QCoro::Task<bool> Turns::run(std::function<bool()> step)
{
    bool more = step();
    while (more) {
        ++steps_;
        if (isSliceOver()) {
            co_await clock_.yield();
            if (stop_.stop_requested()) {
                co_return false;
            }
            steps_ = 0;
            slice_.begin();
        }
        more = step();
    }
    co_return true;
}

} // namespace velmora
