#include "demo/StopRequests.h"

#include <array>
#include <cerrno>
#include <unistd.h>

namespace velmora::demo {
namespace {

constexpr std::size_t kReadBytes = 4096;

} // namespace

StopRequests::StopRequests(Lifetime lifetime)
{
    connect(&signals_, &SignalWatcher::endRequested, this, &StopRequests::stopRequested);
    if (lifetime == Lifetime::UntilSignalOrStdinCloses) {
        standardInput_ = std::make_unique<QSocketNotifier>(STDIN_FILENO, QSocketNotifier::Read);
        connect(standardInput_.get(), &QSocketNotifier::activated, this,
                &StopRequests::readStandardInput);
    }
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
