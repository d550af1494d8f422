#include "health/OldestFirst.h"

#include "base/DateText.h"
#include "base/LogFile.h"
#include "cameras/CameraChoices.h"
#include "capture/ImageAge.h"
#include "capture/OldImages.h"
#include "health/DiskRoom.h"

#include <QFile>
#include <QScopeGuard>

#include <algorithm>

namespace velmora {
namespace {

constexpr std::chrono::minutes kRest{10};
constexpr int kMostInVain = 100;
constexpr std::size_t kAtOnce = 1000; // images chosen in one look through all folders
constexpr qint64 kMostLogBytes = 1'000'000;

QString logPath(const QString &programFolder)
{
    return programFolder + QStringLiteral("/Velmora.deleted");
}

} // namespace

OldestFirst::OldestFirst(const CameraTable &table, StorageFolder &storage, Clock &clock,
                         TaskScope &scope)
    : table_(table)
    , storage_(storage)
    , clock_(clock)
    , scope_(scope)
    , options_(table.settings())
    , slice_(clock)
{
}

void OldestFirst::makeRoom(qint64 wantedFreeBytes, std::vector<CameraAddress> cameras)
{
    if (!running_ && clock_.monotonicNow() >= restsUntil_) {
        running_ = true;
        scope_.launch(run(wantedFreeBytes, std::move(cameras)));
    }
}

std::optional<qint64> OldestFirst::freeBytes() const
{
    const auto room = diskRoom(storage_.native(storage_.inForce()));
    return room ? std::optional(room->freeBytes) : std::nullopt;
}

bool OldestFirst::isEnough(qint64 wantedFreeBytes) const
{
    const auto free = freeBytes();
    return !free || *free >= wantedFreeBytes || storage_.lastCheck() != StorageCheck::Found;
}

QCoro::Task<> OldestFirst::run(qint64 wantedFreeBytes, std::vector<CameraAddress> cameras)
{
    const auto atEnd = qScopeGuard([this] { running_ = false; });
    const Grounds grounds{StorageUse(storage_), clock_.universalNow(), options_.limitMegabytes()};
    co_await clock_.yield();
    slice_.begin();
    oldest_.clear();
    looked_ = {};
    for (const CameraAddress camera : cameras) {
        co_await look(camera, grounds);
    }
    const bool hasGained = co_await removeOldest(wantedFreeBytes, grounds);
    if (!hasGained && mayGoOn(grounds)) {
        restsUntil_ = clock_.monotonicNow() + kRest;
    }
}

// True when room was gained by it.
QCoro::Task<bool> OldestFirst::removeOldest(qint64 wantedFreeBytes, Grounds grounds)
{
    const auto before = freeBytes();
    const std::set<Candidate> candidates = std::exchange(oldest_, {});
    std::set<CameraAddress> touched;
    int removed = 0;
    const auto isVain = [&] { return removed >= kMostInVain && freeBytes() <= before; };
    for (const Candidate &candidate : candidates) {
        if (isVain() || !mayGoOn(grounds) || isEnough(wantedFreeBytes)) {
            break;
        }
        if (remove(candidate)) {
            touched.insert(candidate.camera);
            ++removed;
        }
        co_await letEventsRun(&slice_, &clock_);
    }
    for (const CameraAddress camera : touched) {
        Q_EMIT imagesDeleted(camera);
    }
    co_return removed > 0 && !isVain();
}

// Candidates from a folder that is no longer in force would be deleted in another; by the clock as
// it is now, the newest image may be of a later time; and another limit may be reached already.
bool OldestFirst::mayGoOn(const Grounds &grounds) const
{
    return grounds.use.mayGoOn() && !scope_.stopToken().stop_requested() &&
           options_.isOn(HealthChoice::DeleteOldest) &&
           options_.limitMegabytes() == grounds.limitMegabytes &&
           clock_.universalNow() >= grounds.began;
}

// Looks twice: a folder's newest image is known only after reading all of it.
QCoro::Task<> OldestFirst::look(CameraAddress camera, Grounds grounds)
{
    const QString path = storage_.cameraFolder(camera);
    const FolderFiles folder(path, FolderLinks::Refused);
    const FolderFiles storage(storage_.native(storage_.inForce()));
    if (!folder.isOpen() || !folder.isOnDiskOf(storage)) {
        co_return;
    }
    const WallTime local = clock_.localNow();
    OldImages images(folder, local, local - clock_.utcOffset());
    while (mayGoOn(grounds) && images.lookSome()) {
        co_await letEventsRun(&slice_, &clock_);
    }
    const std::optional<WallTime> newest = images.newest();
    if (!mayGoOn(grounds) || !images.isComplete() || !images.isClockPlausible() || !newest) {
        co_return;
    }
    looked_[camera] = {path, images.newestName()};
    FolderScan scan = folder.scan();
    const auto visit = [&](QByteArrayView name) {
        const auto date = dateInName(name);
        if (date && *date < *newest) {
            take({*date, camera, name.toByteArray()}, folder);
        }
    };
    while (mayGoOn(grounds) && scan.readSome(visit)) {
        co_await letEventsRun(&slice_, &clock_);
    }
    if (scan.hasFailed()) { // older ones may not have been seen
        std::erase_if(oldest_, [camera](const Candidate &image) { return image.camera == camera; });
    }
}

void OldestFirst::take(const Candidate &candidate, const FolderFiles &folder)
{
    const bool isFull = oldest_.size() >= kAtOnce;
    const bool isAmongThem = !isFull || candidate < *oldest_.rbegin();
    if (isAmongThem && folder.isOnlyName(candidate.name.constData())) {
        oldest_.insert(candidate);
        if (isFull) {
            oldest_.erase(std::prev(oldest_.end()));
        }
    }
}

// With a different address the row has a different camera, which has images of the same names. Once
// the newest image has gone, the newest that is left may be among those that were found.
bool OldestFirst::remove(const Candidate &candidate)
{
    const QString path = storage_.cameraFolder(candidate.camera);
    const Looked &looked = looked_[candidate.camera];
    if (path != looked.path) {
        return false;
    }
    const FolderFiles folder(path, FolderLinks::Refused);
    if (!folder.isOpen() || !folder.has(looked.newest.constData()) ||
        folder.remove(candidate.name.constData())) {
        return false;
    }
    record(candidate);
    return true;
}

// If a full disk leaves no room for the record, that must not keep it full.
void OldestFirst::record(const Candidate &candidate)
{
    const QString path = logPath(table_.settings().programFolder());
    rotateLog(path, path + QStringLiteral(".old"), kMostLogBytes);
    const QString line = QStringLiteral("%1 %2 %3\n")
                             .arg(dateText(clock_.localNow()), cameraText(candidate.camera),
                                  QFile::decodeName(candidate.name));
    static_cast<void>(appendToLog(path, line.toUtf8()));
}

} // namespace velmora
