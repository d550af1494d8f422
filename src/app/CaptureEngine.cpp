#include "app/CaptureEngine.h"

#include "base/WorkFile.h"

namespace velmora {

CaptureEngine::CaptureEngine(const QString &programFolder, Clock &clock, PictureSource &source)
    : clock_(clock)
    , settings_(programFolder)
    , paths_(programFolder)
    , log_(programFolder, clock_)
    , problems_(log_)
    , debugSwitch_(settings_, log_)
    , table_(settings_, problems_)
    , storage_(table_, paths_, log_, problems_)
    , page_(table_, storage_, log_, problems_)
    , options_(settings_)
    , scope_([this](const QString &text) { problems_.warn(text); })
    , readAhead_(source, scope_)
    , store_(services(), readAhead_)
    , scheduler_(services(), store_, readAhead_, scope_, timer_)
    , conformity_(services(), scheduler_, scope_)
    , retention_(services(), scope_)
    , liveView_(services(), source, scope_)
    , trial_(services(), source, scope_)
    , watch_(storage_, clock_)
{
    clearWorkFiles(programFolder);
    connect(&store_, &ImageStore::imageStored, &retention_, &Retention::follow);
    connect(&storage_, &StorageFolder::checked, this, &CaptureEngine::clearStrayFiles);
}

CaptureServices CaptureEngine::services()
{
    return {table_, storage_, page_, options_, status_, log_, problems_, clock_};
}

void CaptureEngine::checkSettings()
{
    if (const std::optional<QString> warning = settings_.sizeWarning()) {
        problems_.warn(*warning);
    }
}

void CaptureEngine::start()
{
    scheduler_.start();
    retention_.begin();
    launch(watch_.run(scope_.stopToken()));
}

void CaptureEngine::adoptSettings()
{
    debugSwitch_.load();
    options_.adoptStored();
    storage_.adoptStored();
    page_.reread();
}

// A killed run may have left unnamed files in the storage folder that is used now.
void CaptureEngine::clearStrayFiles(const StorageState &state)
{
    const QString folder = storage_.workFolder();
    if (state.captureEnabled && folder != clearedFolder_) {
        clearedFolder_ = folder;
        clearWorkFiles(folder);
    }
}

QCoro::Task<> CaptureEngine::close()
{
    scheduler_.giveUp();
    retention_.end();
    scope_.requestStop();
    co_await scope_.join();
    timer_.stop();
}

} // namespace velmora
