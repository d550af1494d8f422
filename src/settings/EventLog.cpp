#include "settings/EventLog.h"

#include "base/DateText.h"
#include "base/FileError.h"
#include "base/UniqueFd.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

namespace velmora {
namespace {

constexpr qint64 kLimitBytes = 64000;
constexpr mode_t kLogMode = 0644;

QString timeOfDay(WallTime time)
{
    const WallFields at = wallFields(time);
    return twoDigits(at.hour) + u':' + twoDigits(at.minute) + u':' + twoDigits(at.second);
}

} // namespace

EventLog::EventLog(const QString &programFolder, const Clock &clock)
    : path_(programFolder + QStringLiteral("/Velmora.log"))
    , oldPath_(programFolder + QStringLiteral("/Velmora.old"))
    , clock_(clock)
{
}

void EventLog::rotate()
{
    struct stat info = {};
    const QByteArray path = QFile::encodeName(path_);
    if (::stat(path.constData(), &info) == 0 && info.st_size > kLimitBytes) {
        ::rename(path.constData(),
                 QFile::encodeName(oldPath_).constData()); // failing, the log grows on
    }
}

void EventLog::txtDebug(const QString &message)
{
    rotate();
    const QByteArray line = (timeOfDay(clock_.localNow()) + u' ' + message + u'\n').toUtf8();
    const UniqueFd file(::open(QFile::encodeName(path_).constData(),
                               O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK, kLogMode));
    const ssize_t written =
        file ? ::write(file.get(), line.constData(), static_cast<std::size_t>(line.size())) : -1;
    if (written != line.size()) {
        const int reason = written < 0 ? errno : ENOSPC; // a line cut short means a full disk
        throw FileError(QStringLiteral("The log file cannot be written"),
                        std::error_code(reason, std::generic_category()));
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
