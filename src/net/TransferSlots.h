// How many transfers may run at once: as many as the process may still open files and sockets for.
#pragma once

#include "base/OneShot.h"

#include <QCoro/QCoroTask>

#include <deque>
#include <functional>
#include <stop_token>

namespace velmora {

/// Callers enter before they run a transfer and leave after it. One may always run; those for which
/// there is no room wait in order of arrival.
class TransferSlots
{
public:
    /// held: descriptors now kept by the results of past transfers.
    explicit TransferSlots(std::function<int()> held);

    /// Waits for room: true once there is some, false when a stop is requested first.
    QCoro::Task<bool> enter(std::stop_token stop);

    /// Ends what enter() began.
    void leave();

    [[nodiscard]] int running() const { return running_; }

private:
    [[nodiscard]] bool hasRoom();
    void giveUp(OneShot<bool> *waiter);

    std::function<int()> held_;
    std::deque<OneShot<bool> *> waiting_;
    int running_ = 0;
    int others_ = 0; // descriptors open while no transfer was running
};

} // namespace velmora
