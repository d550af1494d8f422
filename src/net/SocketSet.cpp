#include "net/SocketSet.h"

#include <array>
#include <sys/epoll.h>

namespace velmora {
namespace {

constexpr int kSocketsATurn = 16;

} // namespace

SocketSet::SocketSet()
    : epoll_(::epoll_create1(EPOLL_CLOEXEC))
    , notifier_(epoll_.get(), QSocketNotifier::Read)
{
    connect(&notifier_, &QSocketNotifier::activated, this, &SocketSet::tellReadySockets);
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

void SocketSet::tellReadySockets()
{
    std::array<epoll_event, kSocketsATurn> events{};
    const int count = ::epoll_wait(epoll_.get(), events.data(), kSocketsATurn, 0);
    for (int i = 0; i < count; ++i) {
        const epoll_event &event = events.at(static_cast<std::size_t>(i));
        Q_EMIT ready(event.data.fd, {(event.events & EPOLLIN) != 0, (event.events & EPOLLOUT) != 0,
                                     (event.events & (EPOLLERR | EPOLLHUP)) != 0});
    }
}

} // namespace velmora
