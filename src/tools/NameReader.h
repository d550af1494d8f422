// Reads the names that a folder holds, as the lists of the import show them and its run takes them.
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

/// The pattern of a filter as it was typed. An empty one is every file.
[[nodiscard]] FilePattern filterPattern(const QString &filter);

/// Folders are native paths; a missing or unreadable one holds nothing. While a reading runs,
/// events are let through every few milliseconds. What is stopped gives no names at all.
class NameReader
{
public:
    /// clock: outlives the object; the object outlives what it has started.
    explicit NameReader(Clock &clock);

    /// The files that match, links to files among them.
    QCoro::Task<SortedNames> files(QString folder, FilePattern pattern, std::stop_token stop);

    /// The folders in it, links to folders among them, but those that the program's path text
    /// cannot name.
    QCoro::Task<SortedNames> folders(QString folder, std::stop_token stop);

    /// The first of the files that match, in order; empty when there is none.
    QCoro::Task<std::optional<QByteArray>> first(QString folder, FilePattern pattern,
                                                 std::stop_token stop);

    /// The names of everything in it, of whatever kind; nothing when stopped.
    QCoro::Task<std::optional<TakenNames>> taken(QString folder, std::stop_token stop);

    /// Whether anything of that name is there, of whatever kind; nothing when stopped.
    QCoro::Task<std::optional<bool>> holds(QString folder, FilePattern pattern,
                                           std::stop_token stop);

private:
    // names, turns: of the caller, which waits.
    static QCoro::Task<SortedNames> sorted(NameList *names, Turns *turns);

    Clock &clock_;
};

} // namespace velmora
