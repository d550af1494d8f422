#include "capture/ImageStore.h"

#include "base/DateText.h"
#include "base/FilePath.h"
#include "base/Folders.h"
#include "cameras/CameraChoices.h"
#include "cameras/Credentials.h"
#include "capture/AnswerWorth.h"
#include "capture/CameraUrl.h"
#include "capture/HttpDate.h"
#include "capture/ImageName.h"
#include "capture/PictureLook.h"
#include "capture/PictureRemark.h"

#include <QScopeGuard>

#include <algorithm>
#include <iterator>
#include <new>
#include <span>
#include <utility>
#include <vector>

namespace velmora {

// Where a picture goes; native paths.
struct ImageStore::Place
{
    QString folder;
    QString workFolder;
    std::error_code error; // why the folder could not be made
};

struct ImageStore::Arrival
{
    CameraAddress camera;
    QString address;                         // as stored when it was requested
    SettingsSnapshot settings{QByteArray()}; // as last read
    Place place;
    ReplyBody body;
    Answer answer;
    Worth worth = Worth::Unchanged;
    CameraRecord record; // as it was before this picture
    QString fileName;
    QString remark;                     // what is odd about the picture
    std::vector<SettingsValue> changes; // to be stored
    bool isRecorded = false;            // the settings have taken them

    void set(RowKey key, QString value)
    {
        changes.push_back(CameraTable::valueToSet(key, camera, std::move(value)));
    }

