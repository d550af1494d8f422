#include "net/SocketSet.h"

#include <QElapsedTimer>

#include <sys/epoll.h>

namespace velmora {
namespace {

constexpr int kSocketsATurn = 16;
constexpr qint64 kTurnNs = 3'000'000; // handling one socket's data may take as long again

} // namespace

SocketSet::SocketSet()
    : epoll_(::epoll_create1(EPOLL_CLOEXEC))
    , notifier_(epoll_.get(), QSocketNotifier::Read)
{
    connect(&notifier_, &QSocketNotifier::activated, this, &SocketSet::handleReadySockets);
}

void SocketSet::watch(int socket, SocketEvents wanted)
{
    epoll_event event = {};
    event.data.fd = socket;
    event.events = (wanted.read ? EPOLLIN : 0U) | (wanted.write ? EPOLLOUT : 0U);
    if (::epoll_ctl(epoll_.get(), EPOLL_CTL_MOD, socket, &event) != 0) {
        ::epoll_ctl(epoll_.get(), EPOLL_CTL_ADD, socket, &event);
    }
}

void SocketSet::forget(int socket)
{
    ::epoll_ctl(epoll_.get(), EPOLL_CTL_DEL, socket, nullptr);
}

// One at a time, so that the system keeps those that have waited longest at the head of the queue.
void SocketSet::handleReadySockets()
{
    QElapsedTimer turn;
    turn.start();
    epoll_event event = {};
    for (int i = 0; i < kSocketsATurn && turn.nsecsElapsed() < kTurnNs; ++i) {
        if (::epoll_wait(epoll_.get(), &event, 1, 0) <= 0) {
            break;
        }
        Q_EMIT ready(event.data.fd, {(event.events & EPOLLIN) != 0, (event.events & EPOLLOUT) != 0,
                                     (event.events & (EPOLLERR | EPOLLHUP)) != 0});
    }
}

} // namespace velmora
