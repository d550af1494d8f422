#include "health/HealthEngine.h"

namespace velmora {

HealthEngine::HealthEngine(CaptureEngine &capture, MailSender &sender)
    : capture_(capture)
    , book_(capture.table(), capture.storage(), capture.clock(), capture.scope())
    , oldest_(capture.table(), capture.storage(), capture.clock(), capture.scope())
    , watch_(capture.storage(), capture.clock(), book_, capture.scheduler(), oldest_)
    , mail_(capture.settings(), sender, capture.clock(), capture.scope())
    , options_(capture.settings())
{
    follow(capture.store());
    connect(&capture, &CaptureEngine::settingsAdopted, &book_, &HealthBook::followTable);
    connect(&capture.retention(), &Retention::imagesDeleted, &book_, &HealthBook::recount);
    connect(&oldest_, &OldestFirst::imagesDeleted, &book_, &HealthBook::recount);
    connect(&watch_, &HealthWatch::noticed, this, &HealthEngine::tell);
    connect(&mail_, &NoticeMail::failed, this, &HealthEngine::noticed);
}

void HealthEngine::follow(ImageStore &store)
{
    connect(&store, &ImageStore::imageStored, &book_, &HealthBook::addImage);
    connect(&store, &ImageStore::cameraFailed, &book_, &HealthBook::addFailure);
    connect(&store, &ImageStore::cameraAnswered, &book_, &HealthBook::addSuccess);
}

void HealthEngine::start()
{
    book_.load();
    capture_.launch(watch_.run(capture_.scope().stopToken()));
}

void HealthEngine::tell(const QString &text)
{
    capture_.log().trace(text);
    mail_.add(text);
    if (options_.isOn(HealthChoice::Notices)) {
        desktop_.show(text);
    }
    Q_EMIT noticed(text);
}

} // namespace velmora
