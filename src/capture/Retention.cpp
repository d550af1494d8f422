#include "capture/Retention.h"

#include "base/DateText.h"
#include "base/Folders.h"
#include "cameras/CameraChoices.h"
#include "capture/OldImages.h"

#include <QScopeGuard>

#include <algorithm>
#include <set>

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

// A camera's folder being gone through.
struct Retention::Turn
{
    CameraAddress camera;
    QString folder; // native path
    WallTime began; // universal time
    StorageUse use;
    std::set<QString> others = {}; // of cameras that keep their images, looked at so far
    bool isShared = false;         // one of them is this folder
};

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

QCoro::Task<> Retention::clear(CameraAddress camera)
{
    Turn turn{camera, storage_.cameraFolder(camera), clock_.universalNow(), StorageUse(storage_)};
    const FolderFiles folder(turn.folder, FolderLinks::Refused);
    if (!folder.isOpen() || isOver()) {
        co_return;
    }
    lastTurns_[camera] = clock_.monotonicNow();
    OldImages images(folder, clock_.localNow(), turn.began);
    bool goesOn = co_await mayDelete(&turn);
    if (!goesOn) {
        end(turn);
        co_return;
    }
    while (goesOn && images.lookSome()) {
        goesOn = co_await mayGoOn(&turn);
    }
    if (isOver()) {
        co_return;
    }
    goesOn = goesOn && images.isComplete() && images.isClockPlausible();
    while (goesOn && images.deleteSome()) {
        goesOn = co_await mayGoOn(&turn);
    }
    report(camera, images);
    end(turn);
}

// Asked after each time in which others ran.
QCoro::Task<bool> Retention::mayGoOn(Turn *turn)
{
    if (!slice_.isOver()) {
        co_return true;
    }
    co_await letEventsRun(&slice_, &clock_);
    co_return co_await mayDelete(turn);
}

// Every camera whose images are in the folder must wish it.
QCoro::Task<bool> Retention::mayDelete(Turn *turn)
{
    while (!isOver() && !mustBeginAgain(*turn) && isStillWanted(*turn)) {
        if (lookAtOthers(*turn)) {
            co_return true;
        }
        co_await letEventsRun(&slice_, &clock_);
    }
    co_return false;
}

// Long addresses that differ may be cut to the same folder name, and two names may lead to one
// folder. The disk may be slow to tell, and is asked once for each. True once all were looked at.
bool Retention::lookAtOthers(Turn &turn) const
{
    const SettingsSnapshot settings = table_.settings().snapshot();
    const QString url = CameraTable::url(settings, turn.camera);
    for (const CameraAddress other : kAllCameras) {
        const QString otherUrl = CameraTable::url(settings, other);
        if (otherUrl == url || CameraTable::deletesOld(settings, other)) {
            continue;
        }
        const auto [folder, isNew] = turn.others.insert(storage_.folderOf(otherUrl));
        if (!isNew) {
            continue;
        }
        turn.isShared = isSameFolder(*folder, turn.folder);
        if (turn.isShared || slice_.isOver()) {
            return false;
        }
    }
    return true;
}

// The folder may have changed by now, and by the clock as it is now the images may not be old.
bool Retention::mustBeginAgain(const Turn &turn) const
{
    return !turn.use.mayGoOn() || clock_.universalNow() < turn.began;
}

// With a different address the row has a different camera, and without one the images stay.
bool Retention::isStillWanted(const Turn &turn) const
{
    return !turn.isShared && storage_.cameraFolder(turn.camera) == turn.folder &&
           CameraTable::deletesOld(table_.settings().snapshot(), turn.camera);
}

// One that was broken off does not count.
void Retention::end(const Turn &turn)
{
    if (mustBeginAgain(turn)) {
        lastTurns_[turn.camera].reset();
        waiting_.push_front(turn.camera);
    } else if (!isStillWanted(turn)) {
        lastTurns_[turn.camera].reset();
    }
}

void Retention::report(CameraAddress camera, const OldImages &images)
{
    log_.trace(QStringLiteral("Retention %1: %2").arg(cameraText(camera), outcome(images)));
    if (images.deleted() > 0) {
        Q_EMIT imagesDeleted(camera);
    }
}

} // namespace velmora
