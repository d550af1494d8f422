#include "app/SettingsPreparation.h"

#include "base/FileReader.h"
#include "base/FileWriter.h"
#include "base/ProfileFile.h"
#include "base/ProfileLock.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <sys/stat.h>

namespace velmora {
namespace {

// True when the copy was read back and is identical.
bool copyWhole(const QString &from, const QString &to)
{
    const WholeFile source = readWholeFile(from, kMostReadBytes);
    if (!source.bytes || replaceFile(to, *source.bytes)) {
        return false;
    }
    const WholeFile copy = readWholeFile(to, kMostReadBytes);
    return copy.bytes == source.bytes;
}

// A file that cannot be examined is not known to be missing.
bool isMissing(const QString &path)
{
    struct stat info = {};
    return ::stat(QFile::encodeName(path).constData(), &info) != 0 && errno == ENOENT;
}

bool isToBeMoved(const QString &old, const QString &settings)
{
    return QFileInfo(old).isFile() &&
           QFileInfo(old).canonicalFilePath() != QFileInfo(settings).canonicalFilePath();
}

} // namespace

void prepareSettings(const QString &programFolder, const QString &oldFolder)
{
    const QString settings = programFolder + QStringLiteral("/Velmora.ini");
    const QString old = oldFolder + QStringLiteral("/Velmora.ini");
    const auto isOldThere = [&] { return !oldFolder.isEmpty() && isToBeMoved(old, settings); };
    if (!isOldThere() && !isMissing(settings)) {
        return;
    }
    const ProfileLock lock(settings); // until it is had, others may have put the file in place
    if (isOldThere()) {
        if (copyWhole(old, settings)) {
            QFile::remove(old);
        }
    } else if (isMissing(settings)) {
        copyWhole(programFolder + QStringLiteral("/Velmora0.ini"), settings);
    }
}

} // namespace velmora
