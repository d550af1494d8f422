#include "browser/Turns.h"

#include <utility>

namespace velmora {
namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds kSlice = 6ms;
constexpr int kMostSteps = 48; // also where the clock is slow to tell that time has passed

} // namespace

Turns::Turns(Clock &clock, std::stop_token stop)
    : clock_(clock)
    , stop_(std::move(stop))
    , sliceBegan_(clock.monotonicNow())
{
}

bool Turns::isSliceOver()
{
    ++steps_;
    return steps_ >= kMostSteps || clock_.monotonicNow() - sliceBegan_ >= kSlice;
}

QCoro::Task<bool> Turns::run(std::function<bool()> step)
{
    bool more = step();
    while (more) {
        if (isSliceOver()) {
            co_await clock_.yield();
            if (stop_.stop_requested()) {
                co_return false;
            }
            steps_ = 0;
            sliceBegan_ = clock_.monotonicNow();
        }
        more = step();
    }
    co_return true;
}

} // namespace velmora
