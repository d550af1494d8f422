// The image browser without its window, and the only way in: passes the user's actions, in order,
// to the parts that handle them, and tells what to show.
#pragma once

#include "browser/BrowserData.h"
#include "browser/KillQuestion.h"
#include "browser/Mode.h"
#include "browser/NameSearch.h"
#include "browser/Projector.h"

#include <QCoro/QCoroTask>
#include <QTimer>

#include <memory>
#include <optional>

namespace velmora {

struct BrowserParts;
class Clock;
class Conformity;
class EventLog;
class Problems;
class Scheduler;
class SettingsFile;
class TaskScope;

/// What the window shows besides the lists and the sheet.
struct BrowserFace
{
    CameraAddress choice; // group and camera, possibly still waiting their turn
    View view = View::Camera;
    bool cAuto = false;
    bool cCamera = false;
    bool cScan = false;
    bool isFilmEnabled = false;
    int cameraRow = -1; // selected row of `LstDirCam`; -1 for none
    QString NbI;        // position and count
};

/// Has one function for each thing that a user or the program does to it, more than other classes
/// have: that is the price of a single way in. Each only delegates.
class ImageBrowser : public QObject
{
    Q_OBJECT

public:
    /// What the browser's parts use of the layers below; each gets its own share of it.
    struct Uses
    {
        const SettingsFile &settings;
        StorageFolder &storage;
        Scheduler &scheduler;
        Conformity &conformity;
        EventLog &log;
        Problems &problems;
        Clock &clock;
        TaskScope &scope;
    };

    /// Everything passed in outlives the object; the scope is joined before it is destroyed.
    ImageBrowser(const Uses &uses, BrowserData &data, Projector &film);
    Q_DISABLE_COPY_MOVE(ImageBrowser)
    ~ImageBrowser() override;

    /// The window is about to be shown.
    void load();

    /// The window is there: shows the chosen camera. Its folders may be read from now on, if load()
    /// has not read them already.
    void begin();

    /// The window was closed.
    void unload();

    /// The program is ending: nothing is read any more.
    void close();

    /// The choice, the lists and the sheet as they are shown.
    [[nodiscard]] const BrowserData &shown() const { return data_; }

    [[nodiscard]] BrowserFace face() const;

    /// Rows for `LstDir` and `LstDirCam`.
    [[nodiscard]] QAbstractItemModel &fileRows() { return data_.files; }

    [[nodiscard]] QAbstractItemModel &cameraRows() { return data_.cameraRows; }

    /// True when the list is that of this camera's folder, which rows with the same address share.
    [[nodiscard]] bool isListed(CameraAddress camera) const;

    /// `TimerScan`.
    [[nodiscard]] QTimer &scanTimer();

    void chooseGroup(int group);
    void chooseCamera(int row);

    /// Images were put into camera folders: acts as if the chosen camera had been chosen again.
    void chooseCameraAgain();

    void chooseFile(int index);

    /// Changes with everything that the user asks for; images that arrive do not count.
    [[nodiscard]] int wishes() const { return wishes_; }

    void chooseCameraRow(int row);

    /// The left button was pressed on a cell with a picture, and released; then the click.
    void frameCell(int cell);
    void releaseCell();
    void clickCell(int cell);
    void doubleClickCell(int cell);

    /// The right button was pressed on a cell that showed this image: enlarges it, and selects its
    /// camera in group view. Does nothing while an image is enlarged already.
    void zoomCell(int cell, const ImageFile &image);

    /// Enlarges the selected image, or puts the enlarged one away.
    void toggleZoom();
    void hideZoom();

    /// Hands the selected camera's folder to the desktop.
    void openFolder();

    /// Selects the first image of a moment, or else of its day; texts as typed.
    SearchOutcome search(const QString &date, const QString &time);

    void setMode(Mode mode, bool on);
    void refresh();
    void toggleFilm();

    /// Closes the film, also one that is still to be opened.
    void closeFilm();

    /// What to ask before the selected image is deleted; nothing when there is none.
    [[nodiscard]] std::optional<KillQuestion> killQuestion() const;

    void kill(const ImageFile &target);

    /// The capture has stored a new image of a camera. Shows it at once if the user follows new
    /// images, or if none of that camera was on show where they belong.
    void follow(CameraAddress camera);

    /// A camera has got another address, and with it another folder: shows that one if the old one
    /// is on show.
    void followAddress(CameraAddress camera);

    /// Old images of this camera were deleted from its folder: lists what is left if they are on
    /// show. A slideshow keeps its list.
    void showDeletion(CameraAddress camera);

    /// The seconds to the next capture were clicked: fixed cameras come due five ticks later.
    void ctrT_Click();

Q_SIGNALS:
    /// The face has changed.
    void changed();

    /// The keyboard focus is to go to the list of images, or of cameras.
    void filesWanted();
    void camerasWanted();

    /// Texts for the boxes of the search.
    void searchTextsChanged(const QString &lDate, const QString &lTime);

    /// The user has deleted an image, or one was spared since the storage folder has changed, or is
    /// being changed, after the question.
    void imageDeleted(const velmora::ImageFile &image);
    void imageSpared(const velmora::ImageFile &image);

    /// Native paths: one to hand to the desktop, and one to copy.
    void openWanted(const QString &path);
    void copyWanted(const QString &path);

private:
    void connectParts();
    void connectFilm();
    void refreshFor(CameraAddress camera);
    QCoro::Task<> showCameraRow(CameraAddress camera);
    QCoro::Task<> clickCamera(CameraAddress camera);
    [[nodiscard]] bool isInGroupView(CameraAddress camera) const;
    void selectAtOnce(int row);
    void followStorage();
    void releaseList();
    [[nodiscard]] QString usableStorage() const;

    BrowserData &data_;
    Projector &film_;
    StorageFolder &storage_;
    Scheduler &scheduler_;
    TaskScope &scope_;
    std::unique_ptr<BrowserParts> parts_;
    QString shownStorage_;
    int wishes_ = 0;
    std::weak_ptr<CameraAddress> followed_; // by a refresh that has not begun
    int followedAt_ = 0;                    // the wishes then
    bool isStorageOther_ = false;           // it has not been shownStorage_ all the time
    bool walking_ = false;
    bool isListHeld_ = false; // images on show were deleted while a film was open
};

} // namespace velmora
