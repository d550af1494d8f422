#include "browser/BrowserLists.h"

#include "base/Folders.h"
#include "browser/Slice.h"
#include "settings/Keys.h"

#include <QFile>
#include <QScopedValueRollback>

#include <algorithm>

namespace velmora {
namespace {

/// Holds the film for as long as the selection changes.
class FilmPause
{
public:
    FilmPause(Projector &film, bool wanted)
        : film_(film)
        , paused_(wanted)
    {
        if (paused_) {
            film_.stopTimer();
        }
    }

    FilmPause(const FilmPause &) = delete;
    FilmPause &operator=(const FilmPause &) = delete;
    FilmPause(FilmPause &&) = delete;
    FilmPause &operator=(FilmPause &&) = delete;

    ~FilmPause()
    {
        if (paused_) {
            film_.startTimer();
        }
    }

private:
    Projector &film_;
    bool paused_;
};

} // namespace

BrowserLists::BrowserLists(const BrowserServices &services, BrowserData &data, Projector &film)
    : services_(services)
    , state_(data.state)
    , film_(film)
    , files_(data.files)
    , cameraRows_(data.cameraRows)
    , sheet_(data.sheet)
    , reader_(services_.capture.clock)
{
}

void BrowserLists::trace(const QString &text)
{
    services_.capture.log.trace(text);
}

void BrowserLists::supersede()
{
    reading_.request_stop();
}

void BrowserLists::allowReading()
{
    reading_ = std::stop_source();
}

QString BrowserLists::folderOf(CameraAddress camera) const
{
    return services_.capture.storage.cameraFolderText(camera);
}

QCoro::Task<> BrowserLists::load()
{
    const SettingsFile &settings = services_.capture.table.settings();
    Problems &problems = services_.capture.problems;
    state_.camera = {keys::kBrowserGroup.read(settings, problems),
                     keys::kBrowserRow.read(settings, problems)};
    Q_EMIT changed();
    co_await lstCam_MouseUp();
}

void BrowserLists::setGroup(int group)
{
    state_.camera.group = group;
    Q_EMIT changed();
}

void BrowserLists::setRow(int row)
{
    state_.camera.row = row;
    Q_EMIT changed();
}

void BrowserLists::setView(View view)
{
    state_.view = view;
    setCount(QString());
}

ImageFile BrowserLists::selected() const
{
    if (state_.view == View::Camera) {
        return files_.selected();
    }
    return cameraIndex_ < 0 ? ImageFile() : state_.newestOf(cameraIndex_);
}

// The view's list, sheet and count go together.
void BrowserLists::dropSelection()
{
    if (state_.view == View::Camera) {
        files_.setListIndex(-1);
    }
    cameraIndex_ = -1;
    sheet_.clearFrames();
    setCount(QString());
}

QCoro::Task<> BrowserLists::lstGroupe_MouseUp()
{
    keys::kBrowserGroup.write(services_.capture.table.settings(), state_.camera.group);
    sheet_.clearImages();
    sheet_.hideZoom();
    sheet_.EffaceVue();
    dropSelection();
    co_await DirImage();
    if (film_.isPlaying()) {
        co_await ResetCine();
    }
}

QCoro::Task<> BrowserLists::lstCam_MouseUp()
{
    if (state_.view == View::Group) {
        sheet_.clearImages();
    }
    keys::kBrowserRow.write(services_.capture.table.settings(), state_.camera.row);
    if (state_.view == View::Camera) {
        co_await DirImage();
    } else {
        co_await DirCam(); // images may have come, and the cells are empty
        co_await LitDir();
        co_await Vue_Click(state_.camera.row);
    }
    if (film_.isPlaying()) {
        co_await ResetCine();
    }
}

QCoro::Task<> BrowserLists::DirImage()
{
    trace(QStringLiteral("Planche DirImage"));
    if (state_.view == View::Group) {
        co_await DirCam();
    } else {
        owed_ = true;
        setCount(QString());
        state_.LectureOK = BrowserState::kYes;
        co_await LitDir();
        LstDir_Click();
        owed_ = false;
    }
    trace(QStringLiteral("Planche DirImage Fin"));
}

QCoro::Task<> BrowserLists::refresh()
{
    co_await DirImage();
    if (state_.view == View::Group) {
        selectRow(state_.camera.row);
        co_await listCamera();
    }
}

// Folders are left alone until the storage folder has been checked, and while it is missing.
bool BrowserLists::mayRead()
{
    StorageFolder &storage = services_.capture.storage;
    if (state_.LectureOK == BrowserState::kNo) {
        return false;
    }
    if (storage.isCheckRequested()) {
        storage.testSA();
    }
    if (storage.isBeingEdited()) {
        services_.scheduler.ArretTimer();
        return false;
    }
    return storage.lamp() == LampColour::Green;
}

QCoro::Task<> BrowserLists::LitDir()
{
    isMissed_ = !mayRead();
    if (isMissed_) {
        co_return;
    }
    const QString folder = folderOf(state_.camera);
    makeFolder(folder);
    const std::shared_ptr<const ImageNames> names =
        co_await reader_.names(services_.capture.storage.native(folder), reading_.get_token());
    if (!names || folder != folderOf(state_.camera)) {
        throw Superseded();
    }
    files_.bind(folder, names);
    filmEnabled_ = files_.count() > 0;
    setCount(QString::number(files_.count()));
}

// A missing camera folder is made together with all the others. One that cannot be made is told
// once, and the storage folder itself is never made here: its disk may just be away.
void BrowserLists::makeFolder(const QString &folder)
{
    StorageFolder &storage = services_.capture.storage;
    const QString path = storage.native(folder);
    if (path.isEmpty() || folderExists(path) || foldersNotMade_.contains(path)) {
        return;
    }
    if (!storage.isPresent()) {
        storage.recheck();
        return;
    }
    storage.MakeDir_Click();
    rememberNotMade();
}

void BrowserLists::rememberNotMade()
{
    for (const CameraAddress camera : kAllCameras) {
        const QString path = services_.capture.storage.native(folderOf(camera));
        if (!folderExists(path)) {
            foldersNotMade_.insert(path);
        }
    }
}

void BrowserLists::setCount(const QString &text)
{
    count_ = text;
    Q_EMIT changed();
}

QCoro::Task<> BrowserLists::DirCam()
{
    const QScopedValueRollback filling(state_.DirCamEnCours, true);
    owed_ = true;
    const QString storageFolder = services_.capture.storage.inForce();
    cameraRows_.setStringList({});
    dropSelection();
    const int group = state_.camera.group;
    for (int row = 0; row < kRows; ++row) {
        ImageFile &newest = state_.DerniereImage.at(static_cast<std::size_t>(row));
        newest = {};
        const QString folder = folderOf({group, row});
        if (folder != storageFolder) {
            const std::optional<NewestImage> found = co_await reader_.newest(
                services_.capture.storage.native(folder), reading_.get_token());
            if (!found) {
                throw Superseded();
            }
            newest = {folder, QFile::decodeName(found->name)};
        }
        cameraRows_.insertRow(row);
        cameraRows_.setData(cameraRows_.index(row),
                            newest.isNone() ? QString() : newest.name + QStringLiteral("  "));
        sheet_.setImage(row, newest);
    }
    co_await followGroup();
    owed_ = false;
    Q_EMIT changed();
}

// The list of images is that of the selected camera, in another group too: the film button belongs
// to it. A film that is open keeps the list that it plays.
QCoro::Task<> BrowserLists::followGroup()
{
    if (!film_.isOpen() && files_.folder() != folderOf(state_.camera)) {
        filmEnabled_ = false;
        co_await LitDir();
        setCount(QString());
    }
}

void BrowserLists::LstDir_Click()
{
    trace(QStringLiteral("Planche LstDir_Click"));
    const FilmPause pause(film_, film_.isRunning());
    if (files_.ListIndex() < 0) {
        files_.setListIndex(files_.count() - 1);
    }
    if (files_.ListIndex() < 0) {
        sheet_.EffaceVue();
        return;
    }
    sheet_.clearFrames();
    const Slice slice = sliceAround(files_.ListIndex(), files_.count());
    showSlice(slice.start);
    frame(slice.frame);
    trace(QStringLiteral("Load Fin"));
    setCount(QStringLiteral("%1 / %2").arg(files_.ListIndex() + 1).arg(files_.count()));
    trace(QStringLiteral("Planche LstDir_Click Fin"));
}

void BrowserLists::showSlice(int start)
{
    for (int cell = 0; cell < kCells; ++cell) {
        const ImageFile image = files_.file(start + cell);
        sheet_.setImage(cell, image);
        startConformity(image);
    }
}

void BrowserLists::frame(int cell)
{
    sheet_.setFrame(cell, FrameStyle::Framed);
    state_.CadreActif = cell;
    sheet_.followZoom(files_.selected());
}

void BrowserLists::startConformity(const ImageFile &image)
{
    if (image.isNone() || services_.conformity.isRunning() ||
        !services_.capture.storage.isUsable() || !Conformity::isShortForm(image.name.toUtf8())) {
        return;
    }
    if (services_.conformity.wants(nativePath(services_.capture.storage, image))) {
        services_.scope.launch(services_.conformity.run());
    }
}

void BrowserLists::selectFile(int index)
{
    files_.setListIndex(index);
    if (state_.view == View::Camera) {
        LstDir_Click();
    }
}

QCoro::Task<> BrowserLists::relist()
{
    if (state_.view == View::Group) {
        co_await refresh();
        co_return;
    }
    const bool isSameFolder = files_.folder() == folderOf(state_.camera);
    const int index = isSameFolder ? files_.ListIndex() : -1;
    co_await LitDir();
    files_.setListIndex(std::min(index, files_.count() - 1));
    LstDir_Click();
}

// A list that still is that of another address shows none either.
bool BrowserLists::showsNoneOf(CameraAddress camera) const
{
    if (state_.view == View::Group) {
        return camera.group == state_.camera.group && state_.newestOf(camera.row).isNone();
    }
    return camera == state_.camera && (files_.count() == 0 || files_.folder() != folderOf(camera));
}

QCoro::Task<> BrowserLists::showFirst(CameraAddress camera)
{
    if (!showsNoneOf(camera)) {
        co_return; // shown by what was done meanwhile
    }
    const int row = cameraIndex_;
    co_await DirImage();
    if (state_.view == View::Group && row >= 0) {
        co_await LstDirCam_Click(row);
    }
}

QCoro::Task<> BrowserLists::dropDeleted()
{
    const ImageFile selected = files_.selected();
    if (selected.folder != folderOf(state_.camera)) {
        co_return;
    }
    co_await LitDir();
    files_.setListIndex(files_.find(selected).value_or(-1));
    LstDir_Click();
}

void BrowserLists::selectRow(int row)
{
    if (row != cameraIndex_) {
        setCount(QString()); // of the row before
    }
    cameraIndex_ = row;
    sheet_.clearFrames();
    sheet_.setFrame(row, FrameStyle::Framed);
    state_.CadreActif = row;
    setRow(row);
    sheet_.followZoom(state_.newestOf(row));
}

QCoro::Task<> BrowserLists::LstDirCam_Click(int row)
{
    selectRow(row);
    if (film_.isPlaying()) {
        co_await ResetCine();
    }
    co_await listCamera();
}

QCoro::Task<> BrowserLists::listCamera()
{
    co_await LitDir();
    setCount(QString::number(files_.count()));
}

QCoro::Task<> BrowserLists::Vue_Click(int cell)
{
    if (state_.DirCamEnCours) {
        co_return;
    }
    trace(QStringLiteral("Planche Vue_Click"));
    const bool filming = state_.CineActif != BrowserState::kNo;
    const FilmPause pause(film_, filming && film_.isPlaying());
    if (state_.view == View::Camera) {
        const int index = files_.ListIndex() - state_.CadreActif + cell;
        if (index >= 0 && index < files_.count()) {
            selectFile(index);
            Q_EMIT filesWanted();
        }
    } else {
        sheet_.clearFrames();
        if (cell < cameraRows_.rowCount()) {
            co_await LstDirCam_Click(cell);
        }
    }
    if (!filming || state_.CineActif == BrowserState::kNo) { // it may have been closed meanwhile
        trace(QStringLiteral("Planche Vue_Click Fin mem faux"));
        co_return;
    }
    if (state_.view == View::Camera) {
        film_.moveTo(files_.ListIndex());
    } else {
        co_await LitDir();
        co_await ResetCine();
    }
    Q_EMIT camerasWanted();
    trace(QStringLiteral("Planche Vue_Click Fin"));
}

QCoro::Task<> BrowserLists::ResetCine()
{
    const bool wasOpen = film_.isOpen();
    if (state_.view == View::Group) {
        co_await LitDir();
    }
    if (wasOpen && !film_.isOpen()) {
        co_return; // closed by the user meanwhile
    }
    film_.begin();
    state_.CineActif = BrowserState::kYes;
}

} // namespace velmora
