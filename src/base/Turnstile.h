// Coroutines that must not overlap, one after the other.
#pragma once

#include "base/OneShot.h"

#include <QCoro/QCoroTask>

#include <deque>
#include <memory>

namespace velmora {

/// Whoever has entered leaves before the next, in the order of arrival, comes in. Must outlive
/// whoever waits.
class Turnstile
{
public:
    /// Comes in at once when nobody is inside.
    QCoro::Task<> enter();

    /// To be called by the one inside, once.
    void leave();

private:
    std::deque<std::shared_ptr<OneShot<bool>>> waiting_;
    bool taken_ = false;
};

} // namespace velmora
