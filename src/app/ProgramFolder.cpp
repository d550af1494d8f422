#include "app/ProgramFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace velmora {
namespace {

bool isSystemBin(const QString &folder)
{
    return QStringList{QStringLiteral(VELMORA_INSTALL_BINDIR), QStringLiteral("/usr/bin"),
                       QStringLiteral("/usr/local/bin")}
        .contains(folder);
}

QString made(const QString &folder)
{
    return QDir().mkpath(folder) ? QFileInfo(folder).canonicalFilePath() : QString();
}

} // namespace

QString programFolder(const ProgramPlace &place)
{
    if (!place.requested.isEmpty()) {
        return made(place.requested);
    }
    const bool portable =
        !isSystemBin(place.executable) && QFileInfo(place.executable).isWritable();
    return portable ? place.executable : made(place.dataHome + QStringLiteral("/velmora"));
}

ProgramPlace currentPlace(const QString &requestedByOption)
{
    const QString requested = requestedByOption.isEmpty()
                                  ? qEnvironmentVariable("VELMORA_PROGRAM_FOLDER")
                                  : requestedByOption;
    return {requested, QCoreApplication::applicationDirPath(),
            QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)};
}

} // namespace velmora
