#include "base/FolderScan.h"

#include "base/SystemCalls.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace velmora {
namespace {

// A folder of such a name does not exist; any other error says nothing about that.
bool meansMissing(int error)
{
    return error == ENOENT || error == ENOTDIR || error == ENAMETOOLONG;
}

} // namespace

FolderScan::FolderScan(const QString &path, std::size_t bufferBytes)
    : FolderScan(UniqueFd(-1), bufferBytes)
{
    const QByteArray native = QFile::encodeName(path);
    folder_ = UniqueFd(::open(native.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder_ && !meansMissing(errno)) {
        error_ = lastError();
    }
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
    if (read < 0) {
        error_ = lastError();
    }
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
