#include "browser/FolderReader.h"

#include "base/FolderScan.h"
#include "base/NameStamp.h"
#include "browser/LatestFile.h"
#include "browser/NewestScan.h"

#include <utility>

namespace velmora {
namespace {

constexpr qsizetype kMostLists = 3;
constexpr std::size_t kMostListBytes = 16U << 20U; // enough for two full folders and more
constexpr qsizetype kMostDays = 20;                // two groups of cameras
constexpr std::size_t kMostDayBytes = 8U << 20U;
constexpr qsizetype kMostNewest = 100; // for all cameras
constexpr std::size_t kMostNewestBytes = 1U << 20U;

constexpr std::chrono::days kDaysBack{100};
constexpr int kMostReadings = 2;

// Taken at the start of a reading: the stamp before the first name.
struct Start
{
    explicit Start(const QString &folder)
        : stamp(folderStamp(folder))
        , began(std::chrono::system_clock::now().time_since_epoch())
    {
    }

    // Whether later changes to the folder will be told apart from what was read.
    [[nodiscard]] bool canBeKept(const FolderScan &scan) const
    {
        return stamp && scan.isOpen() && !scan.hasFailed() && tellsChanges(*stamp, began);
    }

    std::optional<FileStamp> stamp;
    std::chrono::nanoseconds began;
};

} // namespace

FolderReader::FolderReader(Clock &clock)
    : clock_(clock)
    , names_(kMostLists, kMostListBytes)
    , days_(kMostDays, kMostDayBytes)
    , newest_(kMostNewest, kMostNewestBytes)
{
}

QCoro::Task<std::shared_ptr<const ImageNames>> FolderReader::names(QString folder,
                                                                   std::stop_token stop)
{
    const Start start(folder);
    std::shared_ptr<const ImageNames> names =
        start.stamp ? names_.find(folder, *start.stamp) : nullptr;
    if (names) {
        co_return names;
    }
    Turns turns(clock_, std::move(stop));
    FolderScan scan(folder);
    names = co_await readNames(&scan, &turns);
    if (names && start.stamp && start.canBeKept(scan)) {
        names_.keep(folder, *start.stamp, names);
    }
    co_return names;
}

QCoro::Task<std::shared_ptr<const ImageNames>> FolderReader::readNames(FolderScan *scan,
                                                                       Turns *turns)
{
    ImageNamesBuilder builder;
    const auto add = [&builder](QByteArrayView name) { builder.add(name); };
    const bool isRead = co_await turns->run([scan, &add] { return scan->readSome(add); });
    if (!isRead) {
        co_return std::shared_ptr<const ImageNames>();
    }
    const bool isSorted = co_await turns->run([&builder] { return builder.sortSome(); });
    if (!isSorted) {
        co_return std::shared_ptr<const ImageNames>();
    }
    builder.setReadError(scan->error());
    co_return std::make_shared<const ImageNames>(builder.take());
}

// The path is checked too: a folder above it may have been moved.
QCoro::Task<std::optional<NewestImage>> FolderReader::newest(QString folder, std::stop_token stop)
{
    const std::optional<FileStamp> stamp = folderStamp(folder);
    const auto known = stamp ? newest_.find(folder, *stamp) : nullptr;
    if (known && watch_.confirmQuiet(folder, known->ticket)) {
        co_return known->image;
    }
    const FolderWatch::Ticket ticket = watch_.begin(folder);
    Turns turns(clock_, std::move(stop));
    bool isReliable = stamp && ticket != 0;
    const std::optional<NewestImage> newest = co_await lookForNewest(folder, &turns, &isReliable);
    if (newest && isReliable) {
        newest_.keep(folder, *stamp,
                     std::make_shared<const WatchedNewest>(WatchedNewest{*newest, ticket}));
    }
    co_return newest;
}

QCoro::Task<std::optional<NewestImage>> FolderReader::lookForNewest(QString folder, Turns *turns,
                                                                    bool *isReliable)
{
    for (int reading = 0; reading < kMostReadings; ++reading) {
        const DayNamesPtr day = co_await dayNames(folder, turns, isReliable);
        if (!day) {
            co_return std::nullopt;
        }
        LatestFile latest(folder, day->names);
        const bool isSeen = co_await turns->run([&latest] { return latest.lookAtSome(); });
        *isReliable = *isReliable && !latest.sawLinks() && !latest.name().isEmpty();
        if (!isSeen) {
            co_return std::nullopt;
        }
        if (!latest.name().isEmpty() || day->names.isEmpty()) {
            co_return NewestImage{latest.name()};
        }
        days_.forget(folder); // none of that day's files exists any more
    }
    co_return NewestImage{};
}

QCoro::Task<FolderReader::DayNamesPtr> FolderReader::dayNames(QString folder, Turns *turns,
                                                              bool *isReliable)
{
    const Start start(folder);
    DayNamesPtr day = start.stamp ? days_.find(folder, *start.stamp) : nullptr;
    if (day) {
        co_return day;
    }
    FolderScan scan(folder);
    NewestScan greatest;
    const auto add = [&greatest](QByteArrayView name) { greatest.add(name); };
    const bool isRead = co_await turns->run([&scan, &add] { return scan.readSome(add); });
    if (!isRead) {
        co_return DayNamesPtr();
    }
    *isReliable = *isReliable && scan.isOpen() && !scan.hasFailed();
    bool isWhole = true;
    day = co_await namesOfDay(folder, std::move(greatest), turns, &isWhole);
    *isReliable = *isReliable && isWhole;
    if (day && start.stamp && isWhole && start.canBeKept(scan)) {
        days_.keep(folder, *start.stamp, day);
    }
    co_return day;
}

// The name of a captured image begins with its day, so the greatest names are those of the newest
// day. Other names may also hold a day ("200610 5.jpg"): then the files of the days before are
// looked for.
QCoro::Task<FolderReader::DayNamesPtr> FolderReader::namesOfDay(QString folder, NewestScan greatest,
                                                                Turns *turns, bool *isWhole)
{
    const std::optional<WallTime> day = looseDayOfName(greatest.greatest());
    if (!day) {
        co_return std::make_shared<const DayNames>();
    }
    if (dayKey(*day) == greatest.greatest()) {
        co_return std::make_shared<const DayNames>(DayNames{greatest.take()});
    }
    FolderScan scan(folder);
    NewestScan days(*day - kDaysBack, *day);
    const auto add = [&days](QByteArrayView name) { days.add(name); };
    const bool isRead = co_await turns->run([&scan, &add] { return scan.readSome(add); });
    *isWhole = !scan.hasFailed();
    if (!isRead) {
        co_return DayNamesPtr();
    }
    co_return std::make_shared<const DayNames>(DayNames{days.take()});
}

} // namespace velmora
