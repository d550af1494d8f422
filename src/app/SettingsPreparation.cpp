#include "app/SettingsPreparation.h"

#include "base/FileWriter.h"

#include <QFile>
#include <QFileInfo>

namespace velmora {
namespace {

bool copyWhole(const QString &from, const QString &to)
{
    QFile file(from);
    return file.open(QIODevice::ReadOnly) && !replaceFile(to, file.readAll());
}

} // namespace

void prepareSettings(const QString &programFolder, const QString &oldFolder)
{
    const QString settings = programFolder + QStringLiteral("/Velmora.ini");
    const QString old = oldFolder + QStringLiteral("/Velmora.ini");
    const bool hasOld =
        !oldFolder.isEmpty() && QFileInfo(old).isFile() &&
        QFileInfo(old).canonicalFilePath() != QFileInfo(settings).canonicalFilePath();
    if (hasOld) {
        if (copyWhole(old, settings)) {
            QFile::remove(old);
        }
    } else if (!QFileInfo::exists(settings)) {
        copyWhole(programFolder + QStringLiteral("/Velmora0.ini"), settings);
    }
}

} // namespace velmora
