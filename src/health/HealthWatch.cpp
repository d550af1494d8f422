#include "health/HealthWatch.h"

#include <QLocale>
#include <QStringList>

#include <algorithm>
#include <iterator>
#include <utility>

namespace velmora {
namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;

constexpr auto kPause = 5s;
constexpr auto kLongestPause = 1min; // of a machine at work
constexpr int kPausesBetweenSaves = 12;
constexpr std::size_t kMostNamed = 10;

// So that a disk at its limit is not reported again and again.
qint64 wellAbove(qint64 limit)
{
    return limit + limit / 10;
}

} // namespace

HealthWatch::HealthWatch(StorageFolder &storage, Clock &clock, HealthBook &book,
                         Scheduler &scheduler, OldestFirst &oldest)
    : storage_(storage)
    , clock_(clock)
    , book_(book)
    , scheduler_(scheduler)
    , oldest_(oldest)
    , options_(book.settings())
{
    connect(&scheduler_, &Scheduler::ticked, this, [this] { asking_ = clock_.monotonicNow(); });
    connect(&scheduler_, &Scheduler::passEnded, this, &HealthWatch::followPass);
    connect(&book_, &HealthBook::cameBack, this, [this](CameraAddress camera) {
        back_.insert_or_assign(camera, book_.camera(camera).folder);
    });
}

void HealthWatch::followPass()
{
    if (scheduler_.isFirstPassDone()) {
        trust();
    }
    if (std::exchange(round_, scheduler_.lastRound()) != scheduler_.lastRound()) {
        asked_ = asking_;
    }
}

QCoro::Task<> HealthWatch::run(std::stop_token stop)
{
    int pauses = 0;
    while (!stop.stop_requested()) {
        look();
        const Wake wake = co_await clock_.sleep(kPause, stop);
        if (wake == Wake::Stopped) {
            break;
        }
        if (++pauses % kPausesBetweenSaves == 0) {
            book_.save();
        }
    }
    book_.save();
}

void HealthWatch::look()
{
    book_.followTable();
    lookAtStorage();
    lookAtStandstill();
    lookAtDisk();
    forgiveStall();
    if (isTrusted_ && !standsSince_) {
        lookAtCameras();
    }
    if (storage_.isUsable()) {
        tellBack();
    }
    tellMarks();
}

void HealthWatch::lookAtStorage()
{
    if (storage_.isBeingEdited()) {
        return; // a folder only being typed: no one has lost anything by it
    }
    const bool isGone = storage_.lastCheck() == StorageCheck::Missing;
    const QString folder = storage_.inForce();
    const bool wasSeen = seenStorage_ == folder;
    if (!isGone) {
        seenStorage_ = folder;
    }
    if (std::exchange(isGone_, isGone) == isGone) {
        return;
    }
    if (isGone) {
        Q_EMIT noticed((wasSeen ? tr("The storage folder %1 is gone; nothing is stored.")
                                : tr("There is no storage folder %1; nothing is stored."))
                           .arg(folder));
    } else {
        Q_EMIT noticed(
            (wasSeen ? tr("The storage folder %1 is back.") : tr("The storage folder %1 is there."))
                .arg(folder));
    }
}

// No camera is to blame for what cannot be stored or is not requested.
void HealthWatch::lookAtStandstill()
{
    const bool stands = !storage_.isUsable() || scheduler_.isSuspended();
    if (stands && !standsSince_) {
        standsSince_ = clock_.monotonicNow();
    } else if (!stands && standsSince_) {
        forgive(clock_.monotonicNow() - *standsSince_);
        standsSince_.reset();
    }
}

// A disk that does not answer holds up the whole program, this watch too: no camera was asked
// meanwhile. What follows of a standstill, which may begin with the answer, is forgiven at its end.
void HealthWatch::forgiveStall()
{
    const milliseconds now = standsSince_.value_or(clock_.monotonicNow());
    const auto before =
        std::exchange(lookedAt_, standsSince_ ? std::nullopt : std::optional(now)).value_or(now);
    if (now - before > kLongestPause) {
        forgive(now - before);
    }
}

// The moment at which cameras were asked moves on as well: otherwise what came after it would be
// forgiven twice.
void HealthWatch::forgive(milliseconds duration)
{
    book_.forgive(duration);
    for (std::optional<milliseconds> *const moment : {&asked_, &asking_}) {
        if (*moment) {
            **moment = std::min(clock_.monotonicNow(), **moment + duration);
        }
    }
}

bool HealthWatch::isLate(const SettingsSnapshot &settings, CameraAddress camera) const
{
    const auto patience = options_.rule(camera).patience(book_.camera(camera));
    const auto quiet = book_.quiet(camera);
    return patience && quiet && *quiet - sinceAsked(settings, camera) > *patience;
}

