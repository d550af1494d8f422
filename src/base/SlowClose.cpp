#include "base/SlowClose.h"

#include <algorithm>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace velmora {
namespace {

constexpr off_t kPartBytes = off_t{4} * 1024 * 1024;

// Bytes of a file that is gone with its descriptor; 0 for one that still has a name.
off_t goneBytes(int file)
{
    struct stat info = {};
    const bool isGone = ::fstat(file, &info) == 0 && S_ISREG(info.st_mode) && info.st_nlink == 0;
    return isGone ? info.st_size : 0;
}

} // namespace

SlowClose::SlowClose()
{
    QObject::connect(&turns_, &QTimer::timeout, &turns_, [this] { shortenFirst(); });
}

void SlowClose::take(UniqueFd file)
{
    if (goneBytes(file.get()) > kPartBytes) {
        files_.push_back(std::move(file));
        turns_.start(0);
    }
}

void SlowClose::shortenFirst()
{
    const int file = files_.front().get();
    const off_t bytes = goneBytes(file);
    if (bytes <= kPartBytes || ::ftruncate(file, bytes - kPartBytes) != 0) {
        files_.pop_front();
    }
    if (files_.empty()) {
        turns_.stop();
    }
}

} // namespace velmora
