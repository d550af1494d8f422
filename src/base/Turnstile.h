// Lets coroutines that must not overlap, or not too many of them, run one after another.
#pragma once

#include "base/OneShot.h"

#include <QCoro/QCoroTask>

#include <deque>
#include <functional>
#include <stop_token>

namespace velmora {

/// Those for whom there is no room enter as others leave, in order of arrival. Must outlive its
/// waiters.
class Turnstile
{
public:
    /// One at a time.
    Turnstile();

    /// hasRoom: whether one more may enter beside so many. Asked as one arrives and as one leaves.
    explicit Turnstile(std::function<bool(int inside)> hasRoom);

    /// Waits for room: true once there is some, false when a stop is requested first.
    QCoro::Task<bool> enter(std::stop_token stop = {});

    /// To be called by each who has entered, once.
    void leave();

private:
    void giveUp(OneShot<bool> *waiter);

    std::function<bool(int inside)> hasRoom_;
    std::deque<OneShot<bool> *> waiting_;
    int inside_ = 0;
};

} // namespace velmora
