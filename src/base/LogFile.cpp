#include "base/LogFile.h"

#include "base/SystemCalls.h"
#include "base/UniqueFd.h"

#include <QFile>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velmora {
namespace {

constexpr int kAppending = O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
constexpr mode_t kRights = 0666; // less the process's mask

// True for a log whose last line is unfinished because the program was killed while writing it.
// When that cannot be told, an empty line does less harm than two lines in one.
bool endsWithinALine(const QByteArray &path, qint64 size)
{
    const UniqueFd file(::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file) {
        const bool isWriteOnly = errno == EACCES && ::access(path.constData(), R_OK) != 0;
        return !isWriteOnly; // such a log is left as it is
    }
    char last = 0;
    return ::pread(file.get(), &last, 1, size - 1) != 1 || last != '\n';
}

std::error_code appendLine(int file, const QByteArray &path, const QByteArray &line)
{
    const off_t before = ::lseek(file, 0, SEEK_END); // -1 for a pipe
    const bool isOpenLine = before > 0 && endsWithinALine(path, before);
    const std::error_code error = writeAll(file, isOpenLine ? '\n' + line : line);
    if (error && before >= 0) {
        static_cast<void>(::ftruncate(file, before));
    }
    return error;
}

} // namespace

void rotateLog(const QString &path, const QString &oldPath, qint64 limitBytes)
{
    struct stat info = {};
    const QByteArray native = QFile::encodeName(path);
    if (::stat(native.constData(), &info) == 0 && info.st_size > limitBytes) {
        static_cast<void>(std::rename(native.constData(), QFile::encodeName(oldPath).constData()));
    }
}

std::error_code appendToLog(const QString &path, const QByteArray &line)
{
    const QByteArray native = QFile::encodeName(path);
    const UniqueFd file(::open(native.constData(), kAppending, kRights));
    return file ? appendLine(file.get(), native, line) : lastError();
}

} // namespace velmora
