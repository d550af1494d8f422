#include "view/CaptureView.h"

#include "base/DateText.h"
#include "cameras/CameraChoices.h"

namespace velmora {
namespace {

QString waitText()
{
    return QStringLiteral("Wait");
}

QString pauseText()
{
    return QStringLiteral("Pause");
}

} // namespace

CaptureView::CaptureView(CaptureEngine &engine)
    : engine_(engine)
    , page_(engine.table(), engine.storage(), engine.log(), engine.problems())
{
    followStore(engine_.store());
    followLamps(engine_.store());
    followScheduler(engine_.scheduler());
    follow(engine_.liveView());
    follow(engine_.conformity());
    connect(&engine_, &CaptureEngine::settingsAdopted, &page_, &CameraPage::reread);
}

CaptureView::~CaptureView()
{
    engine_.scheduler().setShownAddress({});
}

void CaptureView::followStore(ImageStore &store)
{
    connect(&store, &ImageStore::loadBegan, this, &CaptureView::showBegin);
    connect(&store, &ImageStore::downloaded, this, [this](CameraAddress camera, int seconds) {
        page_.showLoadSeconds(camera, seconds);
        status_.set(Caption::Step, QString());
    });
    connect(&store, &ImageStore::cameraAnswered, this,
            [this](CameraAddress camera, const QString &remark) {
                page_.remarks().set(camera, remark);
                status_.set(Caption::Step, idleText());
            });
    connect(&store, &ImageStore::cameraFailed, this,
            [this](CameraAddress camera, const QString &reason) {
                page_.remarks().set(camera, reason);
            });
    connect(&store, &ImageStore::imageStored, this,
            [this](CameraAddress, const QString &fileName) { showStored(fileName); });
    connect(&store, &ImageStore::storingFailed, this,
            [this](const QString &text) { status_.set(Caption::Trouble, text); });
}

void CaptureView::followLamps(ImageStore &store)
{
    connect(&store, &ImageStore::lampChanged, &page_, &CameraPage::showLamp);
    connect(&store, &ImageStore::bestTimeChanged, &page_, &CameraPage::showBestTime);
    connect(&store, &ImageStore::newImagesCounted, &page_, &CameraPage::showNewImages);
}

void CaptureView::followScheduler(Scheduler &scheduler)
{
    scheduler.setShownAddress([this](int row) { return page_.row(row).url; });
    connect(&scheduler, &Scheduler::cameraLoading, &page_, &CameraPage::showLoading);
    connect(&scheduler, &Scheduler::lampChanged, &page_, &CameraPage::showLamp);
    connect(&scheduler, &Scheduler::intervalSet, this, [this](std::chrono::milliseconds interval) {
        status_.set(Caption::Step, interval.count() != 0 ? waitText() : pauseText());
    });
    connect(&scheduler, &Scheduler::ticked, this,
            [this, &scheduler] { showTicksLeft(scheduler.ticksLeft()); });
    connect(&scheduler, &Scheduler::waitBegan, this, [this] {
        status_.set(Caption::Step, waitText());
        status_.set(Caption::Countdown, QString());
    });
    connect(&scheduler, &Scheduler::standstillChanged, this, &CaptureView::showStandstill);
}

void CaptureView::follow(LiveView &live)
{
    connect(&live, &LiveView::fetchBegan, &page_, &CameraPage::beginLive);
    connect(&live, &LiveView::fetchEnded, &page_, &CameraPage::endLive);
    connect(&live, &LiveView::downloaded, &page_, &CameraPage::showLoadSeconds);
    connect(&live, &LiveView::troubleChanged, this, &CaptureView::showTrouble);
    connect(&page_, &CameraPage::picturesCleared, &live, &LiveView::clear);
}

void CaptureView::follow(Conformity &conformity)
{
    connect(&conformity, &Conformity::stepTaken, this,
            [this](const QString &text) { status_.set(Caption::Step, text); });
}

bool CaptureView::standsStill() const
{
    return !engine_.storage().isUsable() || !engine_.scheduler().standstill().isEmpty();
}

// The box of the storage folder may have been entered meanwhile.
QString CaptureView::idleText() const
{
    return standsStill() ? pauseText() : waitText();
}

void CaptureView::showBegin(CameraAddress camera, const QString &address)
{
    status_.set(Caption::Step, QStringLiteral("Load ") + cameraText(camera));
    status_.set(Caption::Activity, QStringLiteral("Test ") + address);
}

void CaptureView::showStored(const QString &fileName)
{
    status_.set(Caption::Activity, QStringLiteral("Ajout de ") + fileName);
    status_.set(Caption::LastStore, dateText(engine_.clock().localNow()).section(u' ', 1));
    status_.set(Caption::Trouble, QString());
}

// At the last tick but one there is nothing left to count down.
void CaptureView::showTicksLeft(int ticks)
{
    const QString left = ticks > 1 ? QString::number(ticks) : QString();
    status_.set(Caption::Countdown, left);
    status_.set(Caption::NextCycle, left);
}

void CaptureView::showStandstill()
{
    if (standsStill()) {
        status_.set(Caption::Step, pauseText());
    } else if (status_.text(Caption::Step) == pauseText()) {
        status_.set(Caption::Step, waitText());
    }
    status_.set(Caption::Standstill, engine_.scheduler().standstill());
}

// The end of trouble clears what was reported of it, but not what others have reported.
void CaptureView::showTrouble(const QString &before, const QString &now)
{
    if (!now.isEmpty() || status_.text(Caption::Trouble) == before) {
        status_.set(Caption::Trouble, now);
    }
}

} // namespace velmora
