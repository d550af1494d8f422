#include "base/FileDates.h"

#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>

namespace velmora {
namespace {

std::optional<WallTime> wallTime(std::time_t seconds)
{
    std::tm wall = {};
    if (::localtime_r(&seconds, &wall) == nullptr) {
        return std::nullopt;
    }
    return WallTime{std::chrono::seconds{seconds + wall.tm_gmtoff}};
}

} // namespace

std::optional<WallTime> modificationTime(const QByteArray &nativePath)
{
    struct stat info = {};
    return ::stat(nativePath.constData(), &info) == 0 ? wallTime(info.st_mtim.tv_sec)
                                                      : std::nullopt;
}

std::optional<WallTime> creationTime(const QByteArray &nativePath)
{
    struct statx info = {};
    if (::statx(AT_FDCWD, nativePath.constData(), 0, STATX_BTIME | STATX_MTIME, &info) != 0) {
        return std::nullopt;
    }
    return wallTime((info.stx_mask & STATX_BTIME) != 0 ? info.stx_btime.tv_sec
                                                       : info.stx_mtime.tv_sec);
}

} // namespace velmora
