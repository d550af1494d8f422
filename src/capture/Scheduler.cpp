#include "capture/Scheduler.h"

#include "base/DateText.h"
#include "base/Folders.h"
#include "base/OneShot.h"
#include "base/WorkSlice.h"
#include "cameras/Credentials.h"
#include "cameras/FolderName.h"
#include "capture/CameraRequest.h"
#include "capture/CameraUrl.h"
#include "capture/DueRule.h"

#include <QScopeGuard>
#include <QScopedValueRollback>

namespace velmora {
namespace {

using namespace std::chrono_literals;

constexpr int kLastTick = 60; // the counter runs from 0 to here: 61 ticks a round
constexpr int kStartTick = 55;
constexpr int kBeforeLastTick = 59;
constexpr int kMaxAutomaticCounter = 10;
constexpr auto kStepOfWaiting = 10ms;

QString stepWait()
{
    return QStringLiteral("Wait");
}

QString folderText(const StorageFolder &storage, const CameraSchedule &camera)
{
    return storage.folderText(encodeFolderName(camera.url));
}

} // namespace

Scheduler::Scheduler(const CaptureServices &services, ImageStore &store, ReadAhead &readAhead,
                     TaskScope &scope, QTimer &timer)
    : services_(services)
    , store_(store)
    , readAhead_(readAhead)
    , scope_(scope)
    , timer_(timer)
{
    connect(&timer_, &QTimer::timeout, this, [this] { scope_.launch(Timer_Timer()); });
    connect(&store_, &ImageStore::loaded, &timer_, [this] { startTimer(); });
    connect(&services_.storage, &StorageFolder::checked, this, &Scheduler::regulate);
    connect(&services_.storage, &StorageFolder::editBegan, this, &Scheduler::beginEdit);
    connect(&services_.storage, &StorageFolder::folderMade, this,
            [this] { setTickCounter(kStartTick); });
}

void Scheduler::start()
{
    RegleTempo();
    showStandstill();
    setTickCounter(kStartTick);
}

void Scheduler::RegleTempo()
{
    const std::chrono::milliseconds interval = services_.options.normaliseTempo();
    if (timer_.intervalAsDuration() != interval) {
        timer_.setInterval(interval); // would begin the period anew if it were set again
    }
    services_.status.set(Caption::Step,
                         interval.count() != 0 ? stepWait() : QStringLiteral("Pause"));
}

// What is being downloaded would be for a folder that is about to become another.
void Scheduler::beginEdit()
{
    ++interruptions_;
    readAhead_.drop();
    ArretTimer();
    regulate();
}

// The one place that follows whatever stops the capture or lets it go on. The end of a pass starts
// the timer itself.
void Scheduler::regulate()
{
    if (isHeld()) {
        gate_.shut();
    } else {
        gate_.open();
    }
    if (!services_.storage.isUsable() || isSuspended()) {
        timer_.stop();
    } else if (!passing_ && !timer_.isActive()) {
        startTimer();
    }
    showStandstill();
}

void Scheduler::startTimer()
{
    if (services_.storage.isUsable() && !isSuspended() && !ending_ && !givenUp_) {
        timer_.start();
    }
}

void Scheduler::showStandstill()
{
    const QString pause = QStringLiteral("Pause");
    if (!services_.storage.isUsable()) {
        services_.status.set(Caption::Step, pause);
    } else if (services_.status.text(Caption::Step) == pause) {
        services_.status.set(Caption::Step, stepWait());
    }
    services_.status.set(Caption::Standstill, standstill());
}

QString Scheduler::standstill() const
{
    const StorageFolder &storage = services_.storage;
    if (storage.isBeingEdited()) {
        return QStringLiteral("The capture waits for the storage folder: its box is being edited "
                              "in the main window");
    }
    if (storage.lamp() == LampColour::Red) {
        return QStringLiteral("The capture has stopped: the storage folder %1 is not there")
            .arg(storage.inForce());
    }
    return {};
}

void Scheduler::suspend()
{
    ++suspensions_;
    regulate();
}

void Scheduler::resume()
{
    if (isSuspended() && --suspensions_ == 0) {
        regulate();
    }
}

void Scheduler::ArretTimer()
{
    services_.log.trace(QStringLiteral("arret Timers"));
    timer_.stop();
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
    if (services_.storage.isCheckRequested()) {
        services_.storage.testSA();
        co_return;
    }
    if (services_.storage.isBeingEdited()) {
        ArretTimer();
        co_return;
    }
    if (services_.storage.lamp() != LampColour::Green) {
        co_return;
    }
    RegleTempo();
    if (timer_.interval() == 0) {
        co_return;
    }
    countTick();
    co_await services_.clock.yield();
    co_await ChargeUrl();
}

void Scheduler::countTick()
{
    counter_ = counter_ >= kLastTick ? 0 : counter_ + 1;
    const QString left =
        counter_ >= kBeforeLastTick ? QString() : QString::number(kLastTick - counter_);
    services_.status.set(Caption::Countdown, left);
    services_.status.set(Caption::NextCycle, left);
}

void Scheduler::ChargeOn()
{
    passing_ = true;
    timer_.stop();
}

void Scheduler::ChargeOff()
{
    passing_ = false;
    services_.status.set(Caption::Step, stepWait());
    startTimer();
    RegleTempo();
    services_.status.set(Caption::Countdown, QString());
    showStandstill();
}

// A pass that is cut short leaves the first pass to be done, without the cameras that it reached.
QCoro::Task<> Scheduler::ChargeUrl()
{
    co_await whileHeld();
    if (!mayStartCamera()) {
        ChargeOff();
        co_return;
    }
    ChargeOn();
    int end = kCameras; // what fails in the middle does not make the next pass a first one
    const auto atEnd = qScopeGuard([this, &end] {
        readAhead_.drop();
        ChargeOff();
        firstPassDone_ = firstPassDone_ || end == kCameras;
        Q_EMIT passEnded();
    });
    if (readAhead(0)) {
        end = co_await walkTable();
    }
}

bool Scheduler::isFixedDue(CameraAddress address) const
{
    return counter_ >= kLastTick || (!firstPassDone_ && !reached_[address]);
}

bool Scheduler::isAutomatic(const CameraSchedule &camera, CameraAddress address) const
{
    return camera.automatic && !camera.bestTime.isUnknown() &&
           store_.automaticCounter(address) < kMaxAutomaticCounter && firstPassDone_;
}

bool Scheduler::isDue(const CameraSchedule &camera, CameraAddress address) const
{
    if (!isAutomatic(camera, address)) {
        return isFixedDue(address);
    }
    return isAutomaticDue({camera.bestTime, dateFromText(camera.lastImage),
                           store_.automaticCounter(address), services_.clock.localNow()});
}

bool Scheduler::mustLoad(const CameraSchedule &camera, CameraAddress address) const
{
    if (camera.url.isEmpty()) {
        return false;
    }
    return isDue(camera, address) ||
           !folderHoldsFile(services_.storage.native(folderText(services_.storage, camera)));
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

// Starts what the walk will want; false when that is nothing.
bool Scheduler::readAhead(int fromIndex)
{
    const SettingsSnapshot settings = services_.table.settings().snapshot();
    readAheadAt_ = interruptions_;
    bool any = false;
    for (int index = fromIndex; index < kCameras; ++index) {
        const CameraAddress address = cameraAt(index);
        if (const auto camera = cameraToLoad(settings, address)) {
            readAhead_.begin(address,
                             cameraRequest(services_, address, expandTemplate(camera->url)));
            any = true;
        }
    }
    return any;
}

bool Scheduler::isHeld() const
{
    return (isSuspended() || services_.storage.isBeingEdited()) && !givenUp_ && !ending_;
}

bool Scheduler::mayStartCamera() const
{
    return !givenUp_ && !isSuspended() && services_.storage.isUsable() &&
           !services_.storage.isCheckRequested();
}

// Ends when nothing holds the capture any more, or when nothing more is to come.
QCoro::Task<> Scheduler::whileHeld()
{
    co_await gate_.pass(scope_.stopToken());
}

// In front of a camera; what was being downloaded for it and those behind it may be given up.
QCoro::Task<> Scheduler::pause(int index)
{
    co_await whileHeld();
    if (mayStartCamera() && interruptions_ != readAheadAt_) {
        readAhead(index);
    }
}

// Gives the index at which it ended: behind the last camera, or at the first one not reached.
QCoro::Task<int> Scheduler::walkTable()
{
    std::optional<SettingsSnapshot> settings; // good until something is waited for
    WorkSlice slice(services_.clock);
    int index = 0;
    while (index < kCameras) {
        if (isHeld() || interruptions_ != readAheadAt_) {
            settings.reset();
            co_await pause(index);
        }
        if (!mayStartCamera()) {
            break;
        }
        if (!settings) {
            settings = services_.table.settings().snapshot();
        }
        const std::optional<CameraSchedule> camera = cameraToLoad(*settings, cameraAt(index));
        if (camera) {
            settings.reset();
            co_await load(*camera, cameraAt(index), &index);
        } else {
            ++index;
        }
        if (slice.isOver()) {
            settings.reset();
            co_await services_.clock.yield();
            slice.begin();
        }
    }
    co_return index;
}

// Goes on to the next camera unless this one is to be loaded once more.
QCoro::Task<> Scheduler::load(CameraSchedule camera, CameraAddress address, int *index)
{
    if (isAutomatic(camera, address) && isDue(camera, address)) {
        traceRow(QStringLiteral("Test true pour Auto "), address);
    }
    services_.page.showLoading(address);
    traceRow(QStringLiteral("Chargement de "), address);
    const quint64 before = interruptions_;
    co_await store_.ChargeFile(expandTemplate(camera.url), folderText(services_.storage, camera),
                               address);
    if (interruptions_ != before) {
        services_.page.showLamp(address, services_.table.row(address).lamp);
    } else if (!services_.storage.isCheckRequested()) {
        reached_[cameraAt((*index)++)] = true;
    }
}

// The address shown is that of the same row of the group on screen, whichever group is loaded.
void Scheduler::traceRow(const QString &text, CameraAddress address)
{
    const QString url = withoutCredentials(services_.page.row(address.row).url);
    const QString camera = QStringLiteral(" %1:%2").arg(address.group).arg(address.row);
    services_.log.trace(QStringLiteral("\r\n") + text + url + camera);
}

QCoro::Task<> Scheduler::lastTick()
{
    ending_ = true;
    timer_.stop();
    regulate();
    while (ticking_) {
        const Wake wake = co_await services_.clock.sleep(kStepOfWaiting, std::stop_token{});
        Q_UNUSED(wake);
    }
    if (!givenUp_) {
        setTickCounter(kBeforeLastTick);
        co_await Timer_Timer();
    }
    timer_.stop();
}

void Scheduler::giveUp()
{
    givenUp_ = true;
    readAhead_.drop();
    regulate();
}

} // namespace velmora
