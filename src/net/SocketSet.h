// A set of sockets that the event loop watches as one.
#pragma once

#include "base/UniqueFd.h"

#include <QObject>
#include <QSocketNotifier>

namespace velmora {

/// What a socket is watched for, or is ready for.
struct SocketEvents
{
    bool read = false;
    bool write = false;
    bool error = false; // never asked for, always told
};

/// The event loop polls each notifier at every turn; a hundred of them would cost more than the
/// transfers. Here the kernel keeps the list, and one notifier tells that some socket of it is
/// ready.
class SocketSet : public QObject
{
    Q_OBJECT

public:
    SocketSet();

    /// Watches a socket, or watches it for something else. A socket that is closed leaves the set.
    void watch(int socket, SocketEvents wanted);

    void forget(int socket);

Q_SIGNALS:
    /// At most sixteen in a turn, and none after a few milliseconds, so that a burst on a hundred
    /// sockets does not hold up the event loop.
    void ready(int socket, velmora::SocketEvents events);

private:
    void tellReadySockets();

    UniqueFd epoll_;
    QSocketNotifier notifier_;
};

} // namespace velmora
