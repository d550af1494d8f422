#include "start/ProgramFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <sys/stat.h>
#include <unistd.h>

namespace velmora {
namespace {

const QStringList kSystemBins{QStringLiteral(VELMORA_INSTALL_BINDIR), QStringLiteral("/usr/bin"),
                              QStringLiteral("/usr/local/bin")};

// Under any prefix: the desktop entry is installed with the program, and only then. Being writable
// proves nothing, since root could write into such a copy's folder.
bool isInstalled(const QString &folder)
{
    return kSystemBins.contains(folder) ||
           QFileInfo::exists(folder + QStringLiteral("/../share/applications/velmora.desktop"));
}

QString made(const QString &folder)
{
    return QDir().mkpath(folder) ? QFileInfo(folder).canonicalFilePath() : QString();
}

// Accessible to its user alone: the settings hold the cameras' passwords.
QString madeInDataHome(const QString &dataHome)
{
    const QString folder = dataHome + QStringLiteral("/velmora");
    QDir().mkpath(dataHome);
    QDir().mkdir(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return made(folder);
}

// A variable without an absolute path is ignored, as the desktops' own rule demands.
QString dataHome()
{
    const QString told = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return QDir::isAbsolutePath(told) ? told : QDir::homePath() + QStringLiteral("/.local/share");
}

bool isOwnFolder(const QString &folder)
{
    struct stat info = {};
    return QDir::isAbsolutePath(folder) &&
           ::stat(QFile::encodeName(folder).constData(), &info) == 0 && S_ISDIR(info.st_mode) &&
           info.st_uid == ::geteuid() && (info.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

// For systems whose login makes no runtime folder. In a folder that everyone may write to, another
// user may have taken the name: then it is not this user's own, and not used.
QString madeRuntimeFolder()
{
    const QString temporary = QDir::tempPath(); // empty when the environment names none that exists
    if (temporary.isEmpty()) {
        return {};
    }
    const QString folder = temporary + QStringLiteral("/velmora-") + QString::number(::geteuid());
    ::mkdir(QFile::encodeName(folder).constData(), S_IRWXU);
    return folder;
}

} // namespace

QString programFolder(const ProgramPlace &place)
{
    if (!place.requested.isEmpty()) {
        return made(place.requested);
    }
    const bool portable =
        !isInstalled(place.executable) && QFileInfo(place.executable).isWritable();
    return portable ? place.executable : madeInDataHome(place.dataHome);
}

ProgramPlace currentPlace(const QString &requestedByOption)
{
    const QString requested = requestedByOption.isEmpty()
                                  ? qEnvironmentVariable("VELMORA_PROGRAM_FOLDER")
                                  : requestedByOption;
    return {requested, QCoreApplication::applicationDirPath(), dataHome()};
}

QString runtimeFolder()
{
    for (const QString &folder : {qEnvironmentVariable("XDG_RUNTIME_DIR"),
                                  QStringLiteral("/run/user/") + QString::number(::geteuid())}) {
        if (isOwnFolder(folder)) {
            return folder;
        }
    }
    const QString made = madeRuntimeFolder();
    return isOwnFolder(made) ? made : QString();
}

} // namespace velmora
