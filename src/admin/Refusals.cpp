#include "admin/Refusals.h"

#include "cameras/Credentials.h"
#include "settings/SettingsFaults.h"

#include <QFileInfo>

namespace velmora {

QString notStoredText(const SettingsFile &settings)
{
    const std::optional<QString> warning = sizeWarning(settings);
    return QStringLiteral("The settings file cannot be written") +
           (warning ? QStringLiteral(". ") + *warning : QString());
}

QString shownTypedPath(const QString &path)
{
    const bool isPath = !path.contains(QStringLiteral("://")) && QFileInfo::exists(path);
    return isPath ? path : withoutCredentials(path);
}

} // namespace velmora
