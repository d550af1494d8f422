#include "base/FolderScan.h"

#include <QFile>

#include <algorithm>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace velmora {

FolderScan::FolderScan(const QString &path, std::size_t bufferBytes)
    : FolderScan(
          UniqueFd(::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)),
          bufferBytes)
{
}

FolderScan::FolderScan(UniqueFd folder, std::size_t bufferBytes)
    : folder_(std::move(folder))
    , bufferBytes_(bufferBytes)
    , buffer_(std::make_unique_for_overwrite<std::byte[]>(bufferBytes))
{
}

bool FolderScan::fill()
{
    const long read =
        folder_ ? ::syscall(SYS_getdents64, folder_.get(), buffer_.get(), bufferBytes_) : 0;
    failed_ = failed_ || read < 0;
    at_ = 0;
    filled_ = std::max(read, 0L);
    return read > 0;
}

bool FolderScan::leadsTo(unsigned char type, const Record &entry) const
{
    struct stat info = {};
    return ::fstatat(folder_.get(), entry.name, &info, 0) == 0 && IFTODT(info.st_mode) == type;
}

} // namespace velmora
