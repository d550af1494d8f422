#include "cameras/StoragePath.h"

#include <algorithm>

namespace velmora {
namespace {

const QString &doubled()
{
    static const QString pair = QStringLiteral("\\\\");
    return pair;
}

// What is removed from a path once its blanks are gone, in this order.
QString stripped(QString path)
{
    path.remove(doubled());
    for (const QChar forbidden : QStringView(u"/*?><\"|")) {
        path.remove(forbidden);
    }
    return path;
}

} // namespace

QString FormRep(QString path)
{
    if (path.endsWith(u'\\')) {
        path.chop(1);
    }
    path.remove(u' ');
    if (!path.endsWith(u'\\')) {
        path += u'\\';
    }
    return stripped(std::move(path));
}

QString pathToMake(QString path)
{
    path.remove(u' ');
    if (!path.endsWith(u'\\')) {
        path += u'\\';
    }
    return path.replace(doubled(), QStringLiteral("\\"));
}

QStringList pathLevels(const QString &path)
{
    constexpr qsizetype kBehindDrive = 3;
    QStringList levels;
    for (qsizetype at = path.indexOf(u'\\', kBehindDrive); at >= 0;
         at = path.indexOf(u'\\', at + 1)) {
        levels.append(path.first(at + 1));
    }
    return levels;
}

QString withBackslashes(QString typed)
{
    return typed.replace(u'/', u'\\');
}

int caretAfterCleaning(const QString &typed, int caret)
{
    const QString cleaned = FormRep(typed.trimmed());
    QString before = typed.first(std::clamp<qsizetype>(caret, 0, typed.size()));
    if (before.size() == typed.size() && before.endsWith(u'\\')) {
        before.chop(1); // FormRep also drops it, and puts one back
        return static_cast<int>(std::min(stripped(before.remove(u' ')).size() + 1, cleaned.size()));
    }
    const qsizetype kept = stripped(before.remove(u' ')).size();
    return static_cast<int>(std::min(kept, cleaned.size()));
}

} // namespace velmora
