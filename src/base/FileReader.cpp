#include "base/FileReader.h"

#include "base/SystemCalls.h"
#include "base/UniqueFd.h"

#include <QFile>

#include <algorithm>
#include <fcntl.h>
#include <sys/stat.h>
#include <utility>

namespace velmora {
namespace {

WholeFile failed(std::errc reason)
{
    return {std::nullopt, std::make_error_code(reason)};
}

} // namespace

WholeFile readExactly(int fd, qint64 size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    qint64 filled = 0;
    while (filled < size) {
        const ssize_t count = readSome(fd, bytes.data() + filled, size - filled);
        if (count <= 0) {
            return {std::nullopt, count < 0 ? lastError() : std::error_code()};
        }
        filled += count;
    }
    return {std::move(bytes), {}};
}

WholeFile readToEnd(int fd, qint64 mostBytes)
{
    constexpr qint64 kPieceBytes = 65536;
    QByteArray bytes;
    while (bytes.size() < mostBytes) {
        const qint64 before = bytes.size();
        bytes.resize(std::min(before + kPieceBytes, mostBytes));
        const ssize_t count = readSome(fd, bytes.data() + before, bytes.size() - before);
        bytes.truncate(before + std::max<ssize_t>(count, 0));
        if (count <= 0) {
            return count < 0 ? WholeFile{std::nullopt, lastError()}
                             : WholeFile{std::move(bytes), {}};
        }
    }
    return {std::move(bytes), {}};
}

WholeFile readWholeFile(const QString &path, qint64 mostBytes)
{
    const UniqueFd file(
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat info = {};
    if (!file || ::fstat(file.get(), &info) != 0) {
        return {std::nullopt, lastError()};
    }
    if (!S_ISREG(info.st_mode)) {
        return failed(std::errc::invalid_argument);
    }
    if (info.st_size > mostBytes) {
        return failed(std::errc::file_too_large);
    }
    WholeFile whole = readExactly(file.get(), info.st_size);
    char beyond = 0;
    if (whole.bytes) {
        const ssize_t count = readSome(file.get(), &beyond, 1);
        return count == 0  ? whole
               : count < 0 ? WholeFile{std::nullopt, lastError()}
                           : failed(std::errc::resource_unavailable_try_again);
    }
    return whole.error ? whole : failed(std::errc::resource_unavailable_try_again);
}

} // namespace velmora
