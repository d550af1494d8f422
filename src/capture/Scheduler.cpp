#include "capture/Scheduler.h"

#include "base/DateText.h"
#include "base/Folders.h"
#include "base/OneShot.h"
#include "base/WorkSlice.h"
#include "cameras/CameraChoices.h"
#include "cameras/Credentials.h"
#include "cameras/FolderName.h"
#include "capture/CameraUrl.h"
#include "capture/DueRule.h"

#include <QScopeGuard>
#include <QScopedValueRollback>

#include <algorithm>

namespace velmora {
namespace {

using namespace std::chrono_literals;

constexpr int kBeforeLastTick = 59;
constexpr int kMaxAutomaticCounter = 10;
constexpr auto kStepOfWaiting = 10ms;
constexpr int kStartedTogether = 16; // transfers

QString folderText(const StorageFolder &storage, const CameraSchedule &camera)
{
    return cameraFolderTextOf(storage.inForce(), camera.url);
}

} // namespace

Scheduler::Scheduler(const Uses &uses)
    : uses_(uses)
{
    connect(&uses_.timer, &QTimer::timeout, this, [this] { uses_.scope.launch(Timer_Timer()); });
    connect(&uses_.store, &ImageStore::loaded, this, &Scheduler::startTimer);
    connect(&uses_.storage, &StorageFolder::checked, this, &Scheduler::followStorage);
    connect(&uses_.storage, &StorageFolder::editBegan, this, &Scheduler::ArretTimer);
    connect(&uses_.storage, &StorageFolder::editBegan, this, &Scheduler::followStorage);
    connect(&uses_.storage, &StorageFolder::folderMade, this,
            [this] { setTickCounter(kStartTick); });
}

void Scheduler::start()
{
    RegleTempo();
    Q_EMIT standstillChanged();
    setTickCounter(kStartTick);
}

void Scheduler::RegleTempo()
{
    const std::chrono::milliseconds interval = uses_.options.normaliseTempo();
    if (uses_.timer.intervalAsDuration() != interval) {
        uses_.timer.setInterval(interval); // setting it again would restart the period
    }
    Q_EMIT intervalSet(interval);
}

// Whatever is being downloaded is for a folder that has changed, or is about to.
void Scheduler::followStorage()
{
    if (storageVersion_ != uses_.storage.version()) {
        storageVersion_ = uses_.storage.version();
        uses_.store.dropTransfers();
    }
    regulate();
}

// The one place that reacts to whatever stops the capture or lets it go on. The end of a pass
// starts the timer itself.
void Scheduler::regulate()
{
    if (isHeld()) {
        gate_.shut();
    } else {
        gate_.open();
    }
    if (!uses_.storage.isUsable() || isSuspended()) {
        uses_.timer.stop();
    } else if (!passing_ && !uses_.timer.isActive()) {
        startTimer();
    }
    Q_EMIT standstillChanged();
}

void Scheduler::startTimer()
{
    if (uses_.storage.isUsable() && !isSuspended() && !ending_ && !givenUp_) {
        uses_.timer.start();
    }
}

QString Scheduler::standstill() const
{
    const StorageFolder &storage = uses_.storage;
    if (storage.isBeingEdited()) {
        return QStringLiteral("The capture waits for the storage folder: its box is being edited "
                              "in the main window");
    }
    if (storage.lastCheck() == StorageCheck::Missing) {
        return QStringLiteral("The capture has stopped: the storage folder %1 is not there")
            .arg(storage.inForce());
    }
    for (const auto &[suspension, why] : suspensions_) {
        if (!why.isEmpty()) {
            return why;
        }
    }
    return {};
}

Suspension Scheduler::suspend(const QString &why)
{
    const Suspension suspension{++lastSuspension_};
    suspensions_.emplace(suspension, why);
    regulate();
    return suspension;
}

void Scheduler::resume(Suspension suspension)
{
    if (suspensions_.erase(suspension) > 0) {
        regulate();
    }
}

void Scheduler::ArretTimer()
{
    uses_.log.trace(QStringLiteral("arret Timers"));
    uses_.timer.stop();
    Q_EMIT timersStopped();
}

QCoro::Task<> Scheduler::firstTick()
{
    co_await whileHeld();
    co_await Timer_Timer();
}

QCoro::Task<> Scheduler::Timer_Timer()
{
    if (ticking_ || isSuspended()) {
        co_return;
    }
    const QScopedValueRollback ticking(ticking_, true);
    if (uses_.storage.isCheckRequested()) {
        uses_.storage.testSA();
        co_return;
    }
    if (uses_.storage.isBeingEdited()) {
        ArretTimer();
        co_return;
    }
    if (uses_.storage.lastCheck() != StorageCheck::Found) {
        co_return;
    }
    RegleTempo();
    if (uses_.timer.interval() == 0) {
        co_return;
    }
    countTick();
    co_await uses_.clock.yield();
    co_await ChargeUrl();
}

void Scheduler::countTick()
{
    counter_ = counter_ >= kLastTick ? 0 : counter_ + 1;
    Q_EMIT ticked();
}

void Scheduler::ChargeOn()
{
    passing_ = true;
    uses_.timer.stop();
}

void Scheduler::ChargeOff()
{
    passing_ = false;
    Q_EMIT waitBegan();
    startTimer();
    RegleTempo();
    Q_EMIT standstillChanged();
}

// If the pass is cut short, the first pass remains to be done, without the cameras it has reached.
QCoro::Task<> Scheduler::ChargeUrl()
{
    co_await whileHeld();
    if (!mayStartCamera()) {
        ChargeOff();
        co_return;
    }
    ChargeOn();
    int end = kCameras; // a failure in the middle does not make the next pass a first one
    const std::chrono::milliseconds began = uses_.clock.monotonicNow();
    const auto atEnd = qScopeGuard([this, &end, began] {
        const bool isRound = counter_ >= kLastTick || !firstPassDone_;
        lastRound_ = end == kCameras && isRound ? std::optional(began) : lastRound_;
        uses_.store.dropTransfers();
        uses_.store.settle();
        ChargeOff();
        firstPassDone_ = firstPassDone_ || end == kCameras;
        Q_EMIT passEnded();
    });
    const bool any = co_await readAhead(0);
    if (any) {
        end = co_await walkTable();
    }
}

bool Scheduler::isFixedDue(CameraAddress address) const
{
    return counter_ >= kLastTick || (!firstPassDone_ && !reached_[address]);
}

bool Scheduler::isAutomatic(const CameraSchedule &camera, CameraAddress address) const
{
    return camera.hasOwnPeriod() && uses_.store.automaticCounter(address) < kMaxAutomaticCounter &&
           firstPassDone_;
}

bool Scheduler::isDue(const CameraSchedule &camera, CameraAddress address) const
{
    if (!isAutomatic(camera, address)) {
        return isFixedDue(address);
    }
    return isAutomaticDue({camera.bestTime, dateFromText(camera.lastImage),
                           uses_.store.automaticCounter(address), uses_.clock.localNow()});
}

bool Scheduler::mustLoad(const CameraSchedule &camera, CameraAddress address) const
{
    if (camera.url.isEmpty()) {
        return false;
    }
    return isDue(camera, address) ||
           !folderMayHoldFile(uses_.storage.native(folderText(uses_.storage, camera)));
}

std::optional<CameraSchedule> Scheduler::cameraToLoad(const SettingsSnapshot &settings,
                                                      CameraAddress address) const
{
    if (!CameraTable::isGroupActive(settings, address.group)) {
        return std::nullopt;
    }
    CameraSchedule camera = CameraTable::schedule(settings, address);
    return mustLoad(camera, address) ? std::optional(std::move(camera)) : std::nullopt;
}

// Starts the transfers that the walk will want, from the camera at that index on; false if there
// are none. The first requests leave while the other transfers are being set up.
QCoro::Task<bool> Scheduler::readAhead(int fromIndex)
{
    bool any = false;
    int index = fromIndex;
    readAheadAt_ = storageVersion_;
    while (index < kCameras && mayStartCamera()) {
        const int end = std::min(index + kStartedTogether, kCameras);
        if (readAheadSome(index, end)) {
            any = true;
            co_await uses_.clock.yield();
            co_await whileHeld();
        }
        index = readAheadAt_ == storageVersion_ ? end : fromIndex;
        readAheadAt_ = storageVersion_;
    }
    co_return any;
}

bool Scheduler::readAheadSome(int fromIndex, int toIndex)
{
    const SettingsSnapshot settings = uses_.table.settings().snapshot();
    bool any = false;
    for (int index = fromIndex; index < toIndex; ++index) {
        const CameraAddress address = cameraAt(index);
        if (const auto camera = cameraToLoad(settings, address)) {
            uses_.store.readAhead(settings, address, expandTemplate(camera->url));
            any = true;
        }
    }
    return any;
}

bool Scheduler::isHeld() const
{
    return (isSuspended() || uses_.storage.isBeingEdited()) && !givenUp_ && !ending_;
}

bool Scheduler::mayStartCamera() const
{
    return !givenUp_ && !isSuspended() && uses_.storage.isUsable() &&
           !uses_.storage.isCheckRequested();
}

// Returns when nothing holds the capture any more, or when it is to end.
QCoro::Task<> Scheduler::whileHeld()
{
    co_await gate_.pass(uses_.scope.stopToken());
}

// Waits before a camera; if its download and those after it were given up, starts them again.
QCoro::Task<> Scheduler::pause(int index)
{
    co_await whileHeld();
    if (mayStartCamera() && storageVersion_ != readAheadAt_) {
        const bool any = co_await readAhead(index);
        Q_UNUSED(any);
    }
}

// Returns the index at which it ended: past the last camera, or at the first one not reached.
QCoro::Task<int> Scheduler::walkTable()
{
    std::optional<SettingsSnapshot> settings; // valid until something is awaited
    WorkSlice slice(uses_.clock);
    int index = 0;
    while (index < kCameras) {
        if (isHeld() || storageVersion_ != readAheadAt_) {
            settings.reset();
            co_await pause(index);
        }
        if (!mayStartCamera()) {
            break;
        }
        if (!settings) {
            settings = uses_.table.settings().snapshot();
        }
        const std::optional<CameraSchedule> camera = cameraToLoad(*settings, cameraAt(index));
        if (camera) {
            settings.reset();
            uses_.store.gather();
            co_await load(*camera, cameraAt(index), &index);
        } else {
            ++index;
        }
        if (slice.isOver()) {
            settings.reset();
            co_await uses_.clock.yield();
            slice.begin();
        }
    }
    co_return index;
}

// Goes on to the next camera unless this one must be loaded again.
QCoro::Task<> Scheduler::load(CameraSchedule camera, CameraAddress address, int *index)
{
    if (isAutomatic(camera, address) && isDue(camera, address)) {
        traceRow(QStringLiteral("Test true pour Auto "), address);
    }
    Q_EMIT cameraLoading(address);
    traceRow(QStringLiteral("Chargement de "), address);
    const quint64 before = storageVersion_;
    co_await uses_.store.ChargeFile(expandTemplate(camera.url), folderText(uses_.storage, camera),
                                    address);
    if (storageVersion_ != before) {
        Q_EMIT lampChanged(address, uses_.table.row(address).lampAtRest());
    } else if (!uses_.storage.isCheckRequested()) {
        reached_[cameraAt((*index)++)] = true;
    }
}

// The address shown is that of the same row of the group on screen, whichever group is loaded.
void Scheduler::traceRow(const QString &text, CameraAddress address)
{
    if (!uses_.log.isOn()) {
        return;
    }
    const QString url =
        shownAddress_ ? addressWithoutCredentials(shownAddress_(address.row)) : QString();
    uses_.log.trace(QStringLiteral("\r\n") + text + url + u' ' + cameraText(address));
}

QCoro::Task<> Scheduler::lastTick()
{
    ending_ = true;
    uses_.timer.stop();
    regulate();
    while (ticking_) {
        const Wake wake = co_await uses_.clock.sleep(kStepOfWaiting, std::stop_token{});
        Q_UNUSED(wake);
    }
    if (!givenUp_) {
        setTickCounter(kBeforeLastTick);
        co_await Timer_Timer();
    }
    uses_.timer.stop();
}

void Scheduler::giveUp()
{
    givenUp_ = true;
    uses_.store.dropTransfers();
    regulate();
}

} // namespace velmora
