#include "capture/Scheduler.h"

#include "base/DateText.h"
#include "base/Folders.h"
#include "base/OneShot.h"
#include "cameras/Credentials.h"
#include "cameras/FolderName.h"
#include "capture/CameraFolder.h"
#include "capture/CameraRequest.h"
#include "capture/CameraUrl.h"
#include "capture/DueRule.h"
#include "capture/WorkSlice.h"

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
    connect(&services_.storage, &StorageFolder::checked, this, &Scheduler::applyStorageState);
    connect(&services_.storage, &StorageFolder::editBegan, this, &Scheduler::ArretTimer);
    connect(&services_.storage, &StorageFolder::folderMade, this,
            [this] { setTickCounter(kStartTick); });
}

void Scheduler::start()
{
    RegleTempo();
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

void Scheduler::applyStorageState(const StorageState &state)
{
    if (!state.captureEnabled) {
        timer_.stop();
    } else if (!timer_.isActive()) {
        startTimer();
    }
}

void Scheduler::startTimer()
{
    if (!isSuspended()) {
        timer_.start();
    }
}

void Scheduler::suspend()
{
    ++suspensions_;
    timer_.stop();
}

// The end of a pass starts the timer itself.
void Scheduler::resume()
{
    if (!isSuspended() || --suspensions_ > 0) {
        return;
    }
    const bool timerWanted = services_.storage.state().captureEnabled &&
                             !services_.storage.timersStopped() && !ending_ && !givenUp_;
    if (timerWanted && !ticking_) {
        timer_.start();
    }
}

void Scheduler::ArretTimer()
{
    services_.log.trace(QStringLiteral("arret Timers"));
    timer_.stop();
    Q_EMIT timersStopped();
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
    if (services_.storage.timersStopped()) {
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
    timer_.stop();
}

void Scheduler::ChargeOff()
{
    services_.status.set(Caption::Step, stepWait());
    startTimer();
    RegleTempo();
    services_.status.set(Caption::Countdown, QString());
}

QCoro::Task<> Scheduler::ChargeUrl()
{
    co_await whileSuspended();
    if (isSuspended() || services_.storage.isCheckRequested()) {
        ChargeOff();
        co_return;
    }
    ChargeOn();
    const auto atEnd = qScopeGuard([this] {
        readAhead_.drop();
        ChargeOff();
        firstPassDone_ = true;
        Q_EMIT passEnded();
    });
    if (readAhead()) {
        co_await walkTable();
    }
}

bool Scheduler::isFixedDue() const
{
    return counter_ >= kLastTick || !firstPassDone_;
}

bool Scheduler::isAutomatic(const CameraSchedule &camera, CameraAddress address) const
{
    return camera.automatic && !camera.bestTime.isUnknown() &&
           store_.automaticCounter(address) < kMaxAutomaticCounter && firstPassDone_;
}

bool Scheduler::isDue(const CameraSchedule &camera, CameraAddress address) const
{
    if (!isAutomatic(camera, address)) {
        return isFixedDue();
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
bool Scheduler::readAhead()
{
    const SettingsSnapshot settings = services_.table.settings().snapshot();
    bool any = false;
    for (int group = 0; group < kGroups; ++group) {
        for (int row = 0; row < kRows; ++row) {
            const CameraAddress address{group, row};
            if (const auto camera = cameraToLoad(settings, address)) {
                readAhead_.begin(address,
                                 cameraRequest(services_, address, expandTemplate(camera->url)));
                any = true;
            }
        }
    }
    return any;
}

bool Scheduler::mayStartCamera() const
{
    return !givenUp_ && !isSuspended() && !services_.storage.isCheckRequested();
}

// Ends with the suspension, or when nothing more is to come.
QCoro::Task<> Scheduler::whileSuspended()
{
    while (isSuspended() && !givenUp_ && !ending_) {
        const Wake wake = co_await services_.clock.sleep(kStepOfWaiting, std::stop_token{});
        Q_UNUSED(wake);
    }
}

QCoro::Task<> Scheduler::walkTable()
{
    std::optional<SettingsSnapshot> settings; // good until something is waited for
    WorkSlice slice(services_.clock);
    for (int index = 0; index < kGroups * kRows; ++index) {
        if (isSuspended()) {
            settings.reset();
            co_await whileSuspended();
        }
        if (!mayStartCamera()) {
            break;
        }
        const CameraAddress address{index / kRows, index % kRows};
        if (!settings) {
            settings = services_.table.settings().snapshot();
        }
        const std::optional<CameraSchedule> camera = cameraToLoad(*settings, address);
        if (camera) {
            settings.reset();
            co_await load(*camera, address);
        }
        if (slice.isOver()) {
            settings.reset();
            co_await services_.clock.yield();
            slice.begin();
        }
    }
}

QCoro::Task<> Scheduler::load(CameraSchedule camera, CameraAddress address)
{
    if (isAutomatic(camera, address) && isDue(camera, address)) {
        traceRow(QStringLiteral("Test true pour Auto "), address);
    }
    services_.page.showLoading(address);
    traceRow(QStringLiteral("Chargement de "), address);
    co_await store_.ChargeFile(expandTemplate(camera.url), folderText(services_.storage, camera),
                               address);
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
}

} // namespace velmora
