#include "app/HeadlessFilm.h"

#include "base/Folders.h"
#include "base/ImagesText.h"
#include "base/NativePaths.h"
#include "cameras/CameraChoices.h"
#include "cameras/CameraTable.h"
#include "cameras/FolderName.h"
#include "cameras/StorageFolder.h"
#include "cameras/StoragePath.h"
#include "settings/SettingsFaults.h"
#include "settings/SettingsFile.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTextStream>

#include <cstdio>
#include <unistd.h>

namespace velmora {
namespace {

constexpr int kHundred = 100;

} // namespace

HeadlessFilm::HeadlessFilm(FilmRequest request, QString programFolder, Clock &clock)
    : request_(std::move(request))
    , programFolder_(std::move(programFolder))
    , clock_(clock)
    , shutdown_([](const QString &text) {
        say(text);
        QCoreApplication::quit();
    })
    , scope_([this](const QString &text) { report(FilmEnd::Failed, text); })
    , reader_(clock)
    , film_(clock)
{
    connect(&film_, &FilmExport::advanced, this, &HeadlessFilm::follow);
    connect(&film_, &FilmExport::ended, this, &HeadlessFilm::report);
}

void HeadlessFilm::say(const QString &text)
{
    QTextStream(stderr) << "velmora: " << text << Qt::endl;
}

void HeadlessFilm::start()
{
    scope_.launch(run());
}

// Nothing is written, not even a default: another program may be using these settings.
QString HeadlessFilm::imageFolder()
{
    const SettingsFile file(programFolder_);
    if (const auto fault = readingFault(file)) {
        problem_ = *fault;
        return {};
    }
    const SettingsSnapshot settings = file.snapshot();
    const QString url = CameraTable::schedule(settings, request_.camera).url;
    const QString storage = storedStorage(settings);
    const NativePaths paths(programFolder_);
    if (url.isEmpty()) {
        problem_ = tr("There is no camera %1.").arg(cameraText(request_.camera));
    } else if (!folderExists(paths.native(storage).value_or(QString()))) {
        problem_ = tr("The storage folder %1 is not there.").arg(storage);
    } else {
        camera_ = nameOrAddress(settings, request_.camera);
        return cameraFolderOf(paths, storage, url);
    }
    return {};
}

QCoro::Task<> HeadlessFilm::run()
{
    co_await clock_.yield();
    FilmOrder order;
    order.folder = imageFolder();
    if (order.folder.isEmpty()) {
        report(FilmEnd::Failed, problem_);
        co_return;
    }
    order.names = co_await reader_.names(order.folder, scope_.stopToken());
    if (!order.names || scope_.stopToken().stop_requested()) {
        report(FilmEnd::Cancelled, {});
        co_return;
    }
    order.picks = filmPicks(*order.names, request_.span, request_.hours);
    order.rate = thinOut(order.picks, request_);
    order.size = request_.size;
    order.isStamped = request_.isStamped;
    order.camera = camera_;
    order.target = QFileInfo(request_.target).absoluteFilePath();
    film_.start(std::move(order));
}

// A pipe or a file is not filled with progress that is soon out of date.
void HeadlessFilm::follow()
{
    const FilmTally &tally = film_.tally();
    const int percent = static_cast<int>(tally.done * kHundred / std::max<qint64>(1, tally.all));
    if (::isatty(STDERR_FILENO) == 0 || percent == shownPercent_) {
        return;
    }
    shownPercent_ = percent;
    QTextStream(stderr) << '\r' << tally.done << " / " << tally.all << " (" << percent << " %)"
                        << Qt::flush;
}

void HeadlessFilm::report(FilmEnd end, const QString &text)
{
    if (shownPercent_ >= 0) {
        QTextStream(stderr) << "\n";
    }
    if (end == FilmEnd::Made) {
        const FilmTally &tally = film_.tally();
        QTextStream(stdout) << request_.target << ": " << imagesText(tally.shown) << ", "
                            << tally.size.width() << "x" << tally.size.height() << ", "
                            << tally.leftOut() << " left out" << Qt::endl;
    } else {
        say(end == FilmEnd::Cancelled ? tr("interrupted, no film made") : text);
    }
    status_ = end == FilmEnd::Made ? kMade : end == FilmEnd::Failed ? kFailed : kInterrupted;
    shutdown_.launch(leave());
}

QCoro::Task<> HeadlessFilm::leave()
{
    co_await clock_.yield(); // the caller may itself be a task that is waited for
    scope_.requestStop();
    co_await scope_.join();
    QCoreApplication::quit();
}

void HeadlessFilm::interrupt()
{
    scope_.requestStop();
    film_.cancel();
}

} // namespace velmora
