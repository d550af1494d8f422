#include "capture/LiveView.h"

#include "base/FilePattern.h"
#include "base/FolderScan.h"
#include "base/Folders.h"
#include "capture/CameraFolder.h"
#include "capture/CameraRequest.h"
#include "capture/WorkSlice.h"

#include <QFile>

#include <unistd.h>
#include <utility>

namespace velmora {
namespace {

QString clickToZoom()
{
    return QStringLiteral("Web : cliquer sur l'image pour zoomer.");
}

QString targetIn(const QString &folder)
{
    return folder + QStringLiteral("/Target.jpg");
}

} // namespace

LiveView::LiveView(const CaptureServices &services, PictureSource &source, TaskScope &scope)
    : services_(services)
    , source_(source)
    , scope_(scope)
{
    connect(&services_.page, &CameraPage::picturesCleared, this, &LiveView::clear);
}

void LiveView::Affiche(CameraAddress camera, const QString &url)
{
    if (url.isEmpty() || scope_.stopToken().stop_requested()) {
        return;
    }
    current_.request_stop();
    current_ = std::stop_source();
    scope_.launch(show(camera, url, current_));
}

void LiveView::clear()
{
    current_.request_stop();
    setStored({});
    setLive({});
    setCaptions({clickToZoom(), captions_.local});
}

QCoro::Task<> LiveView::show(CameraAddress camera, QString url, std::stop_source abandon)
{
    const std::stop_token stop = abandon.get_token();
    const std::stop_callback atEnd(scope_.stopToken(), [&abandon] { abandon.request_stop(); });
    makeStorageFolder();
    announce(camera);

    const QString stored = co_await newestImage(cameraFolder(services_, camera), stop);
    if (stop.stop_requested()) {
        co_return;
    }
    setStored(stored);

    HttpRequest request = liveCameraRequest(services_, camera, url);
    HttpReply reply = co_await source_.fetch(std::move(request), stop);
    if (stop.stop_requested()) {
        co_return;
    }
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(reply.duration);
    services_.page.showLoadSeconds(camera, static_cast<int>(seconds.count()));
    keep(camera, reply);
    finish();
}

void LiveView::makeStorageFolder() const
{
    const QString folder = services_.storage.native(services_.storage.text());
    if (!folder.isEmpty()) {
        static_cast<void>(makeFolder(folder)); // failing, it shows when the picture is written
    }
}

void LiveView::announce(CameraAddress camera)
{
    Q_EMIT statusCleared();
    const QString local = QStringLiteral("Local %1").arg(camera.row);
    setCaptions({clickToZoom(), local});
    services_.page.showLoading(camera);
    setLive({});
    setCaptions({QStringLiteral("Chargement en cours ...."), local});
}

// Native path of the last image in name order; empty when there is none.
QCoro::Task<QString> LiveView::newestImage(QString folder, std::stop_token stop)
{
    const FilePattern images("????????_??????????.*");
    QByteArray newest;
    const auto compare = [&](QByteArrayView name) {
        if (name > newest && images.matches(name)) {
            newest = name.toByteArray();
        }
    };
    FolderScan scan(folder);
    WorkSlice slice(services_.clock);
    while (!stop.stop_requested() && scan.readSome(compare)) {
        if (slice.isOver()) {
            co_await services_.clock.yield();
            slice.begin();
        }
    }
    co_return newest.isEmpty() ? QString() : folder + u'/' + QFile::decodeName(newest);
}

void LiveView::keep(CameraAddress camera, HttpReply &reply)
{
    const QString folder = workFolder(services_);
    if (!folder.isEmpty()) {
        static_cast<void>(makeFolder(folder)); // failing, it shows when the picture is written
        ::unlink(QFile::encodeName(targetIn(folder)).constData());
    }
    if (reply.outcome != FetchOutcome::Arrived) {
        setLive({});
        return;
    }
    const QString failure =
        folder.isEmpty() ? QStringLiteral("there is no such drive") : store(folder, reply.body);
    tellTrouble(camera, failure);
    setLive(failure.isEmpty() ? targetIn(folder) : QString());
}

// Why the picture could not be written; empty when it was.
QString LiveView::store(const QString &folder, ReplyBody &body) const
{
    const StoreResult result = body.storeAs(folder, targetIn(folder));
    if (result.outcome == StoreOutcome::AlreadyThere) {
        return QStringLiteral("Target.jpg in the folder tmp cannot be replaced");
    }
    return QString::fromStdString(result.error ? result.error.message() : std::string());
}

// An empty reason ends the trouble told before, but not that of others.
void LiveView::tellTrouble(CameraAddress camera, const QString &reason)
{
    const QString before = std::exchange(
        trouble_, reason.isEmpty()
                      ? QString()
                      : QStringLiteral("The live picture of camera %1:%2 cannot be stored: %3")
                            .arg(camera.group)
                            .arg(camera.row)
                            .arg(reason));
    if (!trouble_.isEmpty() || services_.status.text(Caption::Trouble) == before) {
        services_.status.set(Caption::Trouble, trouble_);
    }
}

void LiveView::finish()
{
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

void LiveView::setStored(const QString &path)
{
    stored_ = path;
    Q_EMIT targetChanged(stored_);
}

void LiveView::setLive(const QString &path)
{
    live_ = path;
    Q_EMIT webChanged(live_);
}

} // namespace velmora
