#include "pictures/PictureFile.h"

#include "base/PictureFormat.h"
#include "base/SystemCalls.h"
#include "pictures/JpegStream.h"

#include <QFile>

#include <fcntl.h>
#include <utility>

namespace velmora {
namespace {

constexpr qint64 kHeadBytes = 16;                        // enough to tell every format
constexpr qint64 kEnoughBytes = qint64{4} * 1024 * 1024; // for nearly every JPEG

// Without O_NONBLOCK a pipe that no one writes to would block for ever.
UniqueFd openPicture(const QString &path)
{
    return UniqueFd(
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
}

// A camera may send any amount of bytes after a picture, or megabytes in which none begins.
bool isEnough(const QByteArray &firstOfJpeg)
{
    return jpegStream(firstOfJpeg) || !mayHoldJpegFrame(firstOfJpeg);
}

} // namespace

PictureFile::PictureFile(const QString &path)
    : fd_(openPicture(path))
    , stamp_(fileStamp(fd_.get()))
{
}

QByteArray PictureFile::read() const
{
    return tryToRead().value_or(QByteArray());
}

std::optional<QByteArray> PictureFile::tryToRead() const
{
    if (!stamp_ || stamp_->bytes > kMaxBytes) {
        return QByteArray();
    }
    const std::optional<QByteArray> head = readFirst(kHeadBytes);
    if (!head || pictureFormat(*head).isEmpty()) {
        return head ? QByteArray() : head;
    }
    if (stamp_->bytes > kEnoughBytes && pictureFormat(*head) == kJpegFormat) {
        std::optional<QByteArray> first = readFirst(kEnoughBytes);
        if (!first || isEnough(*first)) {
            return first;
        }
    }
    return readFirst(stamp_->bytes);
}

// Not mapped: truncating the file while we read would kill the program.
std::optional<QByteArray> PictureFile::readFirst(qint64 bytes) const
{
    QByteArray read(bytes, Qt::Uninitialized);
    qint64 have = 0;
    qint64 got = 1;
    for (; got > 0 && have < bytes; have += qMax<qint64>(got, 0)) {
        got = readSomeAt(fd_.get(), read.data() + have, bytes - have, have);
    }
    read.truncate(have);
    return got < 0 ? std::nullopt : std::optional(std::move(read));
}

} // namespace velmora
