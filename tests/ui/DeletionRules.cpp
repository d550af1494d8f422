#include "DeletionRules.h"

#include "../capture/DiskRules.h"

#include <QDateTime>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <utility>

namespace velmora::test {
namespace {

constexpr qint64 kMegabyte = 1'000'000;

using Dated = std::pair<WallTime, QString>;

QString folderOf(const QString &path)
{
    return path.section(u'/', 0, -2);
}

QString nameOf(const QString &path)
{
    return path.section(u'/', -1);
}

std::optional<Dated> newestOf(const StoredFiles &files, const QString &folder)
{
    std::optional<Dated> newest;
    const QString begin = folder + u'/';
    for (auto file = files.lowerBound(begin); file != files.end() && file.key().startsWith(begin);
         ++file) {
        const QString name = nameOf(file.key());
        if (const auto date = ruleImageDate(name)) {
            newest = std::max(newest.value_or(Dated{*date, name}), Dated{*date, name});
        }
    }
    return newest;
}

WallTime monthBefore(WallTime time)
{
    const QDateTime date = QDateTime::fromSecsSinceEpoch(time.time_since_epoch().count(), Qt::UTC);
    return WallTime{std::chrono::seconds{date.addMonths(-1).toSecsSinceEpoch()}};
}

} // namespace

std::optional<WallTime> ruleImageDate(const QString &name)
{
    static const QRegularExpression form(QStringLiteral("^\\d{8}_\\d{10}\\."));
    QDateTime date = QDateTime::fromString(name.left(15), QStringLiteral("yyyyMMdd_HHmmss"));
    date.setTimeSpec(Qt::UTC);
    return form.match(name).hasMatch() && date.isValid() && date.date().year() > 1899
               ? std::optional(WallTime{std::chrono::seconds{date.toSecsSinceEpoch()}})
               : std::nullopt;
}

void DeletionRules::read(const QByteArray &settings)
{
    static const QRegularExpression url(QStringLiteral("^Liste(\\d) lst(\\d)=(.+)$"));
    static const QRegularExpression tick(QStringLiteral("^Groupe(\\d) EffM(\\d)=1$"));
    urls.clear();
    ticked.clear();
    makesRoom = false;
    limitMegabytes = 0;
    QString section;
    for (const QByteArray &bytes : settings.split('\n')) {
        const QString line = QString::fromLatin1(bytes.trimmed());
        if (line.startsWith(u'[')) {
            section = line.mid(1).chopped(1);
            continue;
        }
        const QString entry = section + u' ' + line;
        if (const auto match = url.match(entry); match.hasMatch()) {
            urls[{match.captured(1).toInt(), match.captured(2).toInt()}] = match.captured(3);
        } else if (const auto box = tick.match(entry); box.hasMatch()) {
            ticked.insert({box.captured(1).toInt(), box.captured(2).toInt()});
        } else if (entry == u"Health DeleteOldest=1") {
            makesRoom = true;
        } else if (entry.startsWith(u"Health LimitMB=")) {
            limitMegabytes = entry.section(u'=', 1).toLongLong();
        }
    }
}

QString DeletionRules::folder(const QString &url) const
{
    return storage + u'/' + ruleFolder(url);
}

bool DeletionRules::isCameras(const QString &folder) const
{
    return !QFileInfo(folder).isSymLink() && std::ranges::any_of(urls, [&](const auto &row) {
        return this->folder(row.second) == folder;
    });
}

bool DeletionRules::isKept(const QString &folder, const QString &url) const
{
    return std::ranges::any_of(urls, [&](const auto &row) {
        const QString other = this->folder(row.second);
        const bool isSame = other == folder || (QFileInfo::exists(other) &&
                                                QFileInfo(other).canonicalFilePath() == folder);
        return row.second != url && !ticked.contains(row.first) && isSame;
    });
}

bool DeletionRules::isWished(const QString &folder) const
{
    return std::ranges::any_of(urls, [&](const auto &row) {
        return ticked.contains(row.first) && this->folder(row.second) == folder &&
               !isKept(folder, row.second);
    });
}

QString DeletionRules::faultOf(const QString &path, const StoredFiles &left) const
{
    const auto date = ruleImageDate(nameOf(path));
    const auto newest = newestOf(left, folderOf(path));
    if (isEdited) {
        return QStringLiteral("the storage box is being edited");
    }
    if (!date) {
        return QStringLiteral("it is no dated image");
    }
    if (!isCameras(folderOf(path))) {
        return QStringLiteral("it is in no camera's folder");
    }
    if (!newest || *newest < Dated{*date, nameOf(path)}) {
        return QStringLiteral("it was the newest");
    }
    return newest->first > later + std::chrono::minutes{5}
               ? QStringLiteral("the clock is before the newest image")
               : QString();
}

QString DeletionRules::faultOfAge(const QString &path, const StoredFiles &left) const
{
    const QString fault = faultOf(path, left);
    if (!fault.isEmpty()) {
        return fault;
    }
    if (!isWished(folderOf(path))) {
        return QStringLiteral("no one wishes it, or another camera keeps it");
    }
    return *ruleImageDate(nameOf(path)) >= monthBefore(earlier)
               ? QStringLiteral("it is not a month old")
               : QString();
}

QString DeletionRules::faultOfRoom(const QString &path, int names, const StoredFiles &left) const
{
    if (!makesRoom) {
        return QStringLiteral("it is not chosen");
    }
    return names > 1 ? QStringLiteral("it has a second name") : faultOf(path, left);
}

QStringList DeletionRules::oldOnes(const StoredFiles &files) const
{
    QStringList old;
    for (const QString &path : files.keys()) {
        StoredFiles left = files;
        left.remove(path);
        if (faultOfAge(path, left).isEmpty()) {
            old.append(path);
        }
    }
    return old;
}

// With as early a date as the newest's, it would be one of the newest.
QStringList DeletionRules::roomOnes(const StoredFiles &files) const
{
    QStringList good;
    for (auto file = files.begin(); file != files.end(); ++file) {
        const auto newest = newestOf(files, folderOf(file.key()));
        const auto date = ruleImageDate(nameOf(file.key()));
        if (newest && date && *date < newest->first &&
            faultOfRoom(file.key(), file.value(), files).isEmpty()) {
            good.append(file.key());
        }
    }
    return good;
}

qint64 DeletionRules::leastBytes() const
{
    const qint64 limit =
        limitMegabytes > 0 ? limitMegabytes * kMegabyte : std::min(1000 * kMegabyte, allBytes / 50);
    return std::min(limit, allBytes / 2);
}

qint64 DeletionRules::wantedBytes() const
{
    const qint64 limit =
        limitMegabytes > 0 ? limitMegabytes * kMegabyte : std::min(1000 * kMegabyte, allBytes / 50);
    return std::min(limit + limit / 10 + 1, allBytes / 2);
}

} // namespace velmora::test
