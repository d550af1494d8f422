#include "base/FolderScan.h"

#include <QFile>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace velmora {

FolderScan::FolderScan(const QString &path, std::size_t bufferBytes)
    : folder_(::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    , buffer_(bufferBytes)
{
}

long FolderScan::fill()
{
    return folder_ ? ::syscall(SYS_getdents64, folder_.get(), buffer_.data(), buffer_.size()) : 0;
}

bool FolderScan::isFile(const Record &entry) const
{
    if (entry.type != DT_LNK && entry.type != DT_UNKNOWN) {
        return entry.type == DT_REG;
    }
    struct stat info = {};
    return ::fstatat(folder_.get(), entry.name, &info, 0) == 0 && S_ISREG(info.st_mode);
}

} // namespace velmora
