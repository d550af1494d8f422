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

#include "pictures/PictureLoader.h"
#include "settings/WindowPlace.h"
#include "ui/BrowserListBoxes.h"
#include "ui/BrowserStatus.h"
#include "ui/CellMouse.h"
#include "ui/FramePlace.h"
#include "ui/SearchBoxes.h"
#include "ui/SheetCaptions.h"
#include "ui/SheetPictures.h"
#include "view/CaptureView.h"

#include <QWidget>

#include <memory>
#include <vector>

namespace Ui {
class planche;
}

namespace velmora {

/// Each part of the window that has rules of its own is a member, hence their number.
class planche : public QWidget
{
    Q_OBJECT

public:
    /// What the window shows and changes; all of it outlives the window.
    struct Uses
    {
        ImageBrowser &browser;
        const CameraTable &table;
        const StorageFolder &storage;
        EventLog &log;
        CaptureView &view;
        PictureLoader &loader;
    };

    explicit planche(const Uses &uses);
    Q_DISABLE_COPY_MOVE(planche)
    ~planche() override;

    void moveTo(WindowPlace place);

    /// Shows the window without asking for the keyboard; one that was closed is loaded again.
    void appear();

    /// The same, in front with the keyboard.
    void present();

    /// Stores the window's place and hides it; its timer stands still until it is shown again.
    void unload();

    /// Shows which camera is on show, and the cameras' names as they are now.
    void showCamera();

    /// A new image is in its folder, or a camera gave none.
    void showStored(CameraAddress camera);
    void showFailed(CameraAddress camera, const QString &reason);

    void showMessage(const QString &text);

    /// A message that stays for a minute beside what the capture does.
    void showNotice(const QString &text);

    /// Shows the room on the disk, at the counter of stored images.
    void showRoom(const QString &text);

    /// Marks which groups and cameras are late.
    void showLate(const std::vector<CameraAddress> &late);

    /// From now on a close is accepted instead of being passed on as a request.
    void allowClose() { mayClose_ = true; }

Q_SIGNALS:
    /// The camera whose images are listed, or its name, has changed.
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
    void bindShown();
    void bindModes();
    void bindButtons();
    void bindKeys();
    void load();
    void fitScreen(const QRect &frame);
    void showFace();
    [[nodiscard]] CameraAddress cameraOnShow() const;
    void showRemarks();
    [[nodiscard]] QString unreadFolder() const;
    void useKey(ListKey key);
    void askToKill();
    void showSpared(const ImageFile &image);

    Uses uses_;
    PressedEntry pressed_;
    std::unique_ptr<Ui::planche> ui_;
    BrowserListBoxes lists_;
    SearchBoxes search_;
    CellMouse mouse_;
    SheetCaptions captions_;
    BrowserStatus status_;
    std::unique_ptr<SheetPictures> pictures_;
    FramePlace *place_ = nullptr;
    CameraAddress shownCamera_;
    bool loaded_ = false;
    bool mayClose_ = false;
};

} // namespace velmora
