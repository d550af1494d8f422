#include "pictures/PictureFile.h"

#include "base/PictureFormat.h"
#include "pictures/JpegStream.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <utility>

namespace velmora {
namespace {

constexpr qint64 kHeadBytes = 16;                        // enough to tell every format
constexpr qint64 kEnoughBytes = qint64{4} * 1024 * 1024; // for nearly every JPEG

qint64 nanoseconds(const timespec &time)
{
    return qint64{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

std::optional<FileIdentity> identityOf(const struct stat &info)
{
    if (!S_ISREG(info.st_mode)) {
        return std::nullopt;
    }
    return FileIdentity{info.st_dev, info.st_ino, info.st_size, nanoseconds(info.st_mtim),
                        nanoseconds(info.st_ctim)};
}

std::optional<FileIdentity> openedIdentity(const UniqueFd &fd)
{
    struct stat info = {};
    return fd && ::fstat(fd.get(), &info) == 0 ? identityOf(info) : std::nullopt;
}

// Without O_NONBLOCK a pipe that no one writes to would block for ever.
UniqueFd openPicture(const QString &path)
{
    return UniqueFd(
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
}

qint64 readAt(int fd, char *to, qint64 bytes, qint64 offset)
{
    ssize_t got = 0;
    do {
        got = ::pread(fd, to, static_cast<std::size_t>(bytes), offset);
    } while (got < 0 && errno == EINTR);
    return got;
}

// A camera may send any amount of bytes after a picture, or megabytes in which none begins.
bool isEnough(const QByteArray &firstOfJpeg)
{
    return jpegStream(firstOfJpeg) || !mayHoldJpegFrame(firstOfJpeg);
}

} // namespace

std::optional<FileIdentity> fileIdentity(const QString &path)
{
    struct stat info = {};
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? identityOf(info)
                                                                   : std::nullopt;
}

PictureFile::PictureFile(const QString &path)
    : fd_(openPicture(path))
    , identity_(openedIdentity(fd_))
{
}

QByteArray PictureFile::read() const
{
    return tryToRead().value_or(QByteArray());
}

std::optional<QByteArray> PictureFile::tryToRead() const
{
    if (!identity_ || identity_->bytes > kMaxBytes) {
        return QByteArray();
    }
    const std::optional<QByteArray> head = readFirst(kHeadBytes);
    if (!head || pictureFormat(*head).isEmpty()) {
        return head ? QByteArray() : head;
    }
    if (identity_->bytes > kEnoughBytes && pictureFormat(*head) == kJpegFormat) {
        std::optional<QByteArray> first = readFirst(kEnoughBytes);
        if (!first || isEnough(*first)) {
            return first;
        }
    }
    return readFirst(identity_->bytes);
}

// Not mapped: truncating the file while we read would kill the program.
std::optional<QByteArray> PictureFile::readFirst(qint64 bytes) const
{
    QByteArray read(bytes, Qt::Uninitialized);
    qint64 have = 0;
    qint64 got = 1;
    for (; got > 0 && have < bytes; have += qMax<qint64>(got, 0)) {
        got = readAt(fd_.get(), read.data() + have, bytes - have, have);
    }
    read.truncate(have);
    return got < 0 ? std::nullopt : std::optional(std::move(read));
}

} // namespace velmora
