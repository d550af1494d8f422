#include "tools/Drives.h"

#include "base/Folders.h"

#include <QFile>

#include <algorithm>
#include <array>

namespace velmora {
namespace {

constexpr std::array<QByteArrayView, 9> kSystemFolders{
    "/proc/", "/sys/", "/dev/", "/run/", "/boot/", "/etc/", "/snap/", "/usr/", "/var/lib/"};
constexpr std::array<QByteArrayView, 3> kUserFolders{"/media/", "/mnt/", "/run/media/"};
constexpr std::array<QByteArrayView, 8> kSystemTypes{"tmpfs",    "ramfs",   "autofs", "squashfs",
                                                     "devtmpfs", "overlay", "proc",   "sysfs"};
constexpr qsizetype kFields = 4; // device, place, type, options
constexpr int kEscapeDigits = 3;
constexpr int kOctal = 8;

// The table writes a blank as "\040".
QByteArray unescaped(const QByteArray &field)
{
    QByteArray text;
    for (qsizetype i = 0; i < field.size(); ++i) {
        bool isCode = false;
        const int code = field.mid(i + 1, kEscapeDigits).toInt(&isCode, kOctal);
        if (field[i] == '\\' && isCode) {
            text += static_cast<char>(code);
            i += kEscapeDigits;
        } else {
            text += field[i];
        }
    }
    return text;
}

bool isBelow(const QByteArray &place, const auto &folders)
{
    return std::ranges::any_of(
        folders, [&](QByteArrayView folder) { return (place + '/').startsWith(folder); });
}

bool holdsUsersFiles(const QByteArray &place, const QByteArray &type)
{
    if (place == "/" || isBelow(place, kUserFolders)) {
        return true;
    }
    return !isBelow(place, kSystemFolders) && std::ranges::count(kSystemTypes, type) == 0;
}

} // namespace

QStringList letterDrives(const QString &programFolder)
{
    QStringList drives{QStringLiteral("C:")};
    for (char letter = 'a'; letter <= 'z'; ++letter) {
        const QLatin1Char name(letter);
        if (letter != 'c' && folderExists(programFolder + QStringLiteral("/drives/") + name)) {
            drives.append(QString(name).toUpper() + u':');
        }
    }
    return drives;
}

QStringList mountedDrives(const QByteArray &mountTable)
{
    QStringList drives;
    for (const QByteArray &line : mountTable.split('\n')) {
        const QByteArrayList fields = line.split(' ');
        if (fields.size() < kFields) {
            continue;
        }
        const QByteArray place = unescaped(fields[1]);
        if (holdsUsersFiles(place, fields[2]) && !place.contains('\\')) {
            drives.append(QFile::decodeName(place).replace(u'/', u'\\'));
        }
    }
    drives.removeDuplicates();
    drives.sort();
    return drives;
}

QStringList drivesNow(const QString &programFolder)
{
    QFile table(QStringLiteral("/proc/self/mounts"));
    const bool isOpen = table.open(QIODevice::ReadOnly);
    QStringList mounted = mountedDrives(isOpen ? table.readAll() : QByteArray());
    const QString root = QStringLiteral("\\");
    if (!mounted.contains(root)) { // a process chrooted by root does not see its own mount
        mounted.prepend(root);
    }
    return letterDrives(programFolder) + mounted;
}

} // namespace velmora
