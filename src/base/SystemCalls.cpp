#include "base/SystemCalls.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>

namespace velmora {

std::error_code lastError()
{
    return {errno, std::generic_category()};
}

QByteArray descriptorPath(int fd)
{
    return "/proc/self/fd/" + QByteArray::number(fd);
}

namespace {

// read: returns the number of bytes read, or -1.
template <typename Read>
ssize_t uninterrupted(Read read)
{
    ssize_t count = -1;
    do {
        count = read();
    } while (count < 0 && errno == EINTR);
    return count;
}

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

ssize_t readSome(int fd, char *to, qint64 most)
{
    return uninterrupted([=] { return ::read(fd, to, static_cast<std::size_t>(most)); });
}

ssize_t readSomeAt(int fd, char *to, qint64 most, qint64 offset)
{
    return uninterrupted([=] { return ::pread(fd, to, static_cast<std::size_t>(most), offset); });
}

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
