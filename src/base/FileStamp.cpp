#include "base/FileStamp.h"

#include <QFile>

#include <algorithm>

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

std::optional<FileStamp> stampOfKind(const QString &path, mode_t kind)
{
    struct stat info = {};
    if (::stat(QFile::encodeName(path).constData(), &info) != 0 ||
        (info.st_mode & S_IFMT) != kind) {
        return std::nullopt;
    }
    return stampOf(info);
}

} // namespace

FileStamp stampOf(const struct stat &info)
{
    return {info.st_dev, info.st_ino, info.st_size, since1970(info.st_mtim),
            since1970(info.st_ctim)};
}

std::optional<FileStamp> folderStamp(const QString &path)
{
    return stampOfKind(path, S_IFDIR);
}

std::optional<FileStamp> fileStamp(const QString &path)
{
    return stampOfKind(path, S_IFREG);
}

std::optional<FileStamp> fileStamp(int file)
{
    struct stat info = {};
    return ::fstat(file, &info) == 0 && S_ISREG(info.st_mode) ? std::optional(stampOf(info))
                                                              : std::nullopt;
}

bool tellsChanges(const FileStamp &stamp, std::chrono::nanoseconds readBegan)
{
    const bool coarse = stamp.modified % 1s == 0ns && stamp.changed % 1s == 0ns;
    return std::max(stamp.modified, stamp.changed) < readBegan - (coarse ? kCoarseTick : kTick);
}

} // namespace velmora
