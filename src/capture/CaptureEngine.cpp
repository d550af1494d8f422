#include "capture/CaptureEngine.h"

#include "base/WorkFile.h"
#include "settings/SettingsFaults.h"

namespace velmora {

CaptureEngine::CaptureEngine(const QString &programFolder, Clock &clock, PictureSource &source)
    : clock_(clock)
    , source_(source)
    , settings_(programFolder)
    , paths_(programFolder)
    , log_(programFolder, clock_)
    , problems_(log_)
    , debugSwitch_(settings_, log_)
    , table_(settings_, problems_)
    , storage_(table_, paths_, log_, problems_)
    , options_(settings_)
    , requests_(settings_, storage_, options_)
    , scope_([this](const QString &text) { problems_.warn(text); })
    , readAhead_(source_, scope_)
    , store_({table_, storage_, requests_, readAhead_, log_, problems_, clock_})
    , scheduler_({table_, storage_, options_, store_, log_, clock_, scope_, timer_})
    , conformity_(storage_, scheduler_, log_, clock_, scope_)
    , retention_(table_, storage_, log_, clock_, scope_)
    , watch_(storage_, clock_)
{
    clearWorkFiles(programFolder);
    connect(&store_, &ImageStore::imageStored, &retention_, &Retention::follow);
    connect(&storage_, &StorageFolder::checked, this, &CaptureEngine::clearStrayFiles);
}

void CaptureEngine::checkSettings()
{
    for (const auto &warning : {sizeWarning(settings_), mountWarning(settings_)}) {
        if (warning) {
            problems_.warn(*warning);
        }
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
    if (!storage_.isLoaded()) {
        return;
    }
    debugSwitch_.load();
    options_.adoptStored();
    storage_.adoptStored();
    Q_EMIT settingsAdopted();
}

// A killed run may have left working files in the storage folder now in use.
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
