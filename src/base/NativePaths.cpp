#include "base/NativePaths.h"

#include "base/Folders.h"

#include <QDir>
#include <QFile>

#include <sys/stat.h>
#include <utility>

namespace velmora {
namespace {

bool isDriveLetter(QChar c)
{
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}

// "\a\\b\" as "/a/b".
QString joined(const QString &root, QStringView text)
{
    QString path = root == QStringLiteral("/") ? QString() : root;
    for (const QStringView name : text.split(u'\\', Qt::SkipEmptyParts)) {
        path += u'/';
        path += name;
    }
    return path.isEmpty() ? QStringLiteral("/") : path;
}

} // namespace

NativePaths::NativePaths(QString programFolder)
    : programFolder_(std::move(programFolder))
{
}

std::optional<QString> NativePaths::driveRoot(QChar letter) const
{
    const QString mapped = programFolder_ + QStringLiteral("/drives/") + letter.toLower();
    struct stat entry = {};
    const bool isThere = ::lstat(QFile::encodeName(mapped).constData(), &entry) == 0;
    if (isThere && (S_ISDIR(entry.st_mode) || folderExists(mapped))) {
        return mapped;
    }
    const bool isAway = isThere && S_ISLNK(entry.st_mode); // the disk that the link leads to
    return letter.toLower() == u'c' && !isAway ? std::optional(QDir::homePath()) : std::nullopt;
}

std::optional<QString> NativePaths::native(QStringView text) const
{
    if (text.size() < 2 || text[1] != u':' || !isDriveLetter(text[0])) {
        return joined(QStringLiteral("/"), text);
    }
    const std::optional<QString> root = driveRoot(text[0]);
    return root ? std::optional(joined(*root, text.sliced(2))) : std::nullopt;
}

QString NativePaths::folderText(const QString &nativePath) const
{
    QString path = nativePath;
    const std::optional<QString> home = driveRoot(u'c');
    const bool onDrive = home && (path == *home || path.startsWith(*home + u'/'));
    if (onDrive) {
        path = QStringLiteral("C:") + path.sliced(home->size());
    }
    path.replace(u'/', u'\\');
    return path.endsWith(u'\\') ? path : path + u'\\';
}

} // namespace velmora
