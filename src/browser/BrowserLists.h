// The lists of the image browser: the images of one camera or the newest of each camera of a group,
// and the ten of them that stand on the contact sheet. Everything is rebuilt from the disk whenever
// group, camera or view change.
#pragma once

#include "browser/CameraFolders.h"
#include "browser/Projector.h"
#include "browser/Selection.h"
#include "browser/SliceView.h"

#include <QCoro/QCoroTask>

namespace velmora {

/// The coroutines run one after the other; one that reads a folder may end with Superseded.
class BrowserLists : public QObject
{
    Q_OBJECT

public:
    /// Everything given outlives the object.
    BrowserLists(const BrowserServices &services, BrowserData &data, CameraFolders &folders,
                 Selection &selection, Projector &film);

    /// Takes the stored group and camera and builds the display.
    QCoro::Task<> load();

    /// A new group was selected.
    QCoro::Task<> lstGroupe_MouseUp();

    /// A new camera was selected.
    QCoro::Task<> lstCam_MouseUp();

    /// Rebuilds the display for the group, camera and view that are selected.
    QCoro::Task<> DirImage();

    /// The same, and in group view the selected camera's row is selected afterwards.
    QCoro::Task<> refresh();

    /// Lists the folder of the selected camera, which is made when it is missing.
    QCoro::Task<> LitDir();

    /// Fills the group view: the newest image of each camera. No row is selected then.
    QCoro::Task<> DirCam();

    /// Shows the ten images around the selected one, the last one when none is.
    void LstDir_Click();

    /// Selects an image of the list, as a click on it does. In group view, which does not show
    /// that list, nothing else changes.
    void selectFile(int index);

    /// A row of the group view was selected: its camera is the selected one from now on.
    QCoro::Task<> LstDirCam_Click(int row);

    /// A cell was clicked: its image becomes the selected one, or its camera in group view.
    QCoro::Task<> Vue_Click(int cell);

    /// Opens the slideshow on the selected camera's images, or begins it again.
    QCoro::Task<> ResetCine();

    /// True from the beginning of building the display until it stands: a building that was
    /// superseded is still to be done.
    [[nodiscard]] bool isOwed() const { return isOwed_; }

    /// Something has changed that only a new building shows.
    void owe() { isOwed_ = true; }

Q_SIGNALS:
    /// The keyboard is to go to the list of images, or of cameras.
    void filesWanted();
    void camerasWanted();

private:
    [[nodiscard]] const SettingsFile &settings() const;
    QCoro::Task<> findNewest(CameraAddress camera);
    QCoro::Task<> listCamera();
    QCoro::Task<> followGroup();
    void clickImage(int cell);
    QCoro::Task<> clickCamera(int cell);
    QCoro::Task<> followFilm();
    void trace(const QString &text);

    BrowserServices services_;
    BrowserData &data_;
    CameraFolders &folders_;
    Selection &selection_;
    Projector &film_;
    SliceView slice_;
    bool isOwed_ = false;
    ImageFile chosenMeanwhile_; // while the list was read again: what the user wants last holds
};

} // namespace velmora
