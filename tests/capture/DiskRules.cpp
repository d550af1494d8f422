#include "DiskRules.h"

#include <QDateTime>

#include <map>
#include <utility>

namespace velmora::test {

RuleFolder *DiskRules::follow(const QString &name)
{
    auto found = folders.find(name);
    for (int links = 0; found != folders.end() && found->is == RuleFolder::Is::Link; ++links) {
        if (links > folders.size()) {
            break; // they lead round and round
        }
        found = folders.find(found->target);
    }
    return isThere && found != folders.end() ? &*found : nullptr;
}

RuleFolder *DiskRules::open(const QString &name)
{
    RuleFolder *const found = follow(name);
    return found != nullptr && found->is == RuleFolder::Is::Folder ? found : nullptr;
}

// Where that cannot be told, there may be one.
bool DiskRules::mayHoldFile(const QString &name)
{
    const RuleFolder *const found = follow(name);
    return found != nullptr && (found->is == RuleFolder::Is::Link || !found->files.isEmpty());
}

void DiskRules::make(const QString &name)
{
    if (isThere && folders[name].is == RuleFolder::Is::Missing) {
        folders[name] = {RuleFolder::Is::Folder, {}, {}};
    }
}

QString ruleFolder(const QString &url)
{
    QString name;
    for (const QChar c : url) {
        const bool isLetter = (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
        name += isLetter ? QString(c) : u'%' + QString::number(c.unicode(), 16).toUpper();
    }
    return name.left(255);
}

QString ruleText(WallTime time, const QString &format)
{
    return QDateTime::fromSecsSinceEpoch(time.time_since_epoch().count(), Qt::UTC).toString(format);
}

QString ruleDate(WallTime time)
{
    return ruleText(time, QStringLiteral("dd/MM/yyyy HH:mm:ss"));
}

std::optional<WallTime> ruleDate(const QString &text)
{
    QDateTime date = QDateTime::fromString(text, QStringLiteral("dd/MM/yyyy HH:mm:ss"));
    date.setTimeSpec(Qt::UTC);
    return date.isValid() ? std::optional(WallTime{std::chrono::seconds{date.toSecsSinceEpoch()}})
                          : std::nullopt;
}

QString deleteOld(RuleFolder *folder, WallTime earlier, WallTime later)
{
    std::map<std::pair<WallTime, QString>, QString> images;
    for (const QString &name : folder->files.keys()) {
        QDateTime date = QDateTime::fromString(name.left(15), QStringLiteral("yyyyMMdd_HHmmss"));
        date.setTimeSpec(Qt::UTC);
        const WallTime taken{std::chrono::seconds{date.toSecsSinceEpoch()}};
        if (date.isValid() && date.date().year() > 1899 && name.indexOf(u'.') == 19) {
            images[{taken, name}] = name;
        }
    }
    if (!images.empty() && images.rbegin()->first.first > later + std::chrono::minutes{5}) {
        return QStringLiteral("the clock is before the newest image, nothing deleted");
    }
    const QDateTime now =
        QDateTime::fromSecsSinceEpoch(earlier.time_since_epoch().count(), Qt::UTC);
    const WallTime limit{std::chrono::seconds{now.addMonths(-1).toSecsSinceEpoch()}};
    int deleted = 0;
    for (auto image = images.begin(); image != images.end(); ++image) {
        const bool isNewest = std::next(image) == images.end();
        if (!isNewest && image->first.first < limit) {
            deleted += static_cast<int>(folder->files.remove(image->second));
        }
    }
    return QStringLiteral("%1 images from before %2 deleted").arg(deleted).arg(ruleDate(limit));
}

} // namespace velmora::test
