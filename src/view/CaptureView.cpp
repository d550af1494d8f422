#include "view/CaptureView.h"

#include "base/DateText.h"
#include "cameras/CameraChoices.h"

namespace velmora {

CaptureView::CaptureView(CaptureEngine &engine)
    : engine_(engine)
    , page_(engine.table(), engine.storage(), engine.log(), engine.problems())
    , liveView_(engine.storage(), engine.requests(), engine.source(), engine.clock(),
                engine.scope())
    , trial_({engine.table(), engine.storage(), engine.requests(), engine.source(), engine.clock(),
              engine.scope()})
{
    followStore(engine_.store());
    followLamps(engine_.store());
    followScheduler(engine_.scheduler());
    followLiveView(liveView_);
    connect(&engine_.conformity(), &Conformity::stepTaken, this, &CaptureView::showWork);
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
        showWork({});
    });
    connect(&store, &ImageStore::cameraAnswered, this,
            [this](CameraAddress camera, const QString &remark) {
                page_.remarks().set(camera, remark);
                showIdle();
            });
    connect(&store, &ImageStore::cameraFailed, this,
            [this](CameraAddress camera, const QString &reason) {
                page_.remarks().set(camera, reason);
            });
    connect(&store, &ImageStore::imageStored, this,
            [this](CameraAddress, const QString &fileName) { showStored(fileName); });
    connect(&store, &ImageStore::storingFailed, this,
            [this](const QString &text) { showTrouble(TroubleOf::Storing, text); });
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
        showIdle(interval.count() != 0 ? Step::Waiting : Step::Paused);
    });
    connect(&scheduler, &Scheduler::ticked, this,
            [this, &scheduler] { showTicksLeft(scheduler.ticksLeft()); });
    connect(&scheduler, &Scheduler::waitBegan, this, [this] {
        showIdle(Step::Waiting);
        status_.set(Caption::Countdown, QString());
    });
    connect(&scheduler, &Scheduler::standstillChanged, this, &CaptureView::showStandstill);
}

void CaptureView::followLiveView(LiveView &live)
{
    connect(&live, &LiveView::fetchBegan, &page_, &CameraPage::beginLive);
    connect(&live, &LiveView::fetchEnded, &page_, &CameraPage::endLive);
    connect(&live, &LiveView::downloaded, &page_, &CameraPage::showLoadSeconds);
    connect(&live, &LiveView::troubleChanged, this, &CaptureView::showLiveTrouble);
    connect(&page_, &CameraPage::picturesCleared, &live, &LiveView::clear);
    connect(&page_, &CameraPage::cameraReplaced, &live, &LiveView::forget);
}

bool CaptureView::standsStill() const
{
    return !engine_.storage().isUsable() || !engine_.scheduler().standstill().isEmpty();
}

// The box of the storage folder may have been entered meanwhile.
void CaptureView::showIdle()
{
    showIdle(standsStill() ? Step::Paused : Step::Waiting);
}

void CaptureView::showIdle(Step step)
{
    step_ = step;
    status_.set(Caption::Step,
                step == Step::Paused ? QStringLiteral("Pause") : QStringLiteral("Wait"));
}

void CaptureView::showWork(const QString &text)
{
    step_ = Step::Working;
    status_.set(Caption::Step, text);
}

void CaptureView::showBegin(CameraAddress camera, const QString &address)
{
    showWork(QStringLiteral("Load ") + cameraText(camera));
    status_.set(Caption::Activity, QStringLiteral("Test ") + address);
}

void CaptureView::showStored(const QString &fileName)
{
    status_.set(Caption::Activity, QStringLiteral("Ajout de ") + fileName);
    status_.set(Caption::LastStore, timeText(engine_.clock().localNow()));
    showTrouble(TroubleOf::Storing, {});
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
        showIdle(Step::Paused);
    } else if (step_ == Step::Paused) {
        showIdle(Step::Waiting);
    }
    status_.set(Caption::Standstill, engine_.scheduler().standstill());
}

void CaptureView::showTrouble(TroubleOf source, const QString &text)
{
    troubleOf_ = source;
    status_.set(Caption::Trouble, text);
}

// The end of the live view's trouble clears what was reported of it, but not what others have.
void CaptureView::showLiveTrouble(const QString &text)
{
    if (!text.isEmpty() || troubleOf_ == TroubleOf::LiveView) {
        showTrouble(TroubleOf::LiveView, text);
    }
}

} // namespace velmora