// A round takes an hour with the longest tick, or when a silent camera without images holds up each
// pass: a camera that waits for the next one cannot have anything new. One without images is asked
// in each.
milliseconds HealthWatch::sinceAsked(const SettingsSnapshot &settings, CameraAddress camera) const
{
    const bool waits =
        book_.camera(camera).images > 0 && !CameraTable::schedule(settings, camera).hasOwnPeriod();
    return asked_ && waits ? clock_.monotonicNow() - *asked_ : 0ms;
}

void HealthWatch::lookAtCameras()
{
    const SettingsSnapshot settings = book_.settings().snapshot();
    std::vector<CameraAddress> late;
    for (const CameraAddress camera : book_.cameras()) {
        if (!CameraTable::isGroupActive(settings, camera.group)) {
            book_.excuse(camera);
        }
        const bool wasLate = book_.camera(camera).lateSince.has_value();
        const bool isNow = isLate(settings, camera);
        if (isNow && !wasLate) {
            late.push_back(camera);
        }
        book_.setLate(camera, isNow);
    }
    tellMarks();
    if (!late.empty()) {
        Q_EMIT noticed(late.size() == 1
                           ? tr("Camera %1 is late: nothing new for %2.")
                                 .arg(list(late), ageText(book_.quiet(late.front()).value_or(0s)))
                           : tr("%1 cameras are late: %2.").arg(late.size()).arg(list(late)));
    }
}

void HealthWatch::tellBack()
{
    std::vector<CameraAddress> back;
    for (const auto &[camera, folder] : std::exchange(back_, {})) {
        if (book_.camera(camera).folder == folder) { // of a camera removed, it is empty
            back.push_back(camera);
        }
    }
    if (back.empty()) {
        return;
    }
    tellMarks();
    Q_EMIT noticed(back.size() == 1
                       ? tr("Camera %1 is back.").arg(list(back))
                       : tr("%1 cameras are back: %2.").arg(back.size()).arg(list(back)));
}

// Not only what this object has noticed counts: a camera may have been late before the program was
// started, and one that is late may be removed. Saved first, so that those who hear of it and ask
// get the same answer.
void HealthWatch::tellMarks()
{
    std::vector<CameraAddress> late = this->late();
    if (late != marked_) {
        marked_ = std::move(late);
        book_.save();
        Q_EMIT lateChanged();
    }
}

QString HealthWatch::list(const std::vector<CameraAddress> &cameras) const
{
    QStringList titles;
    for (const CameraAddress camera : cameras) {
        if (titles.size() < static_cast<qsizetype>(kMostNamed)) {
            titles.append(book_.title(camera));
        }
    }
    if (cameras.size() > kMostNamed) {
        titles.append(QStringLiteral("…"));
    }
    return titles.join(QStringLiteral(", "));
}

std::vector<CameraAddress> HealthWatch::late() const
{
    std::vector<CameraAddress> late;
    for (const CameraAddress camera : book_.cameras()) {
        if (book_.camera(camera).lateSince) {
            late.push_back(camera);
        }
    }
    return late;
}

void HealthWatch::lookAtDisk()
{
    const std::optional<DiskRoom> room = diskRoom(storage_.native(storage_.inForce()));
    room_ = room;
    Q_EMIT roomChanged();
    if (!room || !storage_.isUsable()) {
        return;
    }
    const qint64 limit = options_.limitBytes(room->allBytes);
    judgeRoom(*room, limit);
    keepRoom(*room, limit);
    holdCapture(*room, limit);
}

void HealthWatch::judgeRoom(const DiskRoom &room, qint64 limit)
{
    if (!isDiskLow_ && room.freeBytes < limit) {
        isDiskLow_ = true;
        Q_EMIT noticed(tr("The disk is nearly full: %1.").arg(roomText(room, book_.bytesADay())));
    } else if (isDiskLow_ && room.freeBytes >= wellAbove(limit)) {
        isDiskLow_ = false;
        Q_EMIT noticed(
            tr("There is room on the disk again: %1.").arg(roomText(room, book_.bytesADay())));
    }
}

// No more than half of the disk is kept free: a digit too many in the limit would cost all images.
void HealthWatch::keepRoom(const DiskRoom &room, qint64 limit)
{
    const qint64 most = room.allBytes / 2;
    if (room.freeBytes < std::min(limit, most) && options_.isOn(HealthChoice::DeleteOldest)) {
        oldest_.makeRoom(std::min(wellAbove(limit) + 1, most), book_.cameras());
    }
}

// Half of what is kept free is left when the capture stops: deletion has had its chance.
void HealthWatch::holdCapture(const DiskRoom &room, qint64 limit)
{
    const bool isWanted = options_.isOn(HealthChoice::StopWhenFull);
    if (!suspension_ && isWanted && room.freeBytes < limit / 2) {
        suspension_ = scheduler_.suspend(tr("The capture has stopped: the disk is nearly full"));
        Q_EMIT noticed(tr("The capture is stopped, since the disk is nearly full."));
    } else if (suspension_ && (!isWanted || room.freeBytes >= limit)) {
        scheduler_.resume(*suspension_);
        suspension_.reset();
        Q_EMIT noticed(tr("The capture goes on."));
    }
}

} // namespace velmora
