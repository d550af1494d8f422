// Reads the folders of the cameras, which may be very full, and reads none twice that has not
// changed.
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

/// Folders are native paths. A missing or unreadable folder holds nothing. While a reading runs,
/// events are let through every few milliseconds.
class FolderReader
{
public:
    /// clock: outlives the object; the object outlives what it has started.
    explicit FolderReader(Clock &clock);

    /// The images of a folder; an unchanged folder is not read again, and gives the same list.
    /// nullptr only when stopped.
    QCoro::Task<std::shared_ptr<const ImageNames>> names(QString folder, std::stop_token stop);

    /// The image that the group view shows of a folder. The greatest name "2*.*" tells a day; of
    /// the files of that day, or else of the first day back that has any, 100 days at most, it is
    /// the one modified last. Without such a day there is none. A folder of which the system has
    /// reported no change is not looked at again; where it does not report, an unchanged folder is
    /// not read again, but the times of that day's files are asked for. Nothing only when stopped.
    QCoro::Task<std::optional<NewestImage>> newest(QString folder, std::stop_token stop);

private:
    // The names of the newest day's files, each with a NUL behind it; none when there is no day.
    struct DayNames
    {
        QByteArray names;

        [[nodiscard]] std::size_t bytes() const
        {
            return static_cast<std::size_t>(names.capacity());
        }
    };

    using DayNamesPtr = std::shared_ptr<const DayNames>;

    // A newest image, as long as nothing happens in its folder.
    struct WatchedNewest
    {
        NewestImage image;
        FolderWatch::Ticket ticket = 0;

        [[nodiscard]] std::size_t bytes() const
        {
            return static_cast<std::size_t>(image.name.capacity());
        }
    };

    // scan, turns, isReliable: of the caller, which waits. Nothing, nullptr: stopped. isReliable
    // gets false when more than the folder's files told what is given back, or not all of them.
    QCoro::Task<std::optional<NewestImage>> lookForNewest(QString folder, Turns *turns,
                                                          bool *isReliable);
    QCoro::Task<std::shared_ptr<const ImageNames>> readNames(FolderScan *scan, Turns *turns);
    QCoro::Task<DayNamesPtr> dayNames(QString folder, Turns *turns, bool *isReliable);
    QCoro::Task<DayNamesPtr> namesOfDay(QString folder, NewestScan greatest, Turns *turns);

    Clock &clock_;
    RecentFolders<ImageNames> names_;
    RecentFolders<DayNames> days_;
    RecentFolders<WatchedNewest> newest_;
    FolderWatch watch_;
};

} // namespace velmora
