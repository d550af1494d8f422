// The lists of the image browser: the images of one camera or the newest of each camera of a group,
// and the ten that are on the contact sheet. Everything is rebuilt from the disk whenever group,
// camera or view changes.
#pragma once

#include "browser/CameraFolders.h"
#include "browser/Projector.h"
#include "browser/Selection.h"
#include "browser/SliceView.h"

#include <QCoro/QCoroTask>

namespace velmora {

/// The coroutines run one after another; one that reads a folder may end with Superseded.
class BrowserLists : public QObject
{
    Q_OBJECT

public:
    /// What it uses besides the browser's own parts.
    struct Uses
    {
        const SettingsFile &settings;
        EventLog &log;
        Problems &problems;
        Projector &film;
    };

    /// Everything passed in outlives the object.
    BrowserLists(const Uses &uses, BrowserData &data, CameraFolders &folders, Selection &selection,
                 SliceView &slice);

    /// Loads the stored group and camera and builds the display.
    QCoro::Task<> load();

    /// A group was selected.
    QCoro::Task<> lstGroupe_MouseUp();

    /// A camera was selected.
    QCoro::Task<> lstCam_MouseUp();

    /// Rebuilds the display for the selected group, camera and view.
    QCoro::Task<> DirImage();

    /// The same, and in group view the selected camera's row is selected afterwards.
    QCoro::Task<> refresh();

    /// Selects a row of the group view that was filled again; a film of its camera plays on.
    QCoro::Task<> reselect(int row);

    /// Lists the selected camera's folder ("lit le répertoire"), which is made if missing.
    QCoro::Task<> LitDir();

    /// The same; returns what was selected when the new list replaced the old one, which may differ
    /// from what was selected at the call.
    QCoro::Task<FileList::Selected> listAgain();

    /// Fills the group view: the newest image of each camera of the group. No row is selected then.
    QCoro::Task<> DirCam();

    /// In group view: lists the selected camera's images if others are listed, unless a paused film
    /// plays these.
    QCoro::Task<> followGroup();

    /// Shows the ten images around the selected one, or around the last one when none is selected.
    void LstDir_Click();

    /// The same around this position, which is selected; -1 for none.
    void showAround(int index);

    /// Selects an image of the list, like a click on it. In group view, which does not show that
    /// list, nothing else changes.
    void selectFile(int index);

    /// Another rebuild of the display was requested: it goes to the newest image, whatever was
    /// chosen before. What is chosen from now on, while it waits or reads, stays.
    void forgetChoice() { chosen_ = {}; }

    /// A camera of the group view was selected: it is the selected camera from now on.
    QCoro::Task<> LstDirCam_Click(int row);

    /// The image that the last click on a cell has selected; none if it is not listed any more.
    [[nodiscard]] ImageFile clicked() const;

    /// A cell was clicked: selects its image, or its camera in group view.
    QCoro::Task<> Vue_Click(int cell);

    /// Opens the slideshow on the selected camera's images, or restarts it.
    QCoro::Task<> ResetCine();

    /// The same on the images that are listed now, without reading them again.
    void beginFilm();

    /// Restarts it if it is playing.
    QCoro::Task<> restartFilm();

    /// True from the start of building the display until it is complete: a superseded rebuild is
    /// still to be done.
    [[nodiscard]] bool isOwed() const { return isOwed_; }

    /// Something has changed that only a rebuild shows.
    void owe() { isOwed_ = true; }

Q_SIGNALS:
    /// The keyboard focus is to go to the list of images, or of cameras.
    void filesWanted();
    void camerasWanted();

private:
    QCoro::Task<> findNewest(CameraAddress camera);
    [[nodiscard]] bool isGroupListed() const;
    QCoro::Task<> listCamera();
    void clickImage(int cell);
    QCoro::Task<> clickCamera(int cell);
    QCoro::Task<> followFilm();
    void trace(const QString &text);

    Uses uses_;
    BrowserData &data_;
    CameraFolders &folders_;
    Selection &selection_;
    SliceView &slice_;
    bool isOwed_ = false;
    bool isListOwed_ = false; // the selected camera's list is still to be read
    ImageFile chosen_;        // since a rebuild was last requested
    ImageFile clicked_;       // by the last click on a cell
};

} // namespace velmora
