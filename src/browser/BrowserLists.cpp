#include "browser/BrowserLists.h"

#include "browser/FilmPause.h"
#include "settings/Keys.h"

namespace velmora {

BrowserLists::BrowserLists(const Uses &uses, BrowserData &data, CameraFolders &folders,
                           Selection &selection, SliceView &slice)
    : uses_(uses)
    , data_(data)
    , folders_(folders)
    , selection_(selection)
    , slice_(slice)
{
}

void BrowserLists::trace(const QString &text)
{
    uses_.log.trace(text);
}

QCoro::Task<> BrowserLists::load()
{
    selection_.choose({keys::kBrowserGroup.read(uses_.settings, uses_.problems),
                       keys::kBrowserRow.read(uses_.settings, uses_.problems)});
    co_await lstCam_MouseUp();
}

QCoro::Task<> BrowserLists::lstGroupe_MouseUp()
{
    keys::kBrowserGroup.write(uses_.settings, data_.state.camera().group);
    data_.sheet.clearImages();
    data_.sheet.hideZoom();
    data_.sheet.EffaceVue();
    selection_.drop();
    co_await DirImage();
    co_await restartFilm();
}

QCoro::Task<> BrowserLists::lstCam_MouseUp()
{
    if (data_.state.view() == View::Group) {
        data_.sheet.clearImages();
    }
    keys::kBrowserRow.write(uses_.settings, data_.state.camera().row);
    isListOwed_ = true;
    if (data_.state.view() == View::Camera) {
        co_await DirImage();
    } else {
        co_await DirCam(); // images may have arrived, and the cells are empty
        co_await LitDir();
        co_await Vue_Click(data_.state.camera().row);
    }
    co_await restartFilm();
}

QCoro::Task<> BrowserLists::DirImage()
{
    trace(QStringLiteral("Planche DirImage"));
    if (data_.state.view() == View::Group) {
        co_await DirCam();
    } else {
        isOwed_ = true;
        selection_.showPosition(ShownPosition::None);
        data_.state.allowReading();
        co_await LitDir();
        if (const std::optional<int> chosen = data_.files.find(chosen_)) {
            data_.files.setListIndex(*chosen);
        }
        forgetChoice();
        LstDir_Click();
        isOwed_ = false;
    }
    trace(QStringLiteral("Planche DirImage Fin"));
}

QCoro::Task<> BrowserLists::refresh()
{
    co_await DirImage();
    if (data_.state.view() == View::Group) {
        co_await reselect(data_.state.camera().row);
    }
}

QCoro::Task<> BrowserLists::reselect(int row)
{
    selection_.selectRow(row);
    co_await listCamera();
}

QCoro::Task<> BrowserLists::LitDir()
{
    co_await listAgain();
}

QCoro::Task<FileList::Selected> BrowserLists::listAgain()
{
    isListOwed_ = true;
    if (!folders_.beginReading()) {
        co_return data_.files.selection();
    }
    const CameraAddress camera = data_.state.camera();
    const QString folder = folders_.of(camera);
    const std::shared_ptr<const ImageNames> names = co_await folders_.names(folder);
    if (folder != folders_.of(data_.state.camera())) {
        throw Superseded();
    }
    const FileList::Selected before = data_.files.selection();
    data_.files.bind(camera, folder, names);
    isListOwed_ = false;
    selection_.enableFilm(data_.files.count() > 0);
    selection_.showPosition(ShownPosition::Count);
    co_return before;
}

QCoro::Task<> BrowserLists::DirCam()
{
    const auto filling = data_.state.beginFilling();
    isOwed_ = true;
    data_.cameraRows.setStringList({});
    selection_.drop();
    const int group = data_.state.camera().group;
    for (int row = 0; row < kRows; ++row) {
        co_await findNewest({group, row});
    }
    co_await followGroup();
    isOwed_ = false;
    data_.sheet.followZoom(selection_.image());
    selection_.announce();
}

QCoro::Task<> BrowserLists::findNewest(CameraAddress camera)
{
    data_.state.newestFound(camera.row, {});
    const ImageFile newest = co_await folders_.newest(camera);
    data_.state.newestFound(camera.row, newest);
    data_.cameraRows.insertRow(camera.row);
    data_.cameraRows.setData(data_.cameraRows.index(camera.row),
                             newest.isNone() ? QString() : newest.name + QStringLiteral("  "));
    data_.sheet.setImage(camera.row, newest);
}

// The list of images follows the selected camera, even in another group, since the film button
// belongs to it, and a playing film. A paused one keeps the list that it plays, unless that was to
// be read anew and was overtaken. The button may still be off for another list, of which nothing
// has come.
QCoro::Task<> BrowserLists::followGroup()
{
    const bool isHeld = uses_.film.isOpen() && !uses_.film.isPlaying() && !isListOwed_;
    if (isHeld || isGroupListed()) {
        isListOwed_ = false;
        selection_.enableFilm(data_.files.count() > 0);
    } else {
        selection_.enableFilm(false);
        co_await LitDir();
        selection_.showPosition(ShownPosition::None);
    }
}

// The camera may share its folder with another, and its first image may have come since.
bool BrowserLists::isGroupListed() const
{
    const CameraAddress camera = data_.state.camera();
    const bool hasNone =
        data_.files.count() == 0 && !data_.state.DerniereImage(camera.row).isNone();
    return data_.files.camera() == camera && data_.files.folder() == folders_.of(camera) &&
           !hasNone;
}

void BrowserLists::LstDir_Click()
{
    trace(QStringLiteral("Planche LstDir_Click"));
    const FilmPause pause(uses_.film, uses_.film.isRunning());
    if (data_.files.ListIndex() < 0) {
        data_.files.setListIndex(data_.files.count() - 1);
    }
    if (data_.files.ListIndex() < 0) {
        data_.sheet.EffaceVue();
        data_.sheet.followZoom({});
        return;
    }
    slice_.show();
    trace(QStringLiteral("Planche LstDir_Click Fin"));
}

void BrowserLists::showAround(int index)
{
    data_.files.setListIndex(index);
    LstDir_Click();
}

void BrowserLists::selectFile(int index)
{
    data_.files.setListIndex(index);
    chosen_ = data_.files.file(index);
    if (data_.state.view() == View::Camera) {
        LstDir_Click();
    }
}

QCoro::Task<> BrowserLists::LstDirCam_Click(int row)
{
    selection_.selectRow(row);
    co_await restartFilm();
    co_await listCamera();
}

QCoro::Task<> BrowserLists::listCamera()
{
    co_await LitDir();
    selection_.showPosition(ShownPosition::Count);
}

QCoro::Task<> BrowserLists::Vue_Click(int cell)
{
    if (data_.state.DirCamEnCours()) {
        co_return;
    }
    trace(QStringLiteral("Planche Vue_Click"));
    const bool filming = data_.state.CineActif();
    const FilmPause pause(uses_.film, filming && uses_.film.isPlaying());
    if (data_.state.view() == View::Camera) {
        clickImage(cell);
    } else {
        co_await clickCamera(cell);
    }
    if (!filming || !data_.state.CineActif()) { // it may have been closed meanwhile
        trace(QStringLiteral("Planche Vue_Click Fin mem faux"));
        co_return;
    }
    co_await followFilm();
    Q_EMIT camerasWanted();
    trace(QStringLiteral("Planche Vue_Click Fin"));
}

// Cells count from the framed one, which shows the selected image.
void BrowserLists::clickImage(int cell)
{
    const int index = data_.files.ListIndex() - data_.state.CadreActif() + cell;
    clicked_ = data_.files.file(index);
    if (index >= 0 && index < data_.files.count()) {
        selectFile(index);
        Q_EMIT filesWanted();
    }
}

ImageFile BrowserLists::clicked() const
{
    return data_.files.find(clicked_) ? clicked_ : ImageFile();
}

QCoro::Task<> BrowserLists::clickCamera(int cell)
{
    data_.sheet.clearFrames();
    if (cell < data_.cameraRows.rowCount()) {
        co_await LstDirCam_Click(cell);
    }
}

// The open film continues from the image clicked.
QCoro::Task<> BrowserLists::followFilm()
{
    if (data_.state.view() == View::Camera) {
        uses_.film.moveTo(data_.files.ListIndex());
    } else {
        co_await ResetCine();
    }
}

QCoro::Task<> BrowserLists::restartFilm()
{
    if (uses_.film.isPlaying()) {
        co_await ResetCine();
    }
}

QCoro::Task<> BrowserLists::ResetCine()
{
    const bool wasOpen = uses_.film.isOpen();
    if (data_.state.view() == View::Group) {
        co_await LitDir();
    }
    if (wasOpen && !uses_.film.isOpen()) {
        co_return; // closed by the user meanwhile
    }
    beginFilm();
}

void BrowserLists::beginFilm()
{
    uses_.film.begin();
    data_.state.filmOpened();
}

} // namespace velmora
