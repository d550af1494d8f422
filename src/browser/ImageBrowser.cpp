#include "browser/ImageBrowser.h"

#include "browser/BrowserParts.h"

#include <QScopedValueRollback>

#include <utility>

namespace velmora {
namespace {

using Kind = ActionLine::Kind;

} // namespace

ImageBrowser::ImageBrowser(const Uses &uses, BrowserData &data, Projector &film)
    : data_(data)
    , film_(film)
    , storage_(uses.storage)
    , scheduler_(uses.scheduler)
    , scope_(uses.scope)
    , parts_(std::make_unique<BrowserParts>(uses, data, film))
{
    connectParts();
    connectFilm();
    connect(&uses.conformity, &Conformity::ended, this, [this] {
        parts_->line.launch(Kind::Rebuild, [this] { return parts_->updates.relist(); });
    });
    // At once, since it may have changed back by the time that it is followed; an action that has
    // begun in between has listed the other folder. While it is edited, none is listed.
    connect(&storage_, &StorageFolder::checked, this, [this] {
        const bool isOther = !storage_.isBeingEdited() && usableStorage() != shownStorage_;
        isStorageOther_ = isStorageOther_ || isOther;
    });
    // Queued, since the check of the storage folder has not ended yet.
    connect(&storage_, &StorageFolder::checked, this, &ImageBrowser::followStorage,
            Qt::QueuedConnection);
}

ImageBrowser::~ImageBrowser() = default;

void ImageBrowser::connectParts()
{
    connect(&parts_->selection, &Selection::changed, this, &ImageBrowser::changed);
    connect(&parts_->modes, &BrowserModes::changed, this, &ImageBrowser::changed);
    connect(&parts_->modes, &BrowserModes::searchTextsChanged, this,
            &ImageBrowser::searchTextsChanged);
    connect(&parts_->lists, &BrowserLists::filesWanted, this, &ImageBrowser::filesWanted);
    connect(&parts_->lists, &BrowserLists::camerasWanted, this, &ImageBrowser::camerasWanted);
    connect(&parts_->files, &FileActions::deleted, this, &ImageBrowser::imageDeleted);
    connect(&parts_->files, &FileActions::spared, this, &ImageBrowser::imageSpared);
    connect(&parts_->grid, &GridActions::openWanted, this, &ImageBrowser::openWanted);
    connect(&parts_->grid, &GridActions::copyWanted, this, &ImageBrowser::copyWanted);
    connect(&parts_->modes, &BrowserModes::scanDue, this, [this] {
        if (!walking_) { // the next step does not overtake one that waits or takes longer
            const auto step = std::make_shared<QScopedValueRollback<bool>>(walking_, true);
            parts_->line.launch(Kind::Walk,
                                [this, step] { return parts_->modes.TimerScan_Timer(); });
        }
    });
}

void ImageBrowser::connectFilm()
{
    connect(&film_, &Projector::fileChosen, this, &ImageBrowser::chooseFile);
    connect(&film_, &Projector::closed, this, [this] {
        data_.sheet.hideZoom();
        data_.state.filmClosed();
        parts_->modes.forgetFilm();
        releaseList();
    });
}

// An open film keeps the list that it plays, and the group view beside it; what came in between is
// made up for.
void ImageBrowser::releaseList()
{
    const CameraAddress camera = data_.state.camera();
    const bool isListed = data_.files.camera() == camera && parts_->updates.isListed(camera);
    const bool isOther = data_.state.view() == View::Group && !isListed;
    if (std::exchange(isListHeld_, false) || isOther) {
        parts_->line.launch(Kind::Walk, [this] { return parts_->updates.catchUp(); });
    }
}

BrowserFace ImageBrowser::face() const
{
    return {parts_->choice.now(),           data_.state.view(),
            parts_->modes.isOn(Mode::Auto), parts_->modes.isOn(Mode::Camera),
            parts_->modes.isOn(Mode::Scan), parts_->selection.isFilmEnabled(),
            parts_->selection.row(),        parts_->selection.NbI()};
}

// Shows the storage folder's images once it has changed or come back.
void ImageBrowser::followStorage()
{
    const QString usable = usableStorage();
    const bool isOther = isStorageOther_ || (parts_->lists.isOwed() && !parts_->line.isActing()) ||
                         (parts_->folders.hasMissedReading() && !usable.isEmpty());
    if (isOther && !storage_.isBeingEdited() && data_.state.LectureOK()) {
        shownStorage_ = usable;
        isStorageOther_ = false;
        if (!usable.isEmpty()) { // what is on show stays while the folder is away
            refresh();
        }
    }
}

QString ImageBrowser::usableStorage() const
{
    return storage_.isUsable() ? storage_.inForce() : QString();
}

void ImageBrowser::load()
{
    parts_->modes.open();
    parts_->lists.forgetChoice(); // made before the window was closed
    parts_->line.launch(Kind::Follow, [this] { return parts_->lists.load(); });
    parts_->line.launch(Kind::Rebuild, [this] { return parts_->modes.load(); });
}

void ImageBrowser::begin()
{
    data_.state.allowReading();
    shownStorage_ = usableStorage();
    isStorageOther_ = false;
    parts_->line.launch(Kind::Rebuild, [this] { return parts_->lists.lstCam_MouseUp(); });
}

void ImageBrowser::unload()
{
    parts_->modes.unload();
}

void ImageBrowser::close()
{
    parts_->line.close();
}

bool ImageBrowser::isListed(CameraAddress camera) const
{
    return parts_->updates.isListed(camera);
}

void ImageBrowser::showDeletion(CameraAddress camera)
{
    const BrowserState &state = data_.state;
    const bool concerns =
        isListed(camera) || (state.view() == View::Group && parts_->updates.hasLost(camera));
    if (state.CineActif()) {
        isListHeld_ = isListHeld_ || concerns;
    } else if (concerns) {
        parts_->line.launch(Kind::Walk,
                            [this, camera] { return parts_->updates.dropDeleted(camera); });
    }
}

void ImageBrowser::chooseGroup(int group)
{
    ++wishes_;
    parts_->choice.takeGroup(group);
}

void ImageBrowser::chooseCamera(int row)
{
    ++wishes_;
    parts_->choice.takeCamera(row);
}

void ImageBrowser::chooseCameraAgain()
{
    chooseCamera(parts_->choice.now().row);
}

void ImageBrowser::chooseFile(int index)
{
    ++wishes_;
    if (!parts_->line.isClosed()) {
        parts_->lists.selectFile(index);
    }
}

void ImageBrowser::chooseCameraRow(int row)
{
    ++wishes_;
    if (parts_->line.isClosed()) {
        return;
    }
    selectAtOnce(row);
    const CameraAddress camera{data_.state.camera().group, row};
    parts_->line.launch(Kind::Follow, [this, camera] { return showCameraRow(camera); });
}

// At once, so that the next key moves on from there. A group that is being filled has no rows to
// select yet.
void ImageBrowser::selectAtOnce(int row)
{
    if (data_.state.view() == View::Group && row < data_.cameraRows.rowCount() &&
        !data_.state.DirCamEnCours()) {
        parts_->selection.selectRow(row);
    }
}

// A group chosen in the meantime has other cameras in its rows and cells, and the other view has
// none.
bool ImageBrowser::isInGroupView(CameraAddress camera) const
{
    return data_.state.view() == View::Group && data_.state.camera().group == camera.group;
}

QCoro::Task<> ImageBrowser::showCameraRow(CameraAddress camera)
{
    if (isInGroupView(camera)) {
        co_await parts_->lists.LstDirCam_Click(camera.row);
    }
}

QCoro::Task<> ImageBrowser::clickCamera(CameraAddress camera)
{
    if (isInGroupView(camera)) {
        co_await parts_->lists.Vue_Click(camera.row);
    }
}

void ImageBrowser::clickCell(int cell)
{
    ++wishes_;
    if (parts_->line.isClosed()) {
        return;
    }
    if (data_.state.view() == View::Camera) {
        scope_.launch(parts_->lists.Vue_Click(cell));
    } else if (!data_.state.DirCamEnCours()) {
        Q_EMIT filesWanted();
        selectAtOnce(cell);
        const CameraAddress camera{data_.state.camera().group, cell};
        parts_->line.launch(Kind::Follow, [this, camera] { return clickCamera(camera); });
    }
}

void ImageBrowser::doubleClickCell(int cell)
{
    if (data_.state.view() == View::Camera) {
        parts_->grid.Vue_DblClick(cell);
        if (parts_->modes.isOn(Mode::Scan)) {
            setMode(Mode::Scan, false);
        }
    }
}

QTimer &ImageBrowser::scanTimer()
{
    return parts_->modes.timer();
}

void ImageBrowser::frameCell(int cell)
{
    parts_->grid.frameCell(cell);
}

void ImageBrowser::releaseCell()
{
    parts_->grid.releaseCell();
}

void ImageBrowser::toggleZoom()
{
    parts_->grid.toggleZoom();
}

void ImageBrowser::hideZoom()
{
    parts_->grid.ZoomImage_Click();
}

void ImageBrowser::openFolder()
{
    parts_->grid.LstDir_DblClick();
}

SearchOutcome ImageBrowser::search(const QString &date, const QString &time)
{
    ++wishes_;
    return parts_->grid.NomFichier(date, time);
}

void ImageBrowser::zoomCell(int cell, const ImageFile &image)
{
    if (parts_->line.isClosed() || data_.state.DirCamEnCours() || data_.sheet.isZoomVisible()) {
        return;
    }
    parts_->grid.zoom(image);
    if (data_.state.view() == View::Group) {
        chooseCameraRow(cell);
    }
}

void ImageBrowser::setMode(Mode mode, bool on)
{
    ++wishes_;
    parts_->modes.set(mode, on);
    switch (mode) {
    case Mode::Auto:
        parts_->line.launch(Kind::Rebuild, [this] { return parts_->modes.cAuto_Click(); });
        break;
    case Mode::Camera:
        parts_->line.launch(Kind::Rebuild, [this] { return parts_->modes.cCamera_Click(); });
        break;
    case Mode::Scan:
        parts_->modes.cScan_Click();
        break;
    }
}

void ImageBrowser::refresh()
{
    ++wishes_;
    parts_->line.launch(Kind::Rebuild, [this] { return parts_->lists.refresh(); });
}

void ImageBrowser::toggleFilm()
{
    parts_->modes.pressFilm();
    parts_->line.launch(Kind::Follow, [this] { return parts_->modes.bFilm_MouseDown(); });
}

void ImageBrowser::closeFilm()
{
    parts_->modes.forgetFilm();
    film_.close();
}

std::optional<KillQuestion> ImageBrowser::killQuestion() const
{
    return data_.state.view() == View::Camera ? parts_->files.LstDir_KeyDown()
                                              : parts_->files.LstDirCam_KeyDown();
}

void ImageBrowser::kill(const ImageFile &target)
{
    ++wishes_;
    parts_->line.launch(Kind::Rebuild, [this, target] { return parts_->files.kill(target); });
}

void ImageBrowser::follow(CameraAddress camera)
{
    if (parts_->modes.isFollowing(camera)) {
        refreshFor(camera);
    } else if (parts_->updates.showsNoneOf(camera)) {
        // After any reading under way, whose list is empty only until it has been read.
        parts_->line.launch(Kind::Follow,
                            [this, camera] { return parts_->updates.showFirst(camera); });
    }
}

// Images may come faster than their folder is read: a refresh under way ends, and all that came
// since have one after it, unless the user has asked for something in between.
void ImageBrowser::refreshFor(CameraAddress camera)
{
    parts_->lists.forgetChoice();
    if (const auto waiting = followed_.lock(); waiting && followedAt_ == wishes_) {
        *waiting = camera;
        return;
    }
    const auto followed = std::make_shared<CameraAddress>(camera);
    followed_ = followed;
    followedAt_ = wishes_;
    parts_->line.launch(Kind::Walk, [this, followed] {
        followed_.reset();
        return parts_->modes.refreshAfter(*followed);
    });
}

// Not before the folders may be read: the start has its own road to the first display. An address
// that comes back while the folder of another is read leaves that reading without a result.
void ImageBrowser::followAddress(CameraAddress camera)
{
    const bool isUnfinished = parts_->lists.isOwed() && camera == data_.state.camera();
    if (data_.state.LectureOK() && (isUnfinished || parts_->updates.isOutdated(camera))) {
        parts_->line.launch(Kind::Follow,
                            [this, camera] { return parts_->updates.followAddress(camera); });
    }
}

void ImageBrowser::ctrT_Click()
{
    scheduler_.setTickCounter(Scheduler::kStartTick);
}

} // namespace velmora
