#include "base/FolderStamp.h"

#include <QFile>

#include <algorithm>
#include <sys/stat.h>

namespace velmora {
namespace {

using namespace std::chrono_literals;

// Several ticks of the slowest system clock (10 ms); some file systems keep even seconds only.
constexpr std::chrono::nanoseconds kTick = 100ms;
constexpr std::chrono::nanoseconds kCoarseTick = 2s;

std::chrono::nanoseconds since1970(const timespec &time)
{
    return std::chrono::seconds{time.tv_sec} + std::chrono::nanoseconds{time.tv_nsec};
}

std::optional<FolderStamp> stampOf(const QString &path, mode_t kind)
{
    struct stat info = {};
    if (::stat(QFile::encodeName(path).constData(), &info) != 0 ||
        (info.st_mode & S_IFMT) != kind) {
        return std::nullopt;
    }
    return FolderStamp{info.st_dev, info.st_ino, info.st_size, since1970(info.st_mtim),
                       since1970(info.st_ctim)};
}

} // namespace

std::optional<FolderStamp> folderStamp(const QString &path)
{
    return stampOf(path, S_IFDIR);
}

std::optional<FolderStamp> fileStamp(const QString &path)
{
    return stampOf(path, S_IFREG);
}

bool tellsChanges(const FolderStamp &stamp, std::chrono::nanoseconds readBegan)
{
    const bool coarse = stamp.modified % 1s == 0ns && stamp.changed % 1s == 0ns;
    return std::max(stamp.modified, stamp.changed) < readBegan - (coarse ? kCoarseTick : kTick);
}

} // namespace velmora
