#include "base/SystemCalls.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>

namespace velmora {

std::error_code lastError()
{
    return {errno, std::generic_category()};
}

std::error_code writeAll(int fd, QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        const ssize_t written = ::write(fd, bytes.data(), static_cast<std::size_t>(bytes.size()));
        if (written < 0 && errno != EINTR) {
            return lastError();
        }
        bytes = bytes.sliced(std::max<ssize_t>(written, 0));
    }
    return {};
}

} // namespace velmora
