#include "base/ProfileFile.h"

#include "base/FileWriter.h"
#include "base/ProfileText.h"
#include "base/UniqueFd.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace velmora {
namespace {

// A write within one page of the page cache is whole or absent, after a kill and on a full disk
// alike. Replacing the file costs a hundred times as much, and a pass writes several values for
// each camera.
constexpr qsizetype kPageBytes = 4096;
constexpr mode_t kAnyWriter = 0222;

struct stat fileInfo(const QString &path)
{
    struct stat info = {};
    if (::stat(QFile::encodeName(path).constData(), &info) != 0) {
        info = {};
    }
    return info;
}

// Nothing when the file is shorter than it was said to be, or cannot be read.
std::optional<QByteArray> readAll(int fd, qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    qsizetype filled = 0;
    while (filled < size) {
        const ssize_t got =
            ::read(fd, bytes.data() + filled, static_cast<std::size_t>(size - filled));
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            break;
        }
        filled += got;
    }
    return filled == size ? std::optional(std::move(bytes)) : std::nullopt;
}

// The whole text; empty when there is no file, nothing when there is one that cannot be read: a
// text that is not known must not be written over.
std::optional<QByteArray> readWhole(const QString &path)
{
    // Without O_NONBLOCK a pipe of that name would wait for a writer.
    const UniqueFd file(
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file) {
        return errno == ENOENT ? std::optional(QByteArray()) : std::nullopt;
    }
    struct stat info = {};
    if (::fstat(file.get(), &info) != 0 || !S_ISREG(info.st_mode)) {
        return std::nullopt;
    }
    return readAll(file.get(), info.st_size);
}

bool fitsInPlace(const ProfileEdit &edit, qsizetype fileSize)
{
    const qsizetype length = edit.inserted.size();
    const bool keepsLength = length == edit.removed && length > 0;
    const bool appends = edit.removed == 0 && edit.offset == fileSize && fileSize > 0;
    return (keepsLength || appends) &&
           edit.offset / kPageBytes == (edit.offset + length - 1) / kPageBytes;
}

bool writeInPlace(const QString &path, const ProfileEdit &edit)
{
    const UniqueFd file(::open(QFile::encodeName(path).constData(), O_WRONLY | O_CLOEXEC));
    const auto length = static_cast<std::size_t>(edit.inserted.size());
    return file && ::pwrite(file.get(), edit.inserted.constData(), length, edit.offset) ==
                       static_cast<ssize_t>(length);
}

QByteArray applied(QByteArray bytes, const ProfileEdit &edit)
{
    return bytes.replace(edit.offset, edit.removed, edit.inserted);
}

QByteArrayView withoutTrailingBlanks(QByteArrayView text)
{
    while (!text.isEmpty() && text.back() == ' ') {
        text.chop(1);
    }
    return text;
}

} // namespace

QByteArray readProfile(const QString &path)
{
    return readWhole(path).value_or(QByteArray());
}

QByteArray readProfileValue(const QString &path, QByteArrayView section, QByteArrayView key,
                            QByteArrayView fallback, qsizetype size)
{
    const QByteArray bytes = readProfile(path);
    const QByteArrayView value =
        findProfileValue(bytes, section, key).value_or(withoutTrailingBlanks(fallback));
    return value.first(qMin(value.size(), size - 1)).toByteArray();
}

ProfileWrite writeProfileValue(const QString &path, QByteArrayView section, QByteArrayView key,
                               std::optional<QByteArrayView> value)
{
    std::optional<QByteArray> bytes = readWhole(path);
    if (!bytes) {
        return ProfileWrite::Failed;
    }
    const ProfileText text(std::move(*bytes));
    const ProfileEdit edit = text.edit(section, key, value);
    if (edit.isEmpty()) {
        return ProfileWrite::Unchanged;
    }
    const mode_t mode = fileInfo(path).st_mode;
    if (mode != 0 && (mode & kAnyWriter) == 0) {
        return ProfileWrite::Failed;
    }
    const bool written = fitsInPlace(edit, text.bytes().size())
                             ? writeInPlace(path, edit)
                             : !replaceFile(path, applied(text.bytes(), edit));
    return written ? ProfileWrite::Written : ProfileWrite::Failed;
}

} // namespace velmora
