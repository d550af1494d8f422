#include "browser/ImageBrowser.h"

#include <QScopeGuard>
#include <QScopedValueRollback>

#include <utility>

namespace velmora {
namespace {

constexpr int kFiveTicksBefore = 55; // of the sixtieth, at which fixed cameras come

} // namespace

ImageBrowser::ImageBrowser(const BrowserServices &services, BrowserData &data, Projector &film)
    : services_(services)
    , lists_(services, data, film)
    , modes_(services, lists_, film)
    , grid_(services.capture.storage, lists_)
    , files_(services.capture.storage, lists_)
{
    connect(&modes_, &BrowserModes::scanDue, this, [this] {
        if (!walking_) { // a step that takes longer than the timer is not overtaken by the next
            launch(Kind::Walk, [this] { return walk(); });
        }
    });
    connect(&services_.conformity, &Conformity::ended, this,
            [this] { launch(Kind::Rebuild, [this] { return lists_.relist(); }); });
    // Queued: whoever checks the storage folder has not finished with it yet.
    connect(&services_.capture.storage, &StorageFolder::checked, this, &ImageBrowser::followStorage,
            Qt::QueuedConnection);
}

// Shows what is in the storage folder once another one is there, or the same again.
void ImageBrowser::followStorage()
{
    const QString usable = usableStorage();
    const bool isOther = usable != shownStorage_ || (lists_.isOwed() && !acting_) ||
                         (lists_.hasMissedReading() && !usable.isEmpty());
    if (isOther && !services_.capture.storage.isBeingEdited() &&
        lists_.state().LectureOK != BrowserState::kNo) {
        shownStorage_ = usable;
        refresh();
    }
}

QString ImageBrowser::usableStorage() const
{
    const StorageFolder &storage = services_.capture.storage;
    return storage.isUsable() ? storage.inForce() : QString();
}

void ImageBrowser::launch(Kind kind, Story story)
{
    if (closed_) {
        return;
    }
    if (kind == Kind::Rebuild) {
        ++rebuilds_;
        if (rebuilding_) {
            lists_.supersede();
        }
    }
    services_.scope.launch(inTurn(kind, rebuilds_, std::move(story)));
}

QCoro::Task<> ImageBrowser::inTurn(Kind kind, int rebuild, Story story)
{
    co_await turnstile_.enter();
    const auto atEnd = qScopeGuard([this] {
        rebuilding_ = false;
        turnstile_.leave();
    });
    const bool isLate = kind == Kind::Walk && rebuild != rebuilds_;
    if (closed_ || isLate) {
        co_return;
    }
    try {
        co_await run(kind, rebuild, std::move(story));
    } catch (const Superseded &) {
        // The newer action shows what is to be seen.
    }
}

QCoro::Task<> ImageBrowser::run(Kind kind, int rebuild, Story story)
{
    const QScopedValueRollback acting(acting_, true);
    rebuilding_ = kind != Kind::Follow;
    lists_.allowReading();
    if (rebuilding_ && rebuild != rebuilds_) {
        lists_.supersede(); // what it stores and deletes still counts, up to its first reading
    }
    co_await story();
    if (lists_.isOwed() && rebuild == rebuilds_ && !closed_) {
        co_await lists_.DirImage();
    }
}

QCoro::Task<> ImageBrowser::walk()
{
    const QScopedValueRollback walking(walking_, true);
    co_await modes_.TimerScan_Timer();
}

void ImageBrowser::load()
{
    launch(Kind::Follow, [this] { return lists_.load(); });
    launch(Kind::Rebuild, [this] { return modes_.load(); });
}

void ImageBrowser::begin()
{
    lists_.state().LectureOK = BrowserState::kYes;
    shownStorage_ = usableStorage();
    launch(Kind::Rebuild, [this] { return lists_.lstCam_MouseUp(); });
}

void ImageBrowser::unload()
{
    modes_.unload();
}

// In group view each camera's newest image is shown, which is never deleted for its age.
void ImageBrowser::showDeletion(CameraAddress camera)
{
    const BrowserState &state = lists_.state();
    if (state.view == View::Camera && camera == state.camera &&
        state.CineActif == BrowserState::kNo) {
        launch(Kind::Walk, [this] { return lists_.dropDeleted(); });
    }
}

void ImageBrowser::close()
{
    closed_ = true;
    lists_.supersede();
}

CameraAddress ImageBrowser::choice() const
{
    const CameraAddress shown = lists_.state().camera;
    return {nextGroup_.value_or(shown.group), nextRow_.value_or(shown.row)};
}

void ImageBrowser::chooseGroup(int group)
{
    nextGroup_ = group;
    launch(Kind::Rebuild, [this, group] { return showGroup(group); });
    lists_.announce();
}

QCoro::Task<> ImageBrowser::showGroup(int group)
{
    if (nextGroup_ == group) {
        nextGroup_.reset();
    }
    lists_.setGroup(group);
    co_await lists_.lstGroupe_MouseUp();
}

void ImageBrowser::chooseCamera(int row)
{
    nextRow_ = row;
    launch(Kind::Rebuild, [this, row] { return showCamera(row); });
    lists_.announce();
}

QCoro::Task<> ImageBrowser::showCamera(int row)
{
    if (nextRow_ == row) {
        nextRow_.reset();
    }
    lists_.setRow(row);
    co_await lists_.lstCam_MouseUp();
}

void ImageBrowser::chooseFile(int index)
{
    if (!closed_) {
        lists_.selectFile(index);
    }
}

void ImageBrowser::chooseCameraRow(int row)
{
    if (closed_) {
        return;
    }
    selectAtOnce(row);
    const BrowserState &state = lists_.state();
    launch(Kind::Follow, [this, view = state.view, group = state.camera.group, row] {
        return showCameraRow(view, {group, row});
    });
}

// So that the next key goes out from there. A group that is being filled has no rows to select yet.
void ImageBrowser::selectAtOnce(int row)
{
    if (lists_.state().view == View::Group && row < lists_.cameraRows().rowCount() &&
        !lists_.state().DirCamEnCours) {
        lists_.selectRow(row);
    }
}

// A group that was chosen meanwhile has other cameras in its rows.
QCoro::Task<> ImageBrowser::showCameraRow(View view, CameraAddress camera)
{
    if (lists_.state().view == view && lists_.state().camera.group == camera.group) {
        co_await lists_.LstDirCam_Click(camera.row);
    }
}

void ImageBrowser::clickCell(int cell)
{
    if (closed_) {
        return;
    }
    if (lists_.state().view == View::Camera) {
        services_.scope.launch(lists_.Vue_Click(cell));
    } else if (!lists_.state().DirCamEnCours) {
        Q_EMIT lists_.filesWanted();
        selectAtOnce(cell);
        launch(Kind::Follow, [this, cell] { return lists_.Vue_Click(cell); });
    }
}

void ImageBrowser::doubleClickCell(int cell)
{
    if (lists_.state().view == View::Camera) {
        grid_.Vue_DblClick(cell);
        if (modes_.isOn(Mode::Scan)) {
            setMode(Mode::Scan, false);
        }
    }
}

void ImageBrowser::zoomCell(int cell)
{
    if (!lists_.state().DirCamEnCours) {
        launch(Kind::Follow, [this, cell] { return grid_.zoomCell(cell); });
    }
}

void ImageBrowser::setMode(Mode mode, bool on)
{
    modes_.set(mode, on);
    switch (mode) {
    case Mode::Auto:
        launch(Kind::Rebuild, [this] { return modes_.cAuto_Click(); });
        break;
    case Mode::Camera:
        launch(Kind::Rebuild, [this] { return modes_.cCamera_Click(); });
        break;
    case Mode::Scan:
        modes_.cScan_Click();
        break;
    }
}

void ImageBrowser::refresh()
{
    launch(Kind::Rebuild, [this] { return lists_.refresh(); });
}

void ImageBrowser::toggleFilm()
{
    launch(Kind::Follow, [this] { return modes_.bFilm_MouseDown(); });
}

void ImageBrowser::kill(const ImageFile &target)
{
    launch(Kind::Rebuild, [this, target] { return files_.kill(target); });
}

void ImageBrowser::follow(CameraAddress camera)
{
    if (modes_.isFollowing(camera)) {
        launch(Kind::Rebuild, [this, camera] { return modes_.refreshAfter(camera); });
    } else if (lists_.showsNoneOf(camera)) {
        // Behind a reading under way, whose list is empty only as long as it is not read.
        launch(Kind::Follow, [this, camera] { return lists_.showFirst(camera); });
    }
}

void ImageBrowser::ctrT_Click()
{
    services_.scheduler.setTickCounter(kFiveTicksBefore);
}

} // namespace velmora
