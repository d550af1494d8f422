#include "base/Turnstile.h"

#include <utility>

namespace velmora {

Turnstile::Turnstile()
    : Turnstile([](int inside) { return inside == 0; })
{
}

Turnstile::Turnstile(std::function<bool(int inside)> hasRoom)
    : hasRoom_(std::move(hasRoom))
{
}

QCoro::Task<bool> Turnstile::enter(std::stop_token stop)
{
    if (waiting_.empty() && hasRoom_(inside_)) {
        ++inside_;
        co_return true;
    }
    OneShot<bool> admitted;
    waiting_.push_back(&admitted);
    const std::stop_callback onStop(std::move(stop), [this, &admitted] { giveUp(&admitted); });
    const bool entered = co_await admitted;
    co_return entered;
}

// A waiter that has already been admitted stays so.
void Turnstile::giveUp(OneShot<bool> *waiter)
{
    if (std::erase(waiting_, waiter) > 0) {
        waiter->set(false);
    }
}

// The place of those who are admitted is taken at once, so that no one slips in before them.
void Turnstile::leave()
{
    --inside_;
    while (!waiting_.empty() && hasRoom_(inside_)) {
        ++inside_;
        OneShot<bool> *const next = waiting_.front();
        waiting_.pop_front();
        next->set(true);
    }
}

} // namespace velmora
