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
#include <system_error>

namespace velmora {

/// Names in the order of compareNames(), native bytes.
using SortedNames = std::shared_ptr<const NameList>;

/// The pattern for a filter as typed. An empty one matches every file.
[[nodiscard]] FilePattern filterPattern(const QString &filter);

/// Whether a name was found in a folder.
struct NameFound
{
    bool isThere = false;
    std::error_code readError; // why that is not certain; none when it is
};

/// Folders are native paths; a missing one counts as empty. One that cannot be read to its end
/// gives the names read before the error, and the error. During a reading, events are handled every
/// few milliseconds. A stopped reading gives no names at all.
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

    /// The first matching file, in order, as far as the folder can be read; empty when there is
    /// none.
    QCoro::Task<std::optional<QByteArray>> first(QString folder, FilePattern pattern,
                                                 std::stop_token stop);

    /// The names of everything in it, of any kind; nothing when stopped.
    QCoro::Task<std::optional<TakenNames>> taken(QString folder, std::stop_token stop);

    /// Whether anything has that name, of any kind; nothing when stopped.
    QCoro::Task<std::optional<NameFound>> holds(QString folder, FilePattern pattern,
                                                std::stop_token stop);

private:
    // names, turns: belong to the caller, who waits.
    static QCoro::Task<SortedNames> sorted(NameList *names, Turns *turns);

    Clock &clock_;
};

} // namespace velmora
