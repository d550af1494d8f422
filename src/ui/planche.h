// The image browser's window: a contact sheet of ten images, the lists they come from, and the
// modes in which it follows the capture.
//
//   planche
//     contactSheet   Vue0…9 in Cadre0…9, ZoomImage
//       controls     lstGroupe  lstCam  LstDir or LstDirCam
//                    lCamera | cAuto cCamera cScan | lDate lTime | NbI MousePos
//                    bFilm CmdAlarm | cSetUp Mini Quitter
//     status         ctrT  NbCapt  Capt  txtLog  bKeep bCalendar bHealth
#pragma once

#include "browser/PressedEntry.h"
#include "capture/ImageStore.h"
#include "settings/WindowPlace.h"
#include "ui/FramePlace.h"
#include "ui/ListBoxes.h"
#include "ui/SearchBoxes.h"
#include "ui/SheetPictures.h"
#include "ui/StatusLine.h"

#include <QWidget>

#include <array>
#include <memory>
#include <vector>

namespace Ui {
class planche;
}

namespace velmora {

class planche : public QWidget
{
    Q_OBJECT

public:
    /// Everything given outlives the window.
    planche(ImageBrowser &browser, const CaptureServices &services, PictureLoader &loader);
    planche(const planche &) = delete;
    planche &operator=(const planche &) = delete;
    planche(planche &&) = delete;
    planche &operator=(planche &&) = delete;
    ~planche() override;

    void moveTo(WindowPlace place);

    /// Shows the window in front; one that was closed is built anew.
    void present();

    /// Stores the window's place and hides it; its timer stands still until it is shown again.
    void unload();

    /// A new image is in its folder, or a camera gave none.
    void showStored(CameraAddress camera);

    /// Names of cameras have changed: shows them.
    void rename();
    void showFailed(CameraAddress camera, const QString &reason);

    void showMessage(const QString &text);

    /// The room on the disk, told at the counter of what was stored.
    void showRoom(const QString &text);

    /// Marks the groups and cameras of these that are late.
    void showLate(const std::vector<CameraAddress> &late);

    /// From now on a close is accepted instead of asked for.
    void allowClose() { mayClose_ = true; }

Q_SIGNALS:
    /// The camera whose images are shown, or its name, is another.
    void cameraShown(velmora::CameraAddress camera);

    void setUpPressed();
    void setUpReleased();
    void alarmWanted();
    void keepWanted();
    void calendarWanted();
    void healthWanted();
    void playWanted();
    void closeWanted();

    /// Native paths.
    void copyWanted(const QString &path);
    void openWanted(const QString &path);

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void bindLists();
    void bindCells();
    void bindModes();
    void bindSearch();
    void bindButtons();
    void bindKeys();
    void fitScreen(const QRect &frame);
    void showFace();
    void showCamera();
    void showCaptions();
    void showNames(const SettingsSnapshot &settings);
    void showViewsList();
    void showMarks();
    void showRemarks();
    [[nodiscard]] QString remarkIn(int cell) const;
    [[nodiscard]] QString captionOf(int cell) const;
    void pressCell(int cell, Qt::MouseButton button, Qt::KeyboardModifiers modifiers);
    void showPointer(int cell, QPoint position);
    void showSearch(const QString &message);
    void useKey(ListKey key);
    void askToKill();

    ImageBrowser &browser_;
    PressedEntry pressed_;
    CaptureServices services_;
    std::unique_ptr<Ui::planche> ui_;
    SearchBoxes search_;
    std::unique_ptr<SheetPictures> pictures_;
    FramePlace *place_ = nullptr;
    StatusLine statusLine_;
    CameraAddress shownCamera_;
    std::array<QString, kRows> names_; // of the group's cameras
    QString searchMessage_;            // in the status line, until another takes its place
    std::vector<CameraAddress> late_;
    int stored_ = 0;
    bool loaded_ = false;
    bool mayClose_ = false;
};

} // namespace velmora
