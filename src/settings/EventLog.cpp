#include "settings/EventLog.h"

#include "base/DateText.h"
#include "base/FileError.h"
#include "base/LogFile.h"

namespace velmora {
namespace {

constexpr qint64 kLimitBytes = 64000;

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
    const std::error_code error = appendToLog(path_, line);
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
