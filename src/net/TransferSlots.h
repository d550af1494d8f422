// How many transfers may run at once: as many as the process may still open files and sockets for.
#pragma once

#include "base/Turnstile.h"

namespace velmora {

/// Callers enter before they run a transfer and leave after it. One may always run; those for which
/// there is no room wait in order of arrival.
class TransferSlots
{
public:
    /// held: descriptors now kept by the results of past transfers, or for coming ones.
    explicit TransferSlots(std::function<int()> held);

    /// Waits for room: true once there is some, false when a stop is requested first.
    QCoro::Task<bool> enter(std::stop_token stop) { return turnstile_.enter(std::move(stop)); }

    /// Ends what enter() began.
    void leave() { turnstile_.leave(); }

private:
    [[nodiscard]] bool hasRoom(int running);

    std::function<int()> held_;
    int others_ = 0; // descriptors open while no transfer was running
    Turnstile turnstile_{[this](int running) { return hasRoom(running); }};
};

} // namespace velmora
