#include "admin/Refusals.h"

#include "cameras/Credentials.h"
#include "settings/SettingsFaults.h"

#include <QFileInfo>

namespace velmora {

QString notStoredText()
{
    return QStringLiteral("The settings file cannot be written");
}

QString notStoredText(const SettingsFile &settings)
{
    const std::optional<QString> warning = sizeWarning(settings);
    return notStoredText() + (warning ? QStringLiteral(". ") + *warning : QString());
}

QString unreadListText(const QString &path, const QString &why)
{
    return QStringLiteral("The list %1 cannot be read: %2").arg(path, why);
}

QString shownTypedPath(const QString &path)
{
    const bool isPath = !path.contains(QStringLiteral("://")) && QFileInfo::exists(path);
    return isPath ? path : withoutCredentials(path);
}

} // namespace velmora
