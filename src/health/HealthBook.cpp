#include "health/HealthBook.h"

#include "base/FilePath.h"
#include "cameras/CameraChoices.h"
#include "health/HealthCount.h"

#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

#include <algorithm>

namespace velmora {
namespace {

using namespace std::chrono;

} // namespace

HealthBook::HealthBook(const CameraTable &table, const StorageFolder &storage, Clock &clock,
                       TaskScope &scope)
    : table_(table)
    , storage_(storage)
    , clock_(clock)
    , scope_(scope)
    , slice_(clock)
{
}

const CameraHealth &HealthBook::camera(CameraAddress camera) const
{
    return healths_[camera];
}

Moment HealthBook::now() const
{
    return Moment(clock_.universalNow().time_since_epoch());
}

void HealthBook::load()
{
    StoredHealth stored = loadHealth(table_.settings().programFolder());
    maySave_ = stored.state == HealthFile::Read || stored.state == HealthFile::Missing;
    healths_ = std::move(stored.cameras);
    followTable();
    isLoaded_ = true;
}

void HealthBook::save()
{
    if (isChanged_ && maySave_) {
        isChanged_ = false;
        saveHealth(table_.settings().programFolder(), healths_);
    }
}

std::vector<CameraAddress> HealthBook::cameras() const
{
    std::vector<CameraAddress> list;
    std::ranges::copy_if(kAllCameras, std::back_inserter(list),
                         [this](CameraAddress camera) { return seen_[camera].isConfigured; });
    return list;
}

QString HealthBook::title(CameraAddress camera) const
{
    return seen_[camera].title;
}

void HealthBook::followTable()
{
    const SettingsSnapshot settings = table_.settings().snapshot();
    const std::vector<CameraAddress> before = cameras();
    for (const CameraAddress camera : kAllCameras) {
        takeCamera(settings, camera);
    }
    if (cameras() != before) {
        Q_EMIT tableChanged();
    }
}

// A camera is identified by its folder: with a different address it is a different camera.
void HealthBook::takeCamera(const SettingsSnapshot &settings, CameraAddress camera)
{
    const QString url = CameraTable::url(settings, camera);
    Seen &seen = seen_[camera];
    const QString name = storage_.folderNameOf(url);
    const bool isNamed = !name.isEmpty();
    const QString folder = isNamed ? storage_.native(storage_.folderText(name)) : QString();
    seen.isConfigured = isNamed;
    seen.url = url;
    const QString title = cameraLabel(settings, camera);
    const bool isAway = isNamed && folder.isEmpty(); // with its drive: nothing is forgotten
    const bool isOther = !isAway && recordOf(camera).folder != folder;
    const bool isRenamed = std::exchange(seen.title, title) != title;
    if (isOther) {
        recordOf(camera) = CameraHealth();
        recordOf(camera).folder = folder;
        seen.quietSince.reset();
        seen.isTried = false;
        seen.from = isLoaded_ ? std::optional(clock_.monotonicNow()) : std::nullopt;
        isChanged_ = true;
    }
    if (seen.isConfigured && (isOther || !seen.quietSince)) {
        anchor(camera);
    }
    if (seen.isConfigured && !recordOf(camera).isCounted && !seen.isTried) {
        startCounting(camera);
    }
    if (isOther || isRenamed) {
        Q_EMIT changed(camera);
    }
}

CameraHealth &HealthBook::recordOf(CameraAddress camera)
{
    return healths_[camera];
}

// Where the monotonic clock was when the camera became quiet, as far as that can be its fault: a
// camera that has just been added, whose folder holds images from before, has had no turn yet, and
// one that was there from the start, none in the time that was forgiven since. A date in the future
// comes from a clock that was wrong.
void HealthBook::anchor(CameraAddress camera)
{
    if (const auto since = this->camera(camera).quietSince()) {
        const auto age = std::max(seconds(0), this->now() - *since);
        Seen &seen = seen_[camera];
        const milliseconds now = clock_.monotonicNow();
        const milliseconds began = now - age;
        seen.quietSince =
            seen.from ? std::max(began, *seen.from) : std::min(now, began + forgiven_);
    }
}

std::optional<seconds> HealthBook::quiet(CameraAddress camera) const
{
    const auto since = seen_[camera].quietSince;
    return since ? std::optional(duration_cast<seconds>(clock_.monotonicNow() - *since))
                 : std::nullopt;
}

void HealthBook::forgive(milliseconds duration)
{
    forgiven_ += duration;
    const milliseconds now = clock_.monotonicNow();
    const auto later = [&](milliseconds moment) { return std::min(now, moment + duration); };
    for (Seen &seen : seen_) {
        if (seen.quietSince) { // a camera may have come after the time that is forgiven began
            seen.quietSince = later(*seen.quietSince);
        }
        if (seen.from) {
            seen.from = later(*seen.from);
        }
    }
}

void HealthBook::excuse(CameraAddress camera)
{
    Seen &seen = seen_[camera];
    seen.from = clock_.monotonicNow();
    if (seen.quietSince) {
        seen.quietSince = seen.from;
    }
}

qint64 HealthBook::bytesADay() const
{
    return velmora::bytesADay(healths_, now()); // a row without a camera has no record
}

void HealthBook::setLate(CameraAddress camera, bool late)
{
    CameraHealth &health = recordOf(camera);
    if (health.lateSince.has_value() != late) {
        health.lateSince = late ? std::optional(now()) : std::nullopt;
        change(camera);
    }
}

// News may come sooner than the table is read again: it must not count for the camera before.
void HealthBook::catchUp(CameraAddress camera, const QString &folder)
{
    if (recordOf(camera).folder != folder) {
        followTable();
    }
}

void HealthBook::addImage(CameraAddress camera, const QString &fileName)
{
    const QString folder = storage_.cameraFolder(camera);
    catchUp(camera, folder);
    if (!seen_[camera].isConfigured) {
        return;
    }
    recordOf(camera).succeed();
    const qint64 bytes = QFileInfo(filePath(folder, fileName)).size();
    for (const CameraAddress each : cameras()) {
        if (recordOf(each).folder == folder) {
            recordOf(each).addImage(now(), bytes);
            change(each);
        }
        if (seen_[each].url == seen_[camera].url) {
            hearFrom(each);
        }
    }
}

// Of rows with the same address the first one asked stores the image; the others find it there.
// Different addresses whose names are cut to one folder are different cameras.
void HealthBook::hearFrom(CameraAddress camera)
{
    seen_[camera].quietSince = clock_.monotonicNow();
    const bool wasLate = recordOf(camera).lateSince.has_value();
    setLate(camera, false);
    if (wasLate) {
        Q_EMIT cameBack(camera);
    }
}

void HealthBook::addFailure(CameraAddress camera, const QString &reason)
{
    catchUp(camera, storage_.cameraFolder(camera));
    if (!seen_[camera].isConfigured) {
        return;
    }
    const bool isFirst = !this->camera(camera).quietSince();
    recordOf(camera).fail(now(), reason);
    if (isFirst) {
        anchor(camera);
    }
    change(camera);
}

void HealthBook::addSuccess(CameraAddress camera)
{
    catchUp(camera, storage_.cameraFolder(camera));
    CameraHealth &health = recordOf(camera);
    if (health.failures > 0) {
        health.succeed();
        change(camera);
    }
}

void HealthBook::change(CameraAddress camera)
{
    isChanged_ = true;
    Q_EMIT changed(camera);
}

void HealthBook::recount(CameraAddress camera)
{
    recountFolder(this->camera(camera).folder);
}

void HealthBook::recountFolder(const QString &folder)
{
    for (const CameraAddress address : cameras()) {
        if (camera(address).folder == folder) {
            recordOf(address).isCounted = false;
            seen_[address].isTried = false;
            startCounting(address);
        }
    }
}

void HealthBook::recountAll()
{
    for (const CameraAddress address : cameras()) {
        recount(address);
    }
}

void HealthBook::startCounting(CameraAddress camera)
{
    if (std::ranges::find(toCount_, camera) == toCount_.end()) {
        toCount_.push_back(camera);
    }
    if (!counting_) {
        counting_ = true;
        scope_.launch(countWaiting());
    }
}

QCoro::Task<> HealthBook::countWaiting()
{
    const auto atEnd = qScopeGuard([this] { counting_ = false; });
    co_await clock_.yield();
    while (!toCount_.empty() && !scope_.stopToken().stop_requested()) {
        const CameraAddress camera = toCount_.front();
        toCount_.pop_front();
        co_await count(camera);
    }
}

// A folder that is not there is tried again later. One that cannot be read to its end is left until
// the next start: to read it again and again would keep the disk busy.
QCoro::Task<> HealthBook::count(CameraAddress camera)
{
    const QString folder = this->camera(camera).folder;
    HealthCount counting(folder);
    if (!counting.isOpen()) {
        co_return;
    }
    seen_[camera].isTried = true;
    slice_.begin();
    while (counting.countSome()) {
        co_await letEventsRun(&slice_, &clock_);
        if (scope_.stopToken().stop_requested()) {
            co_return;
        }
    }
    if (this->camera(camera).folder == folder) { // still the same
        const bool isFirst = !this->camera(camera).newest;
        recordOf(camera).takeCount(counting.take());
        recordOf(camera).isCounted = !counting.hasFailed();
        if (isFirst) {
            anchor(camera);
        }
        change(camera);
    }
}

} // namespace velmora
