#include "capture/Retention.h"

#include "base/DateText.h"
#include "cameras/CameraChoices.h"
#include "capture/OldImages.h"

#include <QScopeGuard>

#include <algorithm>

namespace velmora {
namespace {

using namespace std::chrono_literals;

constexpr auto kPause = 1h;
constexpr auto kRestAtEnd = 2s;

QString outcome(const OldImages &images)
{
    if (!images.isComplete()) {
        return QStringLiteral("the folder cannot be read, nothing deleted");
    }
    if (!images.isClockPlausible()) {
        return QStringLiteral("the clock is before the newest image, nothing deleted");
    }
    QString text = QStringLiteral("%1 images from before %2 deleted")
                       .arg(images.deleted())
                       .arg(dateText(images.limit()));
    if (images.failed() > 0) {
        text += QStringLiteral(", %1 not: %2")
                    .arg(images.failed())
                    .arg(QString::fromStdString(images.error().message()));
    }
    return text;
}

} // namespace

Retention::Retention(const CaptureServices &services, TaskScope &scope)
    : services_(services)
    , scope_(scope)
    , slice_(services.clock)
{
}

void Retention::begin()
{
    const SettingsSnapshot settings = services_.table.settings().snapshot();
    for (const CameraAddress camera : kAllCameras) {
        request(settings, camera);
    }
}

void Retention::follow(CameraAddress camera)
{
    request(services_.table.settings().snapshot(), camera);
}

void Retention::request(const SettingsSnapshot &settings, CameraAddress camera)
{
    const bool isWaiting = std::ranges::find(waiting_, camera) != waiting_.end();
    if (isWaiting || deadline_ || !isDue(camera) || !CameraTable::deletesOld(settings, camera)) {
        return;
    }
    waiting_.push_back(camera);
    if (!running_) {
        running_ = true;
        scope_.launch(run());
    }
}

void Retention::end()
{
    deadline_ = services_.clock.monotonicNow() + kRestAtEnd;
}

bool Retention::isOver() const
{
    return deadline_ && services_.clock.monotonicNow() >= *deadline_;
}

Retention::Moment &Retention::lastTurn(CameraAddress camera)
{
    return lastTurns_.at(static_cast<std::size_t>(camera.group))
        .at(static_cast<std::size_t>(camera.row));
}

bool Retention::isDue(CameraAddress camera) const
{
    const Moment &last = lastTurns_.at(static_cast<std::size_t>(camera.group))
                             .at(static_cast<std::size_t>(camera.row));
    return !last || services_.clock.monotonicNow() - *last >= kPause;
}

QCoro::Task<> Retention::run()
{
    const auto atEnd = qScopeGuard([this] { running_ = false; });
    co_await services_.clock.yield(); // whoever stored an image goes on first
    slice_.begin();
    while (!waiting_.empty()) {
        co_await services_.storage.gate().pass(scope_.stopToken());
        if (services_.storage.isBeingEdited()) {
            co_return; // the program ends
        }
        const CameraAddress camera = waiting_.front();
        waiting_.pop_front();
        co_await clear(camera);
    }
}

QCoro::Task<> Retention::clear(CameraAddress camera)
{
    const StorageUse use(services_.storage);
    const FolderFiles folder(services_.storage.cameraFolder(camera), FolderLinks::Refused);
    const bool isWanted =
        CameraTable::deletesOld(services_.table.settings().snapshot(), camera); // still
    if (!folder.isOpen() || !isWanted || isOver()) {
        co_return;
    }
    lastTurn(camera) = services_.clock.monotonicNow();
    const WallTime local = services_.clock.localNow();
    OldImages images(folder, local, local - services_.clock.utcOffset());
    while (use.mayGoOn() && images.lookSome()) {
        co_await letEventsRun();
        if (isOver()) {
            co_return;
        }
    }
    while (use.mayGoOn() && images.isComplete() && images.isClockPlausible() && !isOver() &&
           images.deleteSome()) {
        co_await letEventsRun();
    }
    report(camera, images);
    if (!use.mayGoOn()) {
        putBack(camera);
    }
}

// Its folder may be another by now.
void Retention::putBack(CameraAddress camera)
{
    lastTurn(camera).reset();
    waiting_.push_front(camera);
}

void Retention::report(CameraAddress camera, const OldImages &images)
{
    services_.log.trace(
        QStringLiteral("Retention %1: %2").arg(cameraText(camera), outcome(images)));
    if (images.deleted() > 0) {
        Q_EMIT imagesDeleted(camera);
    }
}

QCoro::Task<> Retention::letEventsRun()
{
    if (slice_.isOver()) {
        co_await services_.clock.yield();
        slice_.begin();
    }
}

} // namespace velmora
