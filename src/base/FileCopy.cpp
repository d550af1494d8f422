#include "base/FileCopy.h"

#include "base/SystemCalls.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <linux/fs.h>
#include <string>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>
#include <utility>

namespace velmora {
namespace {

constexpr unsigned kRights = 0777;
constexpr qint64 kBufferBytes = qint64{256} * 1024;

// Errors that mean the bytes must pass through the program.
bool meansNoCopyOfItsOwn(int error)
{
    return error == EXDEV || error == EINVAL || error == ENOSYS || error == EOPNOTSUPP ||
           error == EPERM || error == EACCES || error == ETXTBSY;
}

class ChangedCategory final : public std::error_category
{
public:
    [[nodiscard]] const char *name() const noexcept override { return "copy"; }

    [[nodiscard]] std::string message(int) const override
    {
        return "the file changed while it was copied";
    }
};

std::error_code changedMeanwhile()
{
    static const ChangedCategory category;
    return {1, category};
}

} // namespace

// Non-blocking: a pipe may have taken the file's place since it was listed.
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
        modified_ = info.st_mtim;
        openTarget(targetFolder, info.st_mode & kRights);
    }
}

// An unnamed file is made in the target folder itself, which may be on a different disk than the
// folder for working files; then a named one is, too.
void FileCopy::openTarget(const QByteArray &folder, unsigned mode)
{
    if (means_.unnamedFiles) {
        target_ = std::make_unique<WorkFile>(folder, mode, WorkFile::Naming::Refused);
        means_.unnamedFiles = !meansNoNamelessFiles(target_->error());
    }
    if (!means_.unnamedFiles) {
        target_ = std::make_unique<WorkFile>(
            WorkFile::inMadeFolder(means_.workFolder, mode, WorkFile::Naming::AtOnce));
        if (!target_->error() && !target_->isOnDiskOf(folder)) {
            target_ = std::make_unique<WorkFile>(folder, mode, WorkFile::Naming::AtOnce);
        }
    }
    error_ = target_->error();
}

bool FileCopy::clone()
{
    if (!means_.clones) {
        return false;
    }
    means_.clones = ::ioctl(target_->fd(), FICLONE, source_.get()) == 0;
    return means_.clones;
}

// Refused up front rather than by filling the disk; some files of the system claim to be endless.
void FileCopy::refuseWhatDoesNotFit()
{
    struct statvfs disk = {};
    if (::fstatvfs(target_->fd(), &disk) == 0 && disk.f_blocks > 0 &&
        static_cast<quint64>(bytes_) / disk.f_frsize > disk.f_bfree) {
        error_ = std::make_error_code(std::errc::no_space_on_device);
    }
}

// Fewer bytes than the file has are not all of it, whatever kept the rest from being read.
void FileCopy::refuseWhatHasChanged()
{
    struct stat now = {};
    if (::fstat(source_.get(), &now) != 0) {
        error_ = lastError();
    } else if (now.st_size != bytes_ || now.st_mtim.tv_sec != modified_.tv_sec ||
               now.st_mtim.tv_nsec != modified_.tv_nsec || copied_ < bytes_) {
        error_ = changedMeanwhile();
    }
}

// False when nothing is left to be copied.
bool FileCopy::begin()
{
    if (clone()) {
        copied_ = bytes_;
        refuseWhatHasChanged();
        return false;
    }
    refuseWhatDoesNotFit();
    return !error_;
}

bool FileCopy::copySome(qint64 mostBytes)
{
    if (error_ || (!std::exchange(begun_, true) && !begin())) {
        return false;
    }
    const qint64 left = bytes_ > 0 ? bytes_ - copied_ : kMostBytes;
    const qint64 count = copyPiece(std::min({left, mostBytes, kMostBytes}));
    if (count < 0) {
        error_ = lastError();
        return false;
    }
    copied_ += count;
    const bool isMoreLeft = count > 0 && (bytes_ == 0 || copied_ < bytes_);
    if (!isMoreLeft) {
        refuseWhatHasChanged();
    }
    return isMoreLeft;
}

// Where the system reports nothing to copy, the file may still have something to read.
qint64 FileCopy::copyPiece(qint64 mostBytes)
{
    while (means_.copiesItself) {
        const ssize_t count = ::copy_file_range(source_.get(), nullptr, target_->fd(), nullptr,
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
    const ssize_t count =
        readSome(source_.get(), means_.buffer.get(), std::min(mostBytes, kBufferBytes));
    const bool failed = count > 0 && target_->write({means_.buffer.get(), count});
    return failed ? -1 : count;
}

StoreResult FileCopy::finish(const QByteArray &target)
{
    if (error_) {
        return {StoreOutcome::Failed, error_};
    }
    const StoreResult result = storeResult(target_->appearAs(target));
    error_ = result.error;
    return result;
}

} // namespace velmora
