#include "base/SignalWatcher.h"

#include <QSocketNotifier>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <sys/socket.h>
#include <unistd.h>

namespace velmora {
namespace {

// A signal handler may do next to nothing: it writes a byte, which the event loop reads.
std::array<int, 2> sockets = {-1, -1};

std::atomic<time_t> waitingSince = 0; // of a signal that the event loop has not seen
constexpr time_t kPatienceSeconds = 5;

time_t secondsNow()
{
    timespec now = {};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec + 1; // never 0
}

// True when the event loop does not turn: the program hangs, and must not swallow signals too.
bool isDeaf()
{
    const time_t now = secondsNow();
    time_t since = 0;
    return !waitingSince.compare_exchange_strong(since, now) && now - since > kPatienceSeconds;
}

// The interrupted code may be about to look at errno.
extern "C" void onSignal(int signal)
{
    const int before = errno;
    if (isDeaf()) {
        ::signal(signal, SIG_DFL);
        ::raise(signal);
    }
    if (signal == SIGHUP) {
        ::signal(SIGHUP, SIG_IGN); // the terminal's shell sends it again
    }
    const char byte = 1;
    static_cast<void>(::write(sockets[0], &byte, 1)); // to none once the watcher is gone
    errno = before;
}

void handle(int signal, void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    ::sigaction(signal, &action, nullptr);
}

// By who started the program, as nohup does.
bool isIgnored(int signal)
{
    struct sigaction action = {};
    return ::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

} // namespace

SignalWatcher::SignalWatcher()
{
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, sockets.data()) != 0) {
        return; // signals then end the program as usual
    }
    auto *const notifier = new QSocketNotifier(sockets[1], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        char byte = 0;
        waitingSince = 0;
        if (::read(sockets[1], &byte, 1) == 1) {
            Q_EMIT endRequested();
        }
    });
    handle(SIGTERM, onSignal);
    handle(SIGINT, onSignal);
    if (!isIgnored(SIGHUP)) {
        handle(SIGHUP, onSignal);
    }
}

// The handler stays: the program has done its work, and a signal that comes while it goes away
// would give it another exit status. If it does not go away, it is deaf.
SignalWatcher::~SignalWatcher()
{
    for (int &socket : sockets) {
        ::close(std::exchange(socket, -1));
    }
}

} // namespace velmora
