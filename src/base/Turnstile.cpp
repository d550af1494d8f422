#include "base/Turnstile.h"

namespace velmora {

QCoro::Task<> Turnstile::enter()
{
    if (!taken_) {
        taken_ = true;
        co_return;
    }
    const auto turn = std::make_shared<OneShot<bool>>();
    waiting_.push_back(turn);
    const bool mine = co_await *turn;
    Q_UNUSED(mine);
}

void Turnstile::leave()
{
    if (waiting_.empty()) {
        taken_ = false;
        return;
    }
    const auto next = waiting_.front();
    waiting_.pop_front();
    next->set(true); // the place is passed on and never free in between
}

} // namespace velmora
