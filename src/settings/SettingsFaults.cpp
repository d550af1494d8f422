#include "settings/SettingsFaults.h"

#include "base/FileStamp.h"
#include "base/ProfileCache.h"
#include "base/ProfileFile.h"
#include "settings/SettingsFile.h"

#include <QLocale>

namespace velmora {
namespace {

QString resultOfSize(qint64 bytes)
{
    if (bytes > kMostReadBytes) {
        return QStringLiteral("nothing of it is read");
    }
    return bytes > kMostProfileBytes
               ? QStringLiteral("no change of a setting is stored in it any more")
               : QStringLiteral("every change of a setting takes its time");
}

} // namespace

std::optional<QString> readingFault(const SettingsFile &settings)
{
    const std::error_code error = profileFault(settings.path());
    return error ? std::optional(QStringLiteral("The settings file %1 cannot be read: %2")
                                     .arg(settings.path(), QString::fromStdString(error.message())))
                 : std::nullopt;
}

std::optional<QString> sizeWarning(const SettingsFile &settings)
{
    const std::optional<FileStamp> stamp = fileStamp(settings.path());
    if (!stamp || stamp->bytes <= ProfileCache::kLargeBytes) {
        return std::nullopt;
    }
    const QString size = QLocale::c().formattedDataSize(stamp->bytes, 1, QLocale::DataSizeSIFormat);
    return QStringLiteral("The settings file %1 is %2 large, so that %3. Settings need a few "
                          "kilobytes: remove what does not belong there.")
        .arg(settings.path(), size, resultOfSize(stamp->bytes));
}

std::optional<QString> mountWarning(const SettingsFile &settings)
{
    return isProfileMounted(settings.path())
               ? std::optional(
                     QStringLiteral(
                         "The settings file %1 is mounted by itself, so that it cannot be "
                         "replaced: "
                         "most changes of a setting are not stored. Mount its folder instead.")
                         .arg(settings.path()))
               : std::nullopt;
}

} // namespace velmora
