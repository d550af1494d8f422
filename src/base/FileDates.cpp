#include "base/FileDates.h"

#include <ctime>
#include <sys/stat.h>

namespace velmora {

std::optional<WallTime> modificationTime(const QByteArray &nativePath)
{
    struct stat info = {};
    std::tm wall = {};
    if (::stat(nativePath.constData(), &info) != 0 ||
        ::localtime_r(&info.st_mtim.tv_sec, &wall) == nullptr) {
        return std::nullopt;
    }
    return WallTime{std::chrono::seconds{info.st_mtim.tv_sec + wall.tm_gmtoff}};
}

} // namespace velmora
