#include "base/HiddenFile.h"

#include "base/FileWriter.h"
#include "base/SystemCalls.h"

#include <QFile>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velmora {
namespace {

constexpr mode_t kMode = 0666;

bool meansNoUnnamedFiles(int error)
{
    return error == EOPNOTSUPP || error == EISDIR || error == EINVAL;
}

} // namespace

HiddenFile::HiddenFile(const QString &folder)
    : folder_(QFile::encodeName(folder))
    , fd_(std::make_unique<UniqueFd>(
          ::open(folder_.constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, kMode)))
{
    if (*fd_) {
        return;
    }
    error_ = lastError();
    if (meansNoUnnamedFiles(error_.value())) {
        openNamed();
    }
}

HiddenFile::~HiddenFile()
{
    if (!workFile_.isEmpty()) {
        ::unlink(workFile_.constData());
    }
}

void HiddenFile::openNamed()
{
    workFile_ = workFileName(folder_);
    fd_ = std::make_unique<UniqueFd>(
        ::open(workFile_.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, kMode));
    error_ = *fd_ ? std::error_code() : lastError();
    if (error_) {
        workFile_.clear();
    }
}

QByteArray HiddenFile::pathForHeir() const
{
    return workFile_.isEmpty() ? "/proc/self/fd/" + QByteArray::number(descriptor()) : workFile_;
}

qint64 HiddenFile::bytes() const
{
    struct stat info = {};
    return fd_ && ::fstat(fd_->get(), &info) == 0 ? info.st_size : 0;
}

std::error_code HiddenFile::nameAs(const QByteArray &path) const
{
    const QByteArray handle = "/proc/self/fd/" + QByteArray::number(descriptor());
    const int result =
        ::linkat(AT_FDCWD, handle.constData(), AT_FDCWD, path.constData(), AT_SYMLINK_FOLLOW);
    return result == 0 ? std::error_code() : lastError();
}

// A name that is taken is taken over in one step, so that there is the old file or the new one at
// every instant; a file without a name needs one for that first.
std::error_code HiddenFile::finish(const QByteArray &target)
{
    if (workFile_.isEmpty()) {
        const std::error_code error = nameAs(target);
        if (error != std::errc::file_exists) {
            return error;
        }
        const QByteArray named = workFileName(folder_);
        if (const std::error_code failure = nameAs(named)) {
            return failure;
        }
        workFile_ = named;
    }
    if (::rename(workFile_.constData(), target.constData()) != 0) {
        return lastError();
    }
    workFile_.clear();
    return {};
}

} // namespace velmora
