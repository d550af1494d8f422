#include "capture/ImageStore.h"

#include "base/DateText.h"
#include "base/Folders.h"
#include "cameras/CameraChoices.h"
#include "cameras/Credentials.h"
#include "capture/CameraRequest.h"
#include "capture/CameraUrl.h"
#include "capture/HttpDate.h"
#include "capture/ImageName.h"
#include "capture/KeepRule.h"
#include "capture/PictureRemark.h"
#include "capture/StoredMark.h"

#include <QScopeGuard>

#include <new>

namespace velmora {
namespace {

constexpr qsizetype kMinBodyBytes = 1000;

FolderState stateOf(const QString &folder)
{
    return folderHoldsFile(folder) ? FolderState::HoldsFiles : FolderState::Empty;
}

QString timeText(WallTime time)
{
    return dateText(time).section(u' ', 1);
}

} // namespace

struct ImageStore::Arrival
{
    CameraAddress camera;
    QString folder;     // native path
    QString workFolder; // native path
    std::error_code folderError;
    QString fileName;
    ImageDates dates;
    CameraRecord record; // as it was before this picture
    ReplyBody body;
    KeepChoice choice;
    PictureMark mark;   // empty unless the choice asks for it
    bool isNew = false; // by comparison

    // The rule for pictures without a date, where it is chosen, stands in for the usual one.
    [[nodiscard]] bool isCompared() const
    {
        return choice.keep != Keep::Dated && dates.header.isEmpty();
    }

