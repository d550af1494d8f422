#include "start/SettingsPreparation.h"

#include "base/FileReader.h"
#include "base/FileWriter.h"
#include "base/ProfileFile.h"
#include "base/ProfileLock.h"
#include "settings/Keys.h"
#include "settings/SettingsFile.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#include <optional>

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

bool isElsewhere(const QString &old, const QString &settings)
{
    return QFileInfo(old).isFile() &&
           QFileInfo(old).canonicalFilePath() != QFileInfo(settings).canonicalFilePath();
}

// Tells this version of a file from an earlier or later one.
QString versionOf(const QString &path)
{
    const QFileInfo info(path);
    return QString::number(info.lastModified().toMSecsSinceEpoch()) + u'/' +
           QString::number(info.size());
}

bool wasTaken(const QString &old, const SettingsFile &settings)
{
    return keys::kTakenFrom.read(settings) == versionOf(old);
}

// What is to be noted of an old file that stays; an empty text once none is left behind.
using Note = std::optional<QString>;

Note moveIn(const QString &old, const SettingsFile &settings)
{
    const QString version = versionOf(old);
    const bool isTaken = wasTaken(old, settings);
    if (!isTaken && !copyWhole(old, settings.path())) {
        return std::nullopt;
    }
    return QFile::remove(old) ? QString() : version;
}

void store(const SettingsFile &settings, const QString &note)
{
    if (!note.isEmpty()) {
        keys::kTakenFrom.write(settings, note);
    } else if (!keys::kTakenFrom.read(settings).isEmpty()) { // the same file may be put back
        static_cast<void>(
            settings.change([](SettingsDraft &draft) { keys::kTakenFrom.remove(draft); }));
    }
}

} // namespace

void prepareSettings(const QString &programFolder, const QString &oldFolder)
{
    const SettingsFile settings(programFolder);
    const QString path = settings.path();
    const QString old =
        oldFolder.isEmpty() ? QString() : oldFolder + QStringLiteral("/Velmora.ini");
    if (!isElsewhere(old, path) && !isProfileMissing(path)) {
        return;
    }
    Note note;
    {
        const ProfileLock lock(path); // until it is had, others may have put the file in place
        if (isElsewhere(old, path)) {
            note = moveIn(old, settings);
        } else if (isProfileMissing(path)) {
            copyWhole(programFolder + QStringLiteral("/Velmora0.ini"), path);
        }
    }
    if (note) {
        store(settings, *note);
    }
}

} // namespace velmora
