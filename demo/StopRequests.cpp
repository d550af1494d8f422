#include "demo/StopRequests.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <sys/signalfd.h>
#include <unistd.h>

namespace velmora::demo {
namespace {

constexpr std::size_t kReadBytes = 4096;

sigset_t stopSignals()
{
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGTERM);
    sigaddset(&set, SIGINT);
    return set;
}

} // namespace

void StopRequests::holdSignals()
{
    // A shell starts background programs with SIGINT ignored, and an ignored signal is never held.
    static_cast<void>(std::signal(SIGTERM, SIG_DFL));
    static_cast<void>(std::signal(SIGINT, SIG_DFL));
    const sigset_t set = stopSignals();
    sigprocmask(SIG_BLOCK, &set, nullptr);
}

StopRequests::StopRequests(Lifetime lifetime)
{
    const sigset_t set = stopSignals();
    signalFd_ = ::signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK);
    signals_ = std::make_unique<QSocketNotifier>(signalFd_, QSocketNotifier::Read);
    connect(signals_.get(), &QSocketNotifier::activated, this, [this] {
        signals_->setEnabled(false);
        Q_EMIT stopRequested();
    });
    if (lifetime == Lifetime::UntilSignalOrStdinCloses) {
        standardInput_ = std::make_unique<QSocketNotifier>(STDIN_FILENO, QSocketNotifier::Read);
        connect(standardInput_.get(), &QSocketNotifier::activated, this,
                &StopRequests::readStandardInput);
    }
}

StopRequests::~StopRequests()
{
    signals_.reset();
    ::close(signalFd_);
}

void StopRequests::readStandardInput()
{
    std::array<char, kReadBytes> ignored = {};
    const ssize_t count = ::read(STDIN_FILENO, ignored.data(), ignored.size());
    const bool tryAgain = count < 0 && (errno == EINTR || errno == EAGAIN);
    if (count <= 0 && !tryAgain) {
        standardInput_->setEnabled(false);
        Q_EMIT stopRequested();
    }
}

} // namespace velmora::demo
