// The image browser without its window, and the one way to it: takes what the user does, in order,
// to the parts that know what follows from it, and tells what is to be shown.
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
struct BrowserServices;
class Scheduler;
class TaskScope;

/// What the window shows beside the lists and the sheet.
struct BrowserFace
{
    CameraAddress choice; // of group and camera, that may still be waiting for its turn
    View view = View::Camera;
    bool cAuto = false;
    bool cCamera = false;
    bool cScan = false;
    bool isFilmEnabled = false;
    int cameraRow = -1; // selected row of `LstDirCam`; -1 for none
    QString NbI;        // position and count
};

/// It has a function for each thing that a user or the program does to it, more than other classes
/// have: that is what one door means. Each only hands on.
class ImageBrowser : public QObject
{
    Q_OBJECT

public:
    /// Everything given outlives the object; the scope is joined before it goes.
    ImageBrowser(const BrowserServices &services, BrowserData &data, Projector &film);
    Q_DISABLE_COPY_MOVE(ImageBrowser)
    ~ImageBrowser() override;

    /// The window is about to be shown.
    void load();

    /// Camera folders may be read from now on.
    void begin();

    /// The window was closed.
    void unload();

    /// The program ends: nothing is read any more.
    void close();

    /// The choice, the lists and the sheet as they are shown.
    [[nodiscard]] const BrowserData &shown() const { return data_; }

    [[nodiscard]] BrowserFace face() const;

    /// Rows for `LstDir` and `LstDirCam`.
    [[nodiscard]] QAbstractItemModel &fileRows() { return data_.files; }

    [[nodiscard]] QAbstractItemModel &cameraRows() { return data_.cameraRows; }

    /// `TimerScan`.
    [[nodiscard]] QTimer &scanTimer();

    void chooseGroup(int group);
    void chooseCamera(int row);

    /// Images were put into camera folders: as if the chosen camera had been chosen once more.
    void chooseCameraAgain();

    void chooseFile(int index);
    void chooseCameraRow(int row);

    /// The left button went down on a cell that holds a picture, and came up; then the click.
    void frameCell(int cell);
    void releaseCell();
    void clickCell(int cell);
    void doubleClickCell(int cell);

    /// The right button went down on a cell: shows its image large.
    void zoomCell(int cell);

    /// Shows the selected image large, or puts a large one away.
    void toggleZoom();
    void hideZoom();

    /// Gives the selected camera's folder to the desktop.
    void openFolder();

    /// Selects the first image of a moment, or else of its day; texts as they were typed.
    SearchOutcome search(const QString &date, const QString &time);

    void setMode(Mode mode, bool on);
    void refresh();
    void toggleFilm();

    /// What is to be asked before the selected image is deleted; nothing when there is none.
    [[nodiscard]] std::optional<KillQuestion> killQuestion() const;

    void kill(const ImageFile &target);

    /// The capture has stored a new image of a camera. Shown at once where the user follows new
    /// images, and where there was none of that camera to be seen.
    void follow(CameraAddress camera);

    /// Old images of this camera are gone from its folder: lists what is left if they are shown. A
    /// slideshow keeps its list.
    void showDeletion(CameraAddress camera);

    /// The seconds to the next capture were clicked: fixed cameras come five ticks later.
    void ctrT_Click();

Q_SIGNALS:
    /// The face is another than before.
    void changed();

    /// The keyboard is to go to the list of images, or of cameras.
    void filesWanted();
    void camerasWanted();

    /// These texts belong into the boxes of the search.
    void searchTextsChanged(const QString &lDate, const QString &lTime);

    /// Native paths: one to give to the desktop, and one to copy.
    void openWanted(const QString &path);
    void copyWanted(const QString &path);

private:
    void connectParts();
    void connectFilm(Projector &film);
    QCoro::Task<> walk();
    QCoro::Task<> showCameraRow(View view, CameraAddress camera);
    void selectAtOnce(int row);
    void followStorage();
    [[nodiscard]] QString usableStorage() const;

    BrowserData &data_;
    StorageFolder &storage_;
    Scheduler &scheduler_;
    TaskScope &scope_;
    std::unique_ptr<BrowserParts> parts_;
    QString shownStorage_;
    bool walking_ = false;
};

} // namespace velmora
