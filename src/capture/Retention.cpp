#include "capture/Retention.h"

#include "base/DateText.h"
#include "cameras/CameraChoices.h"
#include "cameras/FolderName.h"
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

Retention::Retention(const CameraTable &table, StorageFolder &storage, EventLog &log, Clock &clock,
                     TaskScope &scope)
    : table_(table)
    , storage_(storage)
    , log_(log)
    , clock_(clock)
    , scope_(scope)
    , slice_(clock)
{
}

void Retention::begin()
{
    const SettingsSnapshot settings = table_.settings().snapshot();
    for (const CameraAddress camera : kAllCameras) {
        request(settings, camera);
    }
}

void Retention::follow(CameraAddress camera)
{
    request(table_.settings().snapshot(), camera);
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
    deadline_ = clock_.monotonicNow() + kRestAtEnd;
}

bool Retention::isOver() const
{
    return deadline_ && clock_.monotonicNow() >= *deadline_;
}

bool Retention::isDue(CameraAddress camera) const
{
    const Moment &last = lastTurns_[camera];
    return !last || clock_.monotonicNow() - *last >= kPause;
}

QCoro::Task<> Retention::run()
{
    const auto atEnd = qScopeGuard([this] { running_ = false; });
    co_await clock_.yield(); // the caller, which stored the image, goes on first
    slice_.begin();
    while (!waiting_.empty()) {
        co_await storage_.gate().pass(scope_.stopToken());
        if (storage_.isBeingEdited()) {
            co_return; // the program is ending
        }
        const CameraAddress camera = waiting_.front();
        waiting_.pop_front();
        co_await clear(camera);
    }
}

// Still, and by every camera whose images are in the folder: long addresses that differ may be cut
// to the same folder name.
bool Retention::isWanted(const SettingsSnapshot &settings, CameraAddress camera)
{
    const QString url = CameraTable::url(settings, camera);
    const auto keepsThere = [&](CameraAddress other) {
        const QString otherUrl = CameraTable::url(settings, other);
        return otherUrl != url && encodeFolderName(otherUrl) == encodeFolderName(url) &&
               !CameraTable::deletesOld(settings, other);
    };
    return CameraTable::deletesOld(settings, camera) &&
           std::ranges::none_of(kAllCameras, keepsThere);
}

QCoro::Task<> Retention::clear(CameraAddress camera)
{
    const StorageUse use(storage_);
    const QString path = storage_.cameraFolder(camera);
    const FolderFiles folder(path, FolderLinks::Refused);
    if (!folder.isOpen() || !isWanted(table_.settings().snapshot(), camera) || isOver()) {
        co_return;
    }
    lastTurns_[camera] = clock_.monotonicNow();
    const WallTime local = clock_.localNow();
    OldImages images(folder, local, local - clock_.utcOffset());
    while (use.mayGoOn() && images.lookSome()) {
        co_await letEventsRun(&slice_, &clock_);
        if (isOver()) {
            co_return;
        }
    }
    if (images.isComplete() && images.isClockPlausible()) {
        co_await sweep(camera, path, &images, use);
    }
    report(camera, images);
    if (!use.mayGoOn()) {
        putBack(camera);
    }
}

// In slices, before each of which the user may have thought better of it.
QCoro::Task<> Retention::sweep(CameraAddress camera, QString path, OldImages *images,
                               StorageUse use)
{
    while (use.mayGoOn() && !isOver() && storage_.cameraFolder(camera) == path &&
           isWanted(table_.settings().snapshot(), camera)) {
        do {
            if (!images->deleteSome()) {
                co_return;
            }
        } while (!slice_.isOver());
        co_await clock_.yield();
        slice_.begin();
    }
}

// Its folder may have changed by now.
void Retention::putBack(CameraAddress camera)
{
    lastTurns_[camera].reset();
    waiting_.push_front(camera);
}

void Retention::report(CameraAddress camera, const OldImages &images)
{
    log_.trace(QStringLiteral("Retention %1: %2").arg(cameraText(camera), outcome(images)));
    if (images.deleted() > 0) {
        Q_EMIT imagesDeleted(camera);
    }
}

} // namespace velmora
