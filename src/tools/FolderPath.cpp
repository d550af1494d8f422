#include "tools/FolderPath.h"

#include <algorithm>

namespace velmora {
namespace {

constexpr qsizetype kDriveLetters = 2;

bool hasDrive(QStringView text)
{
    const QChar letter = text.isEmpty() ? QChar() : text.front().toUpper();
    return text.size() >= kDriveLetters && text[1] == u':' && letter >= u'A' && letter <= u'Z';
}

QString joined(const QStringList &levels)
{
    const QString &root = levels.first();
    return levels.size() == 1 ? root : root + levels.sliced(1).join(u'\\');
}

} // namespace

QStringList folderLevels(QStringView path)
{
    const QStringView drive = hasDrive(path) ? path.first(kDriveLetters) : QStringView();
    QStringList levels{drive.toString() + u'\\'};
    for (const QStringView name : path.sliced(drive.size()).split(u'\\', Qt::SkipEmptyParts)) {
        levels.append(name.toString());
    }
    return levels;
}

QString folderPath(QStringView text)
{
    return joined(folderLevels(text));
}

QString folderAtLevel(QStringView path, int levels)
{
    const QStringList all = folderLevels(path);
    return joined(all.first(std::clamp<qsizetype>(levels, 1, all.size())));
}

QString subFolder(const QString &path, const QString &name)
{
    return path.endsWith(u'\\') ? path + name : path + u'\\' + name;
}

} // namespace velmora
