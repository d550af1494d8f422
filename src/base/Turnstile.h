// Lets coroutines that must not overlap run one after another.
#pragma once

#include "base/OneShot.h"

#include <QCoro/QCoroTask>

#include <deque>
#include <memory>

namespace velmora {

/// The one inside leaves before the next enters, in order of arrival. Must outlive its waiters.
class Turnstile
{
public:
    /// Enters at once when no one is inside.
    QCoro::Task<> enter();

    /// To be called by the one inside, once.
    void leave();

private:
    std::deque<std::shared_ptr<OneShot<bool>>> waiting_;
    bool taken_ = false;
};

} // namespace velmora
