#include "base/Gate.h"

#include <utility>

namespace velmora {

void Gate::open()
{
    shut_ = false;
    for (const auto &turn : std::exchange(waiting_, {})) {
        turn->set(true);
    }
}

// It may have been shut again before a coroutine that was let through gets its turn.
QCoro::Task<> Gate::pass(std::stop_token stop)
{
    while (shut_ && !stop.stop_requested()) {
        const auto turn = std::make_shared<OneShot<bool>>();
        waiting_.push_back(turn);
        const std::stop_callback onStop(stop, [&turn] { turn->set(false); });
        const bool opened = co_await *turn;
        Q_UNUSED(opened);
    }
}

} // namespace velmora
