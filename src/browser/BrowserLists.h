// The lists of the image browser: the images of one camera or the newest of each camera of a group,
// and the ten of them that stand on the contact sheet. Everything is rebuilt from the disk whenever
// group, camera or view change.
#pragma once

#include "browser/BrowserData.h"
#include "browser/BrowserServices.h"
#include "browser/FolderReader.h"
#include "browser/Projector.h"

#include <QCoro/QCoroTask>
#include <QSet>

#include <exception>

namespace velmora {

/// Unwinds an action that was reading a folder when a newer one took its place, or when the storage
/// folder became another.
class Superseded : public std::exception
{
};

/// The coroutines run one after the other; one that reads a folder may end with Superseded.
class BrowserLists : public QObject
{
    Q_OBJECT

public:
    BrowserLists(const BrowserServices &services, BrowserData &data, Projector &film);

    [[nodiscard]] BrowserState &state() { return state_; }

    [[nodiscard]] const BrowserState &state() const { return state_; }

    [[nodiscard]] FileList &files() { return files_; }

    [[nodiscard]] QStringListModel &cameraRows() { return cameraRows_; }

    /// The selected row of `LstDirCam`, -1 for none.
    [[nodiscard]] int cameraIndex() const { return cameraIndex_; }

    [[nodiscard]] Sheet &sheet() { return sheet_; }

    /// The image that is selected: highlighted in the list of the view and framed on the sheet. It
    /// is what keys act on. None when nothing is selected, or a camera without images.
    [[nodiscard]] ImageFile selected() const;

    /// Position and count of the list, as shown.
    [[nodiscard]] const QString &NbI() const { return count_; }

    /// The button that plays the images as a film.
    [[nodiscard]] bool isFilmEnabled() const { return filmEnabled_; }

    /// Text of the folder of a camera; that of the storage folder itself for a row without address.
    [[nodiscard]] QString folderOf(CameraAddress camera) const;

    /// Takes the stored group and camera and builds the display.
    QCoro::Task<> load();

    /// Selects a group or a camera in its list, and no more.
    void setGroup(int group);
    void setRow(int row);

    /// Changes the view, and no more; position and count, which belong to the view, are cleared.
    void setView(View view);

    /// A new group was selected.
    QCoro::Task<> lstGroupe_MouseUp();

    /// A new camera was selected.
    QCoro::Task<> lstCam_MouseUp();

    /// Builds the browser anew for the group, camera and view that are selected.
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

    /// Selects a row of the group view and the camera in it; its images are not listed yet.
    void selectRow(int row);

    /// A row of the group view was selected: its camera is the selected one from now on.
    QCoro::Task<> LstDirCam_Click(int row);

    /// A cell was clicked: its image becomes the selected one, or its camera in group view.
    QCoro::Task<> Vue_Click(int cell);

    /// Opens the slideshow on the selected camera's images, or begins it anew.
    QCoro::Task<> ResetCine();

    /// Lists the folder anew after files were renamed; the position stays.
    QCoro::Task<> relist();

    /// No image of this camera can be seen where those of its like are shown: its folder's list, or
    /// its row of the group, is empty.
    [[nodiscard]] bool showsNoneOf(CameraAddress camera) const;

    /// Shows the first image of such a camera; the row that was selected in group view stays so.
    QCoro::Task<> showFirst(CameraAddress camera);

    /// Lists the folder anew after old images were deleted; the same image stays selected, or else
    /// the newest is.
    QCoro::Task<> dropDeleted();

    /// True from the begin of building the display until it stands: a building that was superseded
    /// is still to be done.
    [[nodiscard]] bool isOwed() const { return owed_; }

    /// True when the last reading of a folder was left out: the list may be another camera's.
    [[nodiscard]] bool hasMissedReading() const { return isMissed_; }

    /// Something has changed that only a new building shows.
    void owe() { owed_ = true; }

    /// What the window shows is to be looked at again.
    void announce() { Q_EMIT changed(); }

    /// A newer action is to take over: what is reading a folder ends with Superseded.
    void supersede();

    /// The next action may read again.
    void allowReading();

Q_SIGNALS:
    /// Texts, buttons or selections of the window are others than before.
    void changed();

    /// The keyboard is to go to the list of images, or of cameras.
    void filesWanted();
    void camerasWanted();

private:
    [[nodiscard]] bool mayRead();
    void makeFolder(const QString &folder);
    void rememberNotMade();
    void setCount(const QString &text);
    void dropSelection();
    QCoro::Task<> listCamera();
    QCoro::Task<> followGroup();
    void showSlice(int start);
    void startConformity(const ImageFile &image);
    void frame(int cell);
    void trace(const QString &text);

    BrowserServices services_;
    BrowserState &state_;
    Projector &film_;
    FileList &files_;
    QStringListModel &cameraRows_;
    Sheet &sheet_;
    FolderReader reader_;
    QString count_;
    QSet<QString> foldersNotMade_; // native paths, told already
    std::stop_source reading_;
    int cameraIndex_ = -1;
    bool filmEnabled_ = false;
    bool owed_ = false;
    bool isMissed_ = false;
};

} // namespace velmora
