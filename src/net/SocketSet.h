// Sockets that the event loop watches as one.
#pragma once

#include "base/UniqueFd.h"

#include <QObject>
#include <QSocketNotifier>

namespace velmora {

/// What a socket is watched for or ready for.
struct SocketEvents
{
    bool read = false;
    bool write = false;
    bool error = false; // never requested, always reported
};

/// The event loop polls each notifier at every turn; a hundred of them would cost more than the
/// transfers. Here the kernel keeps the list, and one notifier reports that some socket in it is
/// ready.
class SocketSet : public QObject
{
    Q_OBJECT

public:
    SocketSet();

    /// Watches a socket, or changes what it is watched for. A closed socket leaves the set.
    void watch(int socket, SocketEvents wanted);

    void forget(int socket);

Q_SIGNALS:
    /// Emitted at most sixteen times in a turn, and not after a few milliseconds, so that a burst
    /// on a hundred sockets does not hold up the event loop.
    void ready(int socket, velmora::SocketEvents events);

private:
    void handleReadySockets();

    UniqueFd epoll_;
    QSocketNotifier notifier_;
};

} // namespace velmora
