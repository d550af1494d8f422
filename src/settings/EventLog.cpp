#include "settings/EventLog.h"

#include "base/DateText.h"
#include "base/FileError.h"
#include "base/LogRotation.h"
#include "base/SystemCalls.h"
#include "base/UniqueFd.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace velmora {
namespace {

constexpr qint64 kLimitBytes = 64000;
constexpr mode_t kLogMode = 0666; // less the process's mask

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

// Writes the whole line or nothing, in one call where the system takes it so.
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

EventLog::EventLog(const QString &programFolder, const Clock &clock)
    : path_(programFolder + QStringLiteral("/Velmora.log"))
    , oldPath_(programFolder + QStringLiteral("/Velmora.old"))
    , clock_(clock)
{
}

void EventLog::txtDebug(const QString &message)
{
    rotateLog(path_, oldPath_, kLimitBytes);
    const QByteArray line = (timeText(clock_.localNow()) + u' ' + message + u'\n').toUtf8();
    const QByteArray path = QFile::encodeName(path_);
    const UniqueFd file(::open(path.constData(),
                               O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY,
                               kLogMode));
    const std::error_code error = file ? appendLine(file.get(), path, line) : lastError();
    if (error) {
        throw FileError(QStringLiteral("The log file cannot be written"), error);
    }
}

void EventLog::trace(const QString &message)
{
    if (!on_) {
        return;
    }
    try {
        txtDebug(message);
    } catch (const FileError &error) {
        Q_EMIT writeFailed(QString::fromUtf8(error.what()));
    }
}

} // namespace velmora
