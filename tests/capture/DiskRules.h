// The storage folder as the capture must find and leave it, by the rules alone.
#pragma once

#include "base/Clock.h"

#include <QByteArray>
#include <QMap>
#include <QString>

#include <optional>

namespace velmora::test {

/// A camera's folder, or what stands under its name.
struct RuleFolder
{
    enum class Is { Missing, Folder, File, Link };

    Is is = Is::Missing;
    QString target; // of a link, another folder's name
    QMap<QString, QByteArray> files;
};

struct DiskRules
{
    bool isThere = true;     // the storage folder
    bool isRefusing = false; // every new file
    QMap<QString, RuleFolder> folders;

    /// The folder that a name leads to; none if there is none.
    [[nodiscard]] RuleFolder *open(const QString &name);

    [[nodiscard]] bool mayHoldFile(const QString &name);
    void make(const QString &name);

private:
    /// What a name leads to in the end; a link if that is itself again.
    RuleFolder *follow(const QString &name);
};

/// A camera folder's name for an address.
[[nodiscard]] QString ruleFolder(const QString &url);

/// A moment in a form that QDateTime knows.
[[nodiscard]] QString ruleText(WallTime time, const QString &format);

[[nodiscard]] QString ruleDate(WallTime time);
[[nodiscard]] std::optional<WallTime> ruleDate(const QString &text);

/// Deletes what is dated more than a calendar month before the earlier time, except the newest, and
/// nothing if that is dated well after the later one. Gives what the log says of it.
QString deleteOld(RuleFolder *folder, WallTime earlier, WallTime later);

} // namespace velmora::test
