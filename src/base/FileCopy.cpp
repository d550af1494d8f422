#include "base/FileCopy.h"

#include "base/Folders.h"
#include "base/SystemCalls.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>
#include <utility>

namespace velmora {
namespace {

constexpr unsigned kRights = 0777;
constexpr qint64 kBufferBytes = qint64{256} * 1024;

// What a file system answers that cannot keep a file without a name.
bool meansNoUnnamedFiles(int error)
{
    return error == EOPNOTSUPP || error == EISDIR || error == EINVAL;
}

// What is answered where the bytes must pass through the program.
bool meansNoCopyOfItsOwn(int error)
{
    return error == EXDEV || error == EINVAL || error == ENOSYS || error == EOPNOTSUPP ||
           error == EPERM || error == EACCES || error == ETXTBSY;
}

} // namespace

// Without waiting: a pipe may have taken the file's place since it was listed.
FileCopy::FileCopy(const QByteArray &source, const QByteArray &targetFolder, CopyMeans &means)
    : means_(means)
    , source_(::open(source.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY))
{
    struct stat info = {};
    if (!source_ || ::fstat(source_.get(), &info) != 0) {
        error_ = lastError();
    } else if (!S_ISREG(info.st_mode)) {
        error_ = std::make_error_code(std::errc::invalid_argument);
    } else {
        bytes_ = info.st_size;
        openTarget(targetFolder, info.st_mode & kRights);
    }
}

FileCopy::~FileCopy()
{
    if (!workFile_.isEmpty()) {
        ::unlink(workFile_.constData());
    }
}

void FileCopy::openTarget(const QByteArray &folder, unsigned mode)
{
    if (means_.unnamedFiles) {
        target_ = std::make_unique<UniqueFd>(
            ::open(folder.constData(), O_TMPFILE | O_WRONLY | O_CLOEXEC, mode));
        error_ = *target_ ? std::error_code() : lastError();
        means_.unnamedFiles = *target_ || !meansNoUnnamedFiles(error_.value());
    }
    if (!means_.unnamedFiles) {
        openWorkFile(mode);
    }
}

void FileCopy::openWorkFile(unsigned mode)
{
    const auto open = [this, mode] {
        workFile_ = workFileName(means_.workFolder);
        target_ = std::make_unique<UniqueFd>(
            ::open(workFile_.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
        error_ = *target_ ? std::error_code() : lastError();
    };
    open();
    if (error_ == std::errc::no_such_file_or_directory &&
        !makeFolder(QFile::decodeName(means_.workFolder))) {
        open();
    }
    if (error_) {
        workFile_.clear();
    }
}

bool FileCopy::clone()
{
    if (!means_.clones) {
        return false;
    }
    means_.clones = ::ioctl(target_->get(), FICLONE, source_.get()) == 0;
    return means_.clones;
}

// Sooner than by filling the disk first; some files of the system say that they are endless.
void FileCopy::refuseWhatDoesNotFit()
{
    struct statvfs disk = {};
    if (::fstatvfs(target_->get(), &disk) == 0 && disk.f_blocks > 0 &&
        static_cast<quint64>(bytes_) / disk.f_frsize > disk.f_bfree) {
        error_ = std::make_error_code(std::errc::no_space_on_device);
    }
}

bool FileCopy::copySome(qint64 mostBytes)
{
    if (error_) {
        return false;
    }
    if (!std::exchange(begun_, true)) {
        if (clone()) {
            return false;
        }
        refuseWhatDoesNotFit();
        if (error_) {
            return false;
        }
    }
    const qint64 left = bytes_ > 0 ? bytes_ - copied_ : kMostBytes;
    const qint64 count = copyPiece(std::min({left, mostBytes, kMostBytes}));
    if (count < 0) {
        error_ = lastError();
        return false;
    }
    copied_ += count;
    return count > 0 && (bytes_ == 0 || copied_ < bytes_);
}

// Where the system says at once that there is nothing, a file may still give something to read.
qint64 FileCopy::copyPiece(qint64 mostBytes)
{
    while (means_.copiesItself) {
        const ssize_t count = ::copy_file_range(source_.get(), nullptr, target_->get(), nullptr,
                                                static_cast<std::size_t>(mostBytes), 0);
        if (count > 0) {
            return count;
        }
        if (count == 0) {
            break;
        }
        if (errno != EINTR && !meansNoCopyOfItsOwn(errno)) {
            return -1;
        }
        means_.copiesItself = errno == EINTR;
    }
    return copyThroughBuffer(mostBytes);
}

qint64 FileCopy::copyThroughBuffer(qint64 mostBytes)
{
    if (!means_.buffer) {
        means_.buffer = std::make_unique_for_overwrite<char[]>(kBufferBytes);
    }
    ssize_t count = -1;
    do {
        count = ::read(source_.get(), means_.buffer.get(),
                       static_cast<std::size_t>(std::min(mostBytes, kBufferBytes)));
    } while (count < 0 && errno == EINTR);
    const bool failed = count > 0 && writeAll(target_->get(), {means_.buffer.get(), count});
    return failed ? -1 : count;
}

StoreResult FileCopy::finish(const QByteArray &target)
{
    if (error_) {
        return {StoreOutcome::Failed, error_};
    }
    const std::error_code error = workFile_.isEmpty() ? nameUnnamed(target) : nameWorkFile(target);
    if (error == std::errc::file_exists) {
        return {StoreOutcome::AlreadyThere, {}};
    }
    error_ = error;
    return {error ? StoreOutcome::Failed : StoreOutcome::Stored, error};
}

// Older systems give a file a name by its handle to administrators alone.
std::error_code FileCopy::nameUnnamed(const QByteArray &target)
{
    if (means_.namesByHandle &&
        ::linkat(target_->get(), "", AT_FDCWD, target.constData(), AT_EMPTY_PATH) == 0) {
        return {};
    }
    if (means_.namesByHandle && errno != ENOENT && errno != EPERM) {
        return lastError();
    }
    const QByteArray handle = "/proc/self/fd/" + QByteArray::number(target_->get());
    if (::linkat(AT_FDCWD, handle.constData(), AT_FDCWD, target.constData(), AT_SYMLINK_FOLLOW) !=
        0) {
        return lastError();
    }
    means_.namesByHandle = false;
    return {};
}

// A network file system may tell only now that its disk is full.
std::error_code FileCopy::nameWorkFile(const QByteArray &target)
{
    if (::close(::dup(target_->get())) != 0) {
        return lastError();
    }
    const std::error_code error = renameToNew(workFile_, target);
    if (!error) {
        workFile_.clear();
    }
    return error;
}

} // namespace velmora
