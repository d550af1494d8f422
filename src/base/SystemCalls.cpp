#include "base/SystemCalls.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>

namespace velmora {

std::error_code lastError()
{
    return {errno, std::generic_category()};
}

namespace {

// write: passes the next bytes to the system and returns the number taken, or -1.
template <typename Write>
std::error_code untilAllAreWritten(QByteArrayView bytes, Write write)
{
    while (!bytes.isEmpty()) {
        const ssize_t written = write(bytes);
        if (written == 0) {
            return std::make_error_code(std::errc::no_space_on_device);
        }
        if (written < 0 && errno != EINTR) {
            return lastError();
        }
        bytes = bytes.sliced(std::max<ssize_t>(written, 0));
    }
    return {};
}

} // namespace

std::error_code writeAll(int fd, QByteArrayView bytes)
{
    return untilAllAreWritten(bytes, [fd](QByteArrayView rest) {
        return ::write(fd, rest.data(), static_cast<std::size_t>(rest.size()));
    });
}

std::error_code writeAllAt(int fd, QByteArrayView bytes, qint64 offset)
{
    const qint64 end = offset + bytes.size();
    return untilAllAreWritten(bytes, [fd, end](QByteArrayView rest) {
        return ::pwrite(fd, rest.data(), static_cast<std::size_t>(rest.size()), end - rest.size());
    });
}

} // namespace velmora
