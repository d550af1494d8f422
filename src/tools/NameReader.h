// Reads the names in a folder, for the import's lists and its run.
#pragma once

#include "base/FilePattern.h"
#include "base/NameList.h"
#include "base/Turns.h"
#include "tools/TakenNames.h"

#include <QCoro/QCoroTask>
#include <QString>

#include <memory>
#include <optional>
#include <stop_token>

namespace velmora {

/// Names in the order of compareNames(), native bytes.
using SortedNames = std::shared_ptr<const NameList>;

/// The pattern for a filter as typed. An empty one matches every file.
[[nodiscard]] FilePattern filterPattern(const QString &filter);

/// Folders are native paths; a missing or unreadable one counts as empty. During a reading, events
/// are handled every few milliseconds. A stopped reading gives no names at all.
class NameReader
{
public:
    /// clock: outlives the object, which outlives what it has started.
    explicit NameReader(Clock &clock);

    /// The matching files, including links to files.
    QCoro::Task<SortedNames> files(QString folder, FilePattern pattern, std::stop_token stop);

    /// Its subfolders, including links to folders, except those that the program's path text cannot
    /// name.
    QCoro::Task<SortedNames> folders(QString folder, std::stop_token stop);

    /// The first matching file, in order; empty when there is none.
    QCoro::Task<std::optional<QByteArray>> first(QString folder, FilePattern pattern,
                                                 std::stop_token stop);

    /// The names of everything in it, of any kind; nothing when stopped.
    QCoro::Task<std::optional<TakenNames>> taken(QString folder, std::stop_token stop);

    /// Whether anything has that name, of any kind; nothing when stopped.
    QCoro::Task<std::optional<bool>> holds(QString folder, FilePattern pattern,
                                           std::stop_token stop);

private:
    // names, turns: belong to the caller, who waits.
    static QCoro::Task<SortedNames> sorted(NameList *names, Turns *turns);

    Clock &clock_;
};

} // namespace velmora
