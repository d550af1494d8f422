#include "base/FolderFiles.h"

#include "base/SystemCalls.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velmora {

FolderFiles::FolderFiles(const QString &path, FolderLinks links)
    : folder_(::open(QFile::encodeName(path).constData(),
                     O_PATH | O_DIRECTORY | O_CLOEXEC |
                         (links == FolderLinks::Refused ? O_NOFOLLOW : 0)))
{
}

FolderScan FolderFiles::scan(std::size_t bufferBytes) const
{
    return FolderScan(UniqueFd(::openat(folder_.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC)),
                      bufferBytes);
}

FileTime FolderFiles::time(const char *name) const
{
    struct stat info = {};
    FileTime time;
    if (!folder_ || ::fstatat(folder_.get(), name, &info, AT_SYMLINK_NOFOLLOW) != 0) {
        return time;
    }
    time.isLink = S_ISLNK(info.st_mode);
    if (time.isLink && ::fstatat(folder_.get(), name, &info, 0) != 0) {
        return time;
    }
    if (S_ISREG(info.st_mode)) {
        time.modified = std::chrono::seconds{info.st_mtim.tv_sec} +
                        std::chrono::nanoseconds{info.st_mtim.tv_nsec};
    }
    return time;
}

bool FolderFiles::isOnDiskOf(const FolderFiles &other) const
{
    struct stat mine = {};
    struct stat others = {};
    return ::fstat(folder_.get(), &mine) == 0 && ::fstat(other.folder_.get(), &others) == 0 &&
           mine.st_dev == others.st_dev;
}

bool FolderFiles::has(const char *name) const
{
    struct stat info = {};
    return ::fstatat(folder_.get(), name, &info, AT_SYMLINK_NOFOLLOW) == 0;
}

bool FolderFiles::isOnlyName(const char *name) const
{
    struct stat info = {};
    return ::fstatat(folder_.get(), name, &info, AT_SYMLINK_NOFOLLOW) == 0 &&
           S_ISREG(info.st_mode) && info.st_nlink == 1;
}

std::error_code FolderFiles::remove(const char *name) const
{
    struct stat info = {};
    if (::fstatat(folder_.get(), name, &info, AT_SYMLINK_NOFOLLOW) != 0) {
        return lastError();
    }
    if (!S_ISREG(info.st_mode)) {
        return std::make_error_code(std::errc::invalid_argument);
    }
    return ::unlinkat(folder_.get(), name, 0) == 0 ? std::error_code() : lastError();
}

} // namespace velmora
