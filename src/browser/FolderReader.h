// Reads the cameras' folders, which may be very full, and reads none twice unless it has changed.
#pragma once

#include "base/Clock.h"
#include "base/FolderWatch.h"
#include "base/Turns.h"
#include "browser/ImageNames.h"
#include "browser/NewestImage.h"
#include "browser/NewestScan.h"
#include "browser/RecentFolders.h"

#include <QCoro/QCoroTask>
#include <QString>

#include <memory>
#include <optional>
#include <stop_token>

namespace velmora {

class FolderScan;

/// Folders are native paths. A missing folder counts as empty; of one that cannot be read to its
/// end, the names read before the error count. During a reading, events are handled every few
/// milliseconds.
class FolderReader
{
public:
    /// clock: outlives the object, which outlives what it has started.
    explicit FolderReader(Clock &clock);

    /// The images of a folder; an unchanged folder is not read again and gives the same list,
    /// unless it could not be read to its end, which the list says. nullptr only when stopped.
    QCoro::Task<std::shared_ptr<const ImageNames>> names(QString folder, std::stop_token stop);

    /// The image that the group view shows for a folder. The greatest name matching "2*.*" gives a
    /// day; among the files of that day, or else of the nearest earlier day that has any, up to 100
    /// days back, it is the one modified last. None if there is no such day. A folder for which the
    /// system has reported no change is not looked at again; where it does not report, an unchanged
    /// folder is not read again, but that day's files are asked for their times. Nothing only when
    /// stopped.
    QCoro::Task<std::optional<NewestImage>> newest(QString folder, std::stop_token stop);

private:
    // The names of the newest day's files, each followed by a NUL; none when there is no day.
    struct DayNames
    {
        QByteArray names;

        [[nodiscard]] std::size_t bytes() const
        {
            return static_cast<std::size_t>(names.capacity());
        }
    };

    using DayNamesPtr = std::shared_ptr<const DayNames>;

    // A newest image, valid as long as nothing happens in its folder.
    struct WatchedNewest
    {
        NewestImage image;
        FolderWatch::Ticket ticket = 0;

        [[nodiscard]] std::size_t bytes() const
        {
            return static_cast<std::size_t>(image.name.capacity());
        }
    };

    // scan, turns, isReliable, isWhole: belong to the caller, who waits. Nothing, or nullptr, when
    // stopped. isReliable becomes false when the result depends on more than the folder's files, or
    // not on all of them; isWhole when the folder could not be read to its end.
    QCoro::Task<std::optional<NewestImage>> lookForNewest(QString folder, Turns *turns,
                                                          bool *isReliable);
    QCoro::Task<std::shared_ptr<const ImageNames>> readNames(FolderScan *scan, Turns *turns);
    QCoro::Task<DayNamesPtr> dayNames(QString folder, Turns *turns, bool *isReliable);
    QCoro::Task<DayNamesPtr> namesOfDay(QString folder, NewestScan greatest, Turns *turns,
                                        bool *isWhole);

    Clock &clock_;
    RecentFolders<ImageNames> names_;
    RecentFolders<DayNames> days_;
    RecentFolders<WatchedNewest> newest_;
    FolderWatch watch_;
};

} // namespace velmora