    // With a different address, the row has a different camera.
    [[nodiscard]] bool isForItsRow() const { return CameraTable::url(settings, camera) == address; }
};

ImageStore::ImageStore(const Uses &uses)
    : uses_(uses)
{
}

ImageStore::~ImageStore()
{
    const SettingsChange last = uses_.table.settings().settle(); // nobody listens any more
    Q_UNUSED(last);
}

void ImageStore::readAhead(const SettingsSnapshot &settings, CameraAddress camera,
                           const QString &url)
{
    uses_.transfers.begin(camera, uses_.requests.stored(settings, camera, url));
}

void ImageStore::gather()
{
    if (!uses_.log.isOn() && uses_.table.settings().gather()) {
        QMetaObject::invokeMethod(this, &ImageStore::settle, Qt::QueuedConnection);
    }
}

void ImageStore::settle()
{
    const bool isStored = uses_.table.settings().settle() == SettingsChange::Made;
    for (const auto &[camera, mark] : std::exchange(unsettled_, {})) {
        if (!isStored) {
            marks_.keep(camera, mark, false);
        }
    }
    Q_EMIT settled();
}

int ImageStore::automaticCounter(CameraAddress camera) const
{
    return automaticCounters_[camera];
}

QCoro::Task<> ImageStore::ChargeFile(QString url, QString folder, CameraAddress camera)
{
    const auto atEnd = qScopeGuard([this] { Q_EMIT loaded(); });
    uses_.log.trace(QStringLiteral("<-Interface ChargeFile->"));
    Arrival arrival;
    arrival.camera = camera;
    arrival.settings = uses_.table.settings().snapshot();
    arrival.address = CameraTable::url(arrival.settings, camera);
    if (arrival.address.isEmpty()) {
        co_return;
    }
    bool hadMemory = true;
    try {
        co_await load(std::move(url), std::move(folder), &arrival);
    } catch (const std::bad_alloc &) { // costs this camera its picture, not the others theirs
        hadMemory = false;
    }
    if (!hadMemory) {
        co_await fail(&arrival, QStringLiteral("there is not enough memory for the picture"));
    }
}

QCoro::Task<> ImageStore::load(QString url, QString folder, Arrival *arrival)
{
    const StorageUse use(uses_.storage);
    const CameraAddress camera = arrival->camera;
    arrival->place.folder = uses_.storage.native(folder);
    arrival->place.error = makeFolder(arrival->place.folder); // shows when the image is stored
    announce(url, camera);

    HttpRequest request = uses_.requests.stored(arrival->settings, camera, url);
    arrival->place.workFolder = request.workFolder;
    HttpReply reply = co_await uses_.transfers.fetch(camera, std::move(request));
    arrival->settings = uses_.table.settings().snapshot();
    if (reply.outcome == FetchOutcome::Stopped || !use.mayGoOn() || !arrival->isForItsRow()) {
        giveUp(*arrival);
        co_return;
    }
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(reply.duration).count();
    arrival->set(keys::kTimeLoad, QString::number(seconds));
    Q_EMIT downloaded(camera, static_cast<int>(seconds));
    if (reply.outcome == FetchOutcome::Failed) {
        co_await fail(arrival, failureRemark(url, reply.failure));
    } else if (reply.body.size() < kLeastPictureBytes) {
        const QString reason = QStringLiteral("the answer is too short for a picture (%1 bytes)")
                                   .arg(reply.body.size());
        co_await fail(arrival, failureRemark(url, reason));
    } else {
        arrival->remark = contentRemark(url, reply.body.head(), reply.contentType);
        arrival->body = std::move(reply.body);
        co_await mark(arrival);
        co_await bringNear(arrival, &reply);
        if (!use.mayGoOn() || !arrival->isForItsRow()) {
            giveUp(*arrival);
            co_return;
        }
        judge(*arrival, reply);
        name(*arrival, url, reply.contentType);
        co_await keep(arrival);
    }
}

// What arrives after the row got another address, or none, belongs to no row; its lamp is orange.
void ImageStore::giveUp(const Arrival &arrival)
{
    if (!arrival.isForItsRow()) {
        Q_EMIT lampChanged(arrival.camera, uses_.table.row(arrival.camera).lampAtRest());
    }
}

// Storing a value takes milliseconds once the settings have grown large.
QCoro::Task<> ImageStore::store(Arrival *arrival)
{
    const SettingsFile &settings = uses_.table.settings();
    const std::vector<SettingsValue> changes = std::exchange(arrival->changes, {});
    const SettingsValue row = CameraTable::whileUrlIs(arrival->camera, arrival->address);
    const std::size_t atOnce = settings.isLarge() ? 1 : changes.size();
    arrival->isRecorded = true;
    for (std::span<const SettingsValue> left(changes); !left.empty(); left = left.subspan(atOnce)) {
        const SettingsChange change = settings.write(left.first(atOnce), row);
        arrival->isRecorded = arrival->isRecorded && change == SettingsChange::Made;
        if (left.size() > atOnce) {
            co_await uses_.clock.yield();
            arrival->settings = settings.snapshot();
            if (!arrival->isForItsRow()) { // another camera must not inherit the rest
                break;
            }
        }
    }
}

// False when the row has got another camera meanwhile: then nothing is told of this one.
QCoro::Task<bool> ImageStore::storeOrGiveUp(Arrival *arrival)
{
    co_await store(arrival);
    const bool isForItsRow = arrival->isForItsRow();
    if (!isForItsRow) {
        giveUp(*arrival);
    }
    co_return isForItsRow;
}

void ImageStore::announce(const QString &url, CameraAddress camera)
{
    const QString address = addressWithoutCredentials(url);
    Q_EMIT loadBegan(camera, address);
    uses_.log.trace(QStringLiteral("Load ") + cameraText(camera));
    uses_.requests.normaliseLimit();
    uses_.log.trace(QStringLiteral("Test ") + address);
}

// Only of a camera whose pictures are compared.
QCoro::Task<> ImageStore::mark(Arrival *arrival)
{
    const KeepChoice choice = cameraKeep(arrival->settings, arrival->camera);
    arrival->answer.choice = choice;
    if (choice.keep == Keep::Dated) {
        co_return;
    }
    const MarkKind kind = choice.keep == Keep::Clearly ? MarkKind::DigestAndLook : MarkKind::Digest;
    arrival->answer.mark = co_await markOf(&arrival->body, kind, &uses_.clock);
    if (kind == MarkKind::DigestAndLook && arrival->answer.mark.look.isEmpty()) {
        warnOfMissingLooks();
    }
    arrival->settings = uses_.table.settings().snapshot(); // time has passed
}

// Otherwise more images would be kept than the user chose, and no one would know why.
void ImageStore::warnOfMissingLooks()
{
    const QString fault = lookFault();
    if (!fault.isEmpty()) {
        uses_.problems.warn(
            QStringLiteral("Pictures other than JPEG are not compared by what they show: %1")
                .arg(fault));
    }
}

// A long picture goes to a folder on another disk in pieces, between which anything may change.
QCoro::Task<> ImageStore::bringNear(Arrival *arrival, const HttpReply *reply)
{
    if (arrival->body.isOnDiskOf(arrival->place.folder)) {
        co_return;
    }
    judge(*arrival, *reply);
    if (arrival->worth == Worth::New) {
        co_await arrival->body.moveToDiskOf(arrival->place.folder, &uses_.clock);
        arrival->settings = uses_.table.settings().snapshot();
    }
}

// A picture that is compared and not new still counts as the last one, as it does when a server
// sends its date.
void ImageStore::judge(Arrival &arrival, const HttpReply &reply) const
{
    Answer &answer = arrival.answer;
    arrival.record = uses_.table.record(arrival.settings, arrival.camera);
    answer.dates = imageDates(reply.lastModified, arrival.record.lastModified, answer.choice);
    if (!isCompared(answer)) {
        arrival.worth = worthIn(arrival.place.folder, answer);
        const QString remark = dateRemark(answer.dates);
        arrival.remark = arrival.remark.isEmpty() ? remark : arrival.remark;
        return;
    }
    answer.stored = marks_.of(arrival.settings, arrival.camera);
    arrival.worth = worthIn(arrival.place.folder, answer);
    const WallTime now = uses_.clock.universalNow();
    answer.dates.modified =
        arrival.worth == Worth::New
            ? std::optional(undatedDate(CalculDate(reply.date), answer.dates.stored, now))
            : answer.dates.stored;
}

void ImageStore::name(Arrival &arrival, const QString &url, const QString &contentType) const
{
    const QString extension = isRtsp(url) ? QStringLiteral(".jpg")
                                          : imageExtension(url, arrival.body.head(), contentType);
    arrival.fileName = imageName(arrival.answer.dates.modified.value_or(kZeroDate),
                                 uses_.clock.localNow(), extension);
}

void ImageStore::noticeDates(const Arrival &arrival)
{
    const Answer &answer = arrival.answer;
    if (answer.choice.keep != Keep::Dated) {
        undatedWatch_.forget(arrival.camera);
    } else if (answer.dates.modified) {
        undatedWatch_.addDated(arrival.camera);
    } else if (undatedWatch_.addUndated(arrival.camera, arrival.address)) {
        Q_EMIT undatedNoticed(arrival.camera);
    }
}

// The date of the last image kept is written only once the image is there: after a failure or a
// kill in between, the next pass takes it as new again.
QCoro::Task<> ImageStore::keep(Arrival *arrival)
{
    const CameraAddress camera = arrival->camera;
    Q_EMIT lampChanged(camera, LampColour::Yellow);
    if (arrival->place.folder.isEmpty()) {
        co_await failToStore(arrival, QStringLiteral("there is no such drive"));
        co_return;
    }
    const bool isUnread = isCompared(arrival->answer) && arrival->answer.mark.digest.isEmpty();
    if (arrival->worth != Worth::New && !isUnread) { // an unread one says below why it is lost
        co_await recordGood(arrival);
        co_return;
    }
    const Place &place = arrival->place;
    const QString target = filePath(place.folder, arrival->fileName);
    const StoreResult result = arrival->body.storeAs(place.workFolder, target);
    if (result.outcome == StoreOutcome::Failed) {
        co_await failToStore(arrival, result.error);
        co_return;
    }
    const ImageDates &dates = arrival->answer.dates;
    arrival->set(keys::kLastModified, dateText(dates.modified.value_or(kZeroDate)));
    const bool isStored = result.outcome == StoreOutcome::Stored;
    const int count = isStored ? countNew(arrival) : 0;
    co_await recordGood(arrival);
    if (isStored && arrival->isForItsRow()) {
        keepMark(*arrival);
        tellStored(*arrival, count);
    }
}

// Whether values that are gathered are stored is known when they are settled.
void ImageStore::keepMark(const Arrival &arrival)
{
    marks_.keep(arrival.camera, arrival.answer.mark, arrival.isRecorded);
    unsettled_.emplace_back(arrival.camera, arrival.answer.mark);
}

int ImageStore::countNew(Arrival *arrival)
{
    const int count =
        uses_.problems.orDefault([&] { return toInt32(1.0 + arrival->record.newImages); }, 1);
    arrival->set(keys::kNewImages, QString::number(count));
    std::ranges::move(markToStore(arrival->camera, arrival->answer.mark),
                      std::back_inserter(arrival->changes));
    return count;
}

QCoro::Task<> ImageStore::recordGood(Arrival *arrival)
{
    setLamp(arrival, LampColour::Green);
    noticeDates(*arrival);
    recordBestTime(arrival);
    arrival->set(keys::kLocalTime, dateText(uses_.clock.localNow()));
    const bool isForItsRow = co_await storeOrGiveUp(arrival);
    if (isForItsRow) {
        Q_EMIT cameraAnswered(arrival->camera, arrival->remark);
    }
}

void ImageStore::recordBestTime(Arrival *arrival)
{
    const std::optional<QString> candidate = bestTimeCandidate(arrival->answer.dates);
    const QString &stored = arrival->record.bestTime;
    if (!candidate || !replacesBestTime(*candidate, stored)) {
        return;
    }
    arrival->set(keys::kBestTime, *candidate);
    Q_EMIT bestTimeChanged(arrival->camera, bestTimeFromText(*candidate));
    uses_.log.trace(QStringLiteral("Best times %1 - %2").arg(*candidate, stored));
}

void ImageStore::tellStored(const Arrival &arrival, int count)
{
    const CameraAddress camera = arrival.camera;
    const QString &fileName = arrival.fileName;
    Q_EMIT newImagesCounted(camera, count);

    const WallTime now = uses_.clock.localNow();
    uses_.log.trace(QStringLiteral(" Ecrit %1 %2\r\n").arg(fileName, dateText(now)));
    uses_.log.trace(QStringLiteral("Ajout de ") + fileName);

    automaticCounters_[camera] = arrival.record.automatic ? 1 : 0;
    Q_EMIT imageStored(camera, fileName);
}

// A name that the disk refuses will fail the next time too, so the user must know.
QCoro::Task<> ImageStore::failToStore(Arrival *arrival, std::error_code error)
{
    const Place &place = arrival->place;
    const QString reason = place.error ? folderRefusal(place.folder, place.error)
                                       : QString::fromStdString(error.message());
    if (isNameRefused(place.error)) {
        uses_.problems.warn(QStringLiteral("No image of camera %1 can be stored: %2")
                                .arg(cameraText(arrival->camera), reason));
    }
    co_await failToStore(arrival, reason);
}

QCoro::Task<> ImageStore::failToStore(Arrival *arrival, QString reason)
{
    const bool isGone = !uses_.storage.isPresent();
    const QString why =
        isGone ? QStringLiteral("the storage folder %1 is gone").arg(uses_.storage.inForce())
               : reason;
    Q_EMIT storingFailed(QStringLiteral("The image of camera %1 cannot be stored: %2")
                             .arg(title(arrival->camera), why));
    if (isGone) {
        uses_.storage.requestCheck();
    }
    co_await fail(arrival, QStringLiteral("the image cannot be stored: ") + why);
}

QString ImageStore::title(CameraAddress camera) const
{
    return cameraTitle(uses_.table.settings(), camera);
}

QCoro::Task<> ImageStore::fail(Arrival *arrival, QString reason)
{
    setLamp(arrival, LampColour::Red);
    const bool isForItsRow = co_await storeOrGiveUp(arrival);
    if (isForItsRow) {
        Q_EMIT cameraFailed(arrival->camera, reason);
    }
}

void ImageStore::setLamp(Arrival *arrival, LampColour colour)
{
    Q_EMIT lampChanged(arrival->camera, colour);
    arrival->set(keys::kSB, CameraTable::lampText(colour));
}

} // namespace velmora