    QString remark; // what is odd about the picture
};

ImageStore::ImageStore(const CaptureServices &services, ReadAhead &transfers)
    : services_(services)
    , transfers_(transfers)
{
}

int ImageStore::automaticCounter(CameraAddress camera) const
{
    return automaticCounters_.at(static_cast<std::size_t>(camera.group))
        .at(static_cast<std::size_t>(camera.row));
}

QCoro::Task<> ImageStore::ChargeFile(QString url, QString folder, CameraAddress camera)
{
    const auto atEnd = qScopeGuard([this] { Q_EMIT loaded(); });
    services_.log.trace(QStringLiteral("<-Interface ChargeFile->"));
    if (!services_.table.CameraFolderName(camera).isEmpty()) {
        bool hadMemory = true;
        try {
            co_await load(std::move(url), std::move(folder), camera);
        } catch (const std::bad_alloc &) { // costs this camera its picture, not the others theirs
            hadMemory = false;
        }
        if (!hadMemory) {
            fail(camera, QStringLiteral("there is not enough memory for the picture"));
        }
    }
}

QCoro::Task<> ImageStore::load(QString url, QString folder, CameraAddress camera)
{
    const StorageUse use(services_.storage);
    Arrival arrival;
    arrival.camera = camera;
    arrival.folder = services_.storage.native(folder);
    arrival.workFolder = services_.storage.workFolder();
    arrival.folderError = makeFolder(arrival.folder); // it shows when the image is stored
    announce(url, camera);

    HttpRequest request = cameraRequest(services_, camera, url);
    HttpReply reply = co_await transfers_.fetch(camera, std::move(request));
    if (reply.outcome == FetchOutcome::Stopped || !use.mayGoOn()) {
        co_return;
    }
    recordDuration(camera, reply.duration);
    services_.status.set(Caption::Step, QString());
    if (reply.outcome == FetchOutcome::Failed) {
        fail(camera, failureRemark(url, reply.failure));
    } else if (reply.body.size() < kMinBodyBytes) {
        fail(camera,
             failureRemark(url, QStringLiteral("the answer is too short for a picture (%1 bytes)")
                                    .arg(reply.body.size())));
    } else {
        arrival.remark = contentRemark(url, reply.body.head(), reply.contentType);
        arrival.body = std::move(reply.body);
        co_await mark(&arrival);
        if (!use.mayGoOn()) {
            co_return;
        }
        date(arrival, url, reply);
        keep(arrival);
    }
}

void ImageStore::announce(const QString &url, CameraAddress camera)
{
    Q_EMIT loadBegan(camera);
    const QString step = QStringLiteral("Load ") + cameraText(camera);
    const QString test = QStringLiteral("Test ") + withoutCredentials(url);
    services_.status.set(Caption::Step, step);
    services_.log.trace(step);
    services_.options.normaliseTimeout();
    services_.status.set(Caption::Activity, test);
    services_.log.trace(test);
}

// For a camera whose pictures are compared; for others nothing is read.
QCoro::Task<> ImageStore::mark(Arrival *arrival)
{
    arrival->choice = cameraKeep(services_.table.settings(), arrival->camera);
    if (arrival->choice.keep == Keep::Dated) {
        co_return;
    }
    const MarkKind kind =
        arrival->choice.keep == Keep::Clearly ? MarkKind::DigestAndLook : MarkKind::Digest;
    arrival->mark = co_await markOf(&arrival->body, kind, &services_.clock);
}

// The dates of a picture, and the name that they give it.
void ImageStore::date(Arrival &arrival, const QString &url, const HttpReply &reply) const
{
    arrival.record = services_.table.record(arrival.camera);
    arrival.dates = {reply.lastModified, CalculDate(reply.lastModified),
                     dateFromText(arrival.record.lastModified)};
    if (arrival.isCompared()) {
        compare(arrival, reply);
    } else if (arrival.remark.isEmpty()) {
        arrival.remark = dateRemark(reply.lastModified);
    }
    const QString extension = isRtsp(url)
                                  ? QStringLiteral(".jpg")
                                  : imageExtension(url, arrival.body.head(), reply.contentType);
    arrival.fileName = imageName(arrival.dates.modified.value_or(kZeroDate),
                                 services_.clock.localNow(), extension);
}

// A picture that is not new counts as the one kept last, as with a server that tells its date.
void ImageStore::compare(Arrival &arrival, const HttpReply &reply) const
{
    const UndatedPicture picture{arrival.choice, arrival.mark,
                                 storedMark(services_.table.settings().snapshot(), arrival.camera)};
    arrival.isNew = isNewUndated(picture, stateOf(arrival.folder));
    const WallTime now = services_.clock.localNow() - services_.clock.utcOffset();
    arrival.dates.modified =
        arrival.isNew
            ? std::optional(undatedDate(CalculDate(reply.date), arrival.dates.stored, now))
            : arrival.dates.stored;
}

void ImageStore::noticeDates(const Arrival &arrival)
{
    if (!arrival.dates.header.isEmpty()) {
        undatedWatch_.dated(arrival.camera);
    } else if (arrival.choice.keep == Keep::Dated && undatedWatch_.undated(arrival.camera)) {
        Q_EMIT undatedNoticed(arrival.camera);
    }
}

void ImageStore::recordDuration(CameraAddress camera, std::chrono::milliseconds duration)
{
    const auto seconds =
        static_cast<int>(std::chrono::duration_cast<std::chrono::seconds>(duration).count());
    services_.table.setValue(keys::kTimeLoad, camera, QString::number(seconds));
    services_.page.showLoadSeconds(camera, seconds);
}

// The date of the image kept last is written only once the image is there: after a failure or a
// kill in between, the next pass finds it new again.
void ImageStore::keep(Arrival &arrival)
{
    services_.page.showLamp(arrival.camera, LampColour::Yellow);
    if (arrival.folder.isEmpty()) {
        failToStore(arrival.camera, QStringLiteral("there is no such drive"));
        return;
    }
    const bool isNew =
        arrival.isCompared() ? arrival.isNew : isNewImage(arrival.dates, stateOf(arrival.folder));
    if (!isNew) {
        recordGood(arrival);
        return;
    }
    const QString target = arrival.folder + u'/' + arrival.fileName;
    const StoreResult result = arrival.body.storeAs(arrival.workFolder, target);
    if (result.outcome == StoreOutcome::Failed) {
        failToStore(arrival, result.error);
        return;
    }
    services_.table.setValue(keys::kLastModified, arrival.camera,
                             dateText(arrival.dates.modified.value_or(kZeroDate)));
    recordGood(arrival);
    if (result.outcome == StoreOutcome::Stored) {
        storeMark(services_.table.settings(), arrival.camera, arrival.mark);
        recordStored(arrival);
    }
}

void ImageStore::recordGood(const Arrival &arrival)
{
    setLamp(arrival.camera, LampColour::Green);
    noticeDates(arrival);
    services_.page.remarks().set(arrival.camera, arrival.remark);
    services_.status.set(Caption::Step, QStringLiteral("Wait"));
    recordBestTime(arrival);
    services_.table.setValue(keys::kLocalTime, arrival.camera,
                             dateText(services_.clock.localNow()));
    Q_EMIT cameraAnswered(arrival.camera);
}

void ImageStore::recordBestTime(const Arrival &arrival)
{
    const std::optional<QString> candidate = bestTimeCandidate(arrival.dates);
    const QString &stored = arrival.record.bestTime;
    if (!candidate || !replacesBestTime(*candidate, stored)) {
        return;
    }
    services_.table.setValue(keys::kBestTime, arrival.camera, *candidate);
    services_.page.showBestTime(arrival.camera, bestTimeFromText(*candidate));
    services_.log.trace(QStringLiteral("Best times %1 - %2").arg(*candidate, stored));
}

void ImageStore::recordStored(const Arrival &arrival)
{
    const CameraAddress camera = arrival.camera;
    const QString &fileName = arrival.fileName;
    const int count =
        services_.problems.orDefault([&] { return toInt32(1.0 + arrival.record.newImages); }, 1);
    services_.table.setValue(keys::kNewImages, camera, QString::number(count));
    services_.page.showNewImages(camera, count);

    const WallTime now = services_.clock.localNow();
    const QString added = QStringLiteral("Ajout de ") + fileName;
    services_.log.trace(QStringLiteral(" Ecrit %1 %2\r\n").arg(fileName, dateText(now)));
    services_.log.trace(added);
    services_.status.set(Caption::Activity, added);
    services_.status.set(Caption::LastStore, timeText(now));
    services_.status.set(Caption::Trouble, QString());

    automaticCounters_.at(static_cast<std::size_t>(camera.group))
        .at(static_cast<std::size_t>(camera.row)) = arrival.record.automatic ? 1 : 0;
    Q_EMIT imageStored(camera, fileName);
}

// A name that the disk refuses will not do the next time either: the user is to know.
void ImageStore::failToStore(const Arrival &arrival, std::error_code error)
{
    const CameraAddress camera = arrival.camera;
    const QString reason = arrival.folderError ? folderRefusal(arrival.folder, arrival.folderError)
                                               : QString::fromStdString(error.message());
    if (isNameRefused(arrival.folderError)) {
        services_.problems.warn(QStringLiteral("No image of camera %1 can be stored: %2")
                                    .arg(cameraText(camera), reason));
    }
    failToStore(camera, reason);
}

void ImageStore::failToStore(CameraAddress camera, const QString &reason)
{
    const bool isGone = !services_.storage.isPresent();
    const QString why =
        isGone ? QStringLiteral("the storage folder %1 is gone").arg(services_.storage.inForce())
               : reason;
    services_.status.set(
        Caption::Trouble,
        QStringLiteral("The image of camera %1 cannot be stored: %2").arg(title(camera), why));
    if (isGone) {
        services_.storage.requestCheck();
    }
    fail(camera, QStringLiteral("the image cannot be stored: ") + why);
}

QString ImageStore::title(CameraAddress camera) const
{
    return cameraTitle(services_.table.settings(), camera);
}

void ImageStore::fail(CameraAddress camera, const QString &reason)
{
    setLamp(camera, LampColour::Red);
    services_.page.remarks().set(camera, reason);
    Q_EMIT cameraFailed(camera, reason);
}

void ImageStore::setLamp(CameraAddress camera, LampColour colour)
{
    services_.page.showLamp(camera, colour);
    services_.table.setValue(keys::kSB, camera, QString::number(static_cast<qint32>(colour)));
}

} // namespace velmora
