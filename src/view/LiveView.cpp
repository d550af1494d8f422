#include "view/LiveView.h"

#include "base/FilePath.h"
#include "base/FilePattern.h"
#include "base/FolderScan.h"
#include "base/Folders.h"
#include "base/LinkedStop.h"
#include "base/NameStamp.h"
#include "base/WorkSlice.h"
#include "cameras/CameraChoices.h"
#include "capture/CameraUrl.h"
#include "capture/PictureRemark.h"

#include <QFile>

#include <unistd.h>

namespace velmora {
namespace {

constexpr std::chrono::milliseconds kTypingPause{300};

QString clickToZoom()
{
    return QStringLiteral("Web : cliquer sur l'image pour zoomer.");
}

QString awayText(const QString &storageFolder)
{
    return QStringLiteral("the storage folder %1 is not there; its disk may be away. \"Create "
                          "folder\" makes a new one")
        .arg(storageFolder);
}

QString targetIn(const QString &folder)
{
    return folder + QStringLiteral("/Target.jpg");
}

// Why an answer shows no picture; empty when it does.
QString whyNone(const QString &url, const HttpReply &reply)
{
    return reply.outcome == FetchOutcome::Arrived
               ? contentRemark(url, reply.body.head(), reply.contentType)
               : failureRemark(url, reply.failure);
}

} // namespace

LiveView::LiveView(StorageFolder &storage, CameraRequests &requests, PictureSource &source,
                   Clock &clock, TaskScope &scope)
    : storage_(storage)
    , requests_(requests)
    , clock_(clock)
    , source_(source)
    , scope_(scope)
{
    connect(&storage_, &StorageFolder::editBegan, this, [this] { attempt_.request_stop(); });
    connect(&storage_, &StorageFolder::checked, this, &LiveView::followStorage);
}

void LiveView::Affiche(CameraAddress camera, const QString &url)
{
    if (url.isEmpty() || scope_.stopToken().stop_requested()) {
        return;
    }
    giveUp();
    shown_ = Shown{camera, {}};
    current_ = std::stop_source();
    scope_.launch(show(camera, url, current_));
}

// The lamp of the camera whose fetch is ended must not stay orange.
void LiveView::giveUp()
{
    current_.request_stop();
    Q_EMIT fetchEnded();
    tellReason(reason_.camera, QString());
}

void LiveView::clear()
{
    giveUp();
    shown_.reset();
    Q_EMIT targetChanged({});
    setLive({});
    setCaptions({clickToZoom(), captions_.local});
}

void LiveView::forget(CameraAddress camera)
{
    if (shown_ && shown_->camera == camera) {
        clear();
    }
}

QCoro::Task<> LiveView::show(CameraAddress camera, QString url, std::stop_source abandon)
{
    const std::stop_token stop = abandon.get_token();
    const LinkedStop atEnd(scope_.stopToken(), abandon);
    co_await storage_.gate().pass(stop);
    if (stop.stop_requested()) {
        co_return;
    }
    makeStorageFolder(camera);
    announce(camera);

    co_await showStored(camera, stop);
    if (stop.stop_requested()) {
        co_return;
    }
    if (isRtsp(url)) { // for each letter typed, a program would be started
        const Wake wake = co_await clock_.sleep(kTypingPause, stop);
        if (wake == Wake::Stopped) {
            co_return;
        }
    }
    HttpReply reply = co_await fetch(camera, url, stop);
    if (stop.stop_requested()) {
        co_return;
    }
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(reply.duration);
    Q_EMIT downloaded(camera, static_cast<int>(seconds.count()));
    const QString why = whyNone(url, reply);
    tellReason(camera, why);
    keep(camera, reply);
    finish();
}

// The live picture stays: it is the camera's, wherever its file is.
void LiveView::followStorage()
{
    const bool isLookedFor = shown_ && !shown_->storage.isEmpty();
    if (isLookedFor && !scope_.stopToken().stop_requested() &&
        shown_->storage != storage_.inForce()) {
        scope_.launch(showStored(shown_->camera, current_.get_token()));
    }
}

// Of readings that overlap, the last one counts.
QCoro::Task<> LiveView::showStored(CameraAddress camera, std::stop_token stop)
{
    if (stop.stop_requested()) {
        co_return;
    }
    reading_.request_stop();
    std::stop_source reading;
    const LinkedStop abandoned(stop, reading);
    const LinkedStop atEnd(scope_.stopToken(), reading);
    reading_ = reading;
    shown_ = Shown{camera, storage_.inForce()};
    co_await storage_.gate().pass(reading.get_token());
    const QString stored = co_await newestImage(storage_.cameraFolder(camera), reading.get_token());
    if (!reading.stop_requested()) {
        Q_EMIT targetChanged(stored);
    }
}

void LiveView::tellUnreadable()
{
    if (reason_.text.isEmpty()) {
        tellReason(reason_.camera,
                   QStringLiteral("the picture is damaged: nothing of it can be shown"));
    }
}

void LiveView::iTarget_Click(CameraAddress current)
{
    if (!scope_.stopToken().stop_requested()) {
        scope_.launch(enlarge(shown_ ? shown_->camera : current));
    }
}

QCoro::Task<> LiveView::enlarge(CameraAddress camera)
{
    const QString stored = co_await newestImage(storage_.cameraFolder(camera), scope_.stopToken());
    if (!stored.isEmpty()) {
        Q_EMIT zoomWanted(stored);
    }
}

// The file's name is fixed: another program with the same storage folder writes its own live
// picture there. Some file systems number their files anew, and a backup may link them.
bool LiveView::isLivePictureThere() const
{
    const std::optional<FileStamp> now = fileStamp(live_.path);
    return now && live_.stamp && now->bytes == live_.stamp->bytes &&
           now->modified == live_.stamp->modified;
}

void LiveView::iWeb_Click()
{
    if (live_.path.isEmpty()) {
        return;
    }
    if (isLivePictureThere()) {
        Q_EMIT zoomWanted(live_.path);
        return;
    }
    const QString why = storage_.isAway()
                            ? awayText(storage_.inForce())
                            : QStringLiteral("another program has replaced or deleted its file");
    Q_EMIT troubleChanged(QStringLiteral("The live picture of camera %1 cannot be enlarged: %2")
                              .arg(cameraText(live_.camera), why));
}

QString LiveView::reason(CameraAddress camera) const
{
    return camera == reason_.camera ? reason_.text : QString();
}

void LiveView::tellReason(CameraAddress camera, const QString &reason)
{
    const bool isSame = reason == reason_.text && (camera == reason_.camera || reason.isEmpty());
    reason_ = {camera, reason};
    if (!isSame) {
        Q_EMIT reasonChanged();
    }
}

// The picture's bytes go into the storage folder as they arrive: while that is being edited there
// is no download, and an interrupted one starts over afterwards.
QCoro::Task<HttpReply> LiveView::fetch(CameraAddress camera, QString url, std::stop_token stop)
{
    for (;;) {
        co_await storage_.gate().pass(stop);
        const StorageUse use(storage_);
        const HttpRequest request = requests_.live(camera, url);
        std::stop_source attempt;
        const LinkedStop abandoned(stop, attempt);
        attempt_ = attempt;
        HttpReply reply = co_await source_.fetch(request, attempt.get_token());
        if (stop.stop_requested() || use.mayGoOn()) {
            co_return reply;
        }
    }
}

// If it cannot be made, that shows when the picture is written.
void LiveView::makeStorageFolder(CameraAddress camera)
{
    if (storage_.makeForUse() == StoragePlace::Away) {
        tellNotStored(camera, awayText(storage_.inForce()));
    }
}

void LiveView::announce(CameraAddress camera)
{
    Q_EMIT statusCleared();
    const QString local = QStringLiteral("Local %1").arg(camera.row);
    setCaptions({clickToZoom(), local});
    Q_EMIT fetchBegan(camera);
    setLive({});
    setCaptions({QStringLiteral("Chargement en cours ...."), local});
}

// Native path of the last image in name order; empty when there is none.
QCoro::Task<QString> LiveView::newestImage(QString folder, std::stop_token stop)
{
    const FilePattern images(kImagePattern);
    QByteArray newest;
    const auto compare = [&](QByteArrayView name) {
        if (name > newest && images.matches(name)) {
            newest = name.toByteArray();
        }
    };
    FolderScan scan(folder);
    WorkSlice slice(clock_);
    while (!stop.stop_requested() && scan.readSome(compare)) {
        co_await letEventsRun(&slice, &clock_);
    }
    co_return newest.isEmpty() ? QString() : filePath(folder, QFile::decodeName(newest));
}

void LiveView::keep(CameraAddress camera, HttpReply &reply)
{
    const QString folder = storage_.workFolder();
    if (!folder.isEmpty()) {
        static_cast<void>(makeFolder(folder)); // a failure shows when the picture is written
        ::unlink(QFile::encodeName(targetIn(folder)).constData());
    }
    if (reply.outcome != FetchOutcome::Arrived) {
        setLive({});
        return;
    }
    const QString failure = whyNotStored(folder, reply.body);
    tellNotStored(camera, failure);
    const QString target = targetIn(folder);
    setLive(failure.isEmpty() ? LiveFile{target, camera, fileStamp(target)} : LiveFile{});
}

// Why the picture could not be written; empty when it was.
QString LiveView::whyNotStored(const QString &folder, ReplyBody &body) const
{
    if (folder.isEmpty()) {
        return QStringLiteral("there is no such drive");
    }
    const QString failure = store(folder, body);
    const bool isAway = !failure.isEmpty() && storage_.isAway();
    return isAway ? awayText(storage_.inForce()) : failure;
}

QString LiveView::store(const QString &folder, ReplyBody &body) const
{
    const StoreResult result = body.storeAs(folder, targetIn(folder));
    if (result.outcome == StoreOutcome::AlreadyThere) {
        return QStringLiteral("Target.jpg in the folder tmp cannot be replaced");
    }
    return QString::fromStdString(result.error ? result.error.message() : std::string());
}

// Without a reason it was stored.
void LiveView::tellNotStored(CameraAddress camera, const QString &reason)
{
    Q_EMIT troubleChanged(reason.isEmpty()
                              ? QString()
                              : QStringLiteral("The live picture of camera %1 cannot be stored: %2")
                                    .arg(cameraText(camera), reason));
}

void LiveView::finish()
{
    Q_EMIT fetchEnded();
    setCaptions({clickToZoom(), captions_.local});
    Q_EMIT statusCleared();
}

void LiveView::setCaptions(const LiveCaptions &captions)
{
    if (captions_ != captions) {
        captions_ = captions;
        Q_EMIT captionsChanged();
    }
}

void LiveView::setLive(const LiveFile &file)
{
    live_ = file;
    Q_EMIT webChanged(live_.path);
}

} // namespace velmora
