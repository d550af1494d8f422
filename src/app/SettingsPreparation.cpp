#include "app/SettingsPreparation.h"

#include "base/FileReader.h"
#include "base/FileWriter.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <sys/stat.h>

namespace velmora {
namespace {

constexpr qint64 kMostBytes = qint64{256} * 1024 * 1024; // beyond which a file cannot be settings

// True when the copy was read back and is identical.
bool copyWhole(const QString &from, const QString &to)
{
    const WholeFile source = readWholeFile(from, kMostBytes);
    if (!source.bytes || replaceFile(to, *source.bytes)) {
        return false;
    }
    const WholeFile copy = readWholeFile(to, kMostBytes);
    return copy.bytes == source.bytes;
}

// A file that cannot be examined is not known to be missing.
bool isMissing(const QString &path)
{
    struct stat info = {};
    return ::stat(QFile::encodeName(path).constData(), &info) != 0 && errno == ENOENT;
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
    } else if (isMissing(settings)) {
        copyWhole(programFolder + QStringLiteral("/Velmora0.ini"), settings);
    }
}

} // namespace velmora
