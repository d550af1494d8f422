#include "DiskRules.h"

#include <QDateTime>

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

} // namespace velmora::test
