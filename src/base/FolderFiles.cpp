#include "base/FolderFiles.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>

namespace velmora {

FolderFiles::FolderFiles(const QString &path)
    : folder_(::open(QFile::encodeName(path).constData(), O_PATH | O_DIRECTORY | O_CLOEXEC))
{
}

std::optional<std::chrono::nanoseconds> FolderFiles::modified(const char *name) const
{
    struct stat info = {};
    if (!folder_ || ::fstatat(folder_.get(), name, &info, 0) != 0 || !S_ISREG(info.st_mode)) {
        return std::nullopt;
    }
    return std::chrono::seconds{info.st_mtim.tv_sec} +
           std::chrono::nanoseconds{info.st_mtim.tv_nsec};
}

} // namespace velmora
