// The main window: storage folder, options, and the camera table one group at a time.
//
//   Interface
//     storage    LampSA  StRep  Browse  MakeDir
//     options    tempo  TIO              cDebug  cmdDebug  Import
//     Selecteur                          ActLst  RAZ
//     page       headings, then ten rows of CameraRowBoxes
//     lReason
//     status     lErr  lTest  lTmp  lHeure  lCompte
//     live       Locale over iTarget     lWeb over iWeb
//     foot       lMessage    BoutonLien  lVersion  Cache
#pragma once

#include "base/DesktopOpener.h"
#include "ui/CameraRowBoxes.h"
#include "view/CaptureView.h"

#include <QWidget>

#include <array>
#include <memory>
#include <optional>
#include <vector>

namespace Ui {
class Interface;
}

namespace velmora {

class AddressPaste;
class StorageBox;
class mOuvreLien;

class Interface : public QWidget
{
    Q_OBJECT

public:
    /// What the window shows and changes; all of it outlives the window.
    struct Uses
    {
        QTimer &timer; // of the capture: in the window's object tree, but not owned by it
        const CameraTable &table;
        StorageFolder &storage;
        CaptureOptions &options;
        DebugSwitch &debugSwitch;
        EventLog &log;
        CaptureView &view;
        DesktopOpener &opener;
    };

    explicit Interface(const Uses &uses);
    Q_DISABLE_COPY_MOVE(Interface)
    ~Interface() override;

    /// Shows the window in front, with the rows of the group whose tab is selected.
    void bringUp();

    /// links: what the link button opens; outlives the window.
    void followLinks(mOuvreLien &links);

    /// Shows a message in the line at the foot.
    void showMessage(const QString &text);

    /// Gives a camera an address, as if typed into its row and left.
    void fillAddress(CameraAddress camera, const QString &address);

    /// Marks the tabs and rows of these cameras, which are late.
    void showLate(const std::vector<CameraAddress> &late);

    /// While files are being renamed, disables the buttons that touch camera folders.
    void holdButtons();
    void releaseButtons();

    /// Shows what is being done besides the capture, in words.
    void showWork(const QString &text);

    /// Ends the edit of an address, which is stored.
    void endAddress();

    /// From now on a close is accepted instead of being passed on as a request.
    void allowClose() { mayClose_ = true; }

Q_SIGNALS:
    /// The user has hidden the window; the images are to be shown.
    void hiddenByUser();

    /// A picture is to be shown enlarged. path: native.
    void zoomWanted(const QString &path);

    /// The window that imports images is to be shown.
    void importWanted();

    /// The sheet of a camera is to be shown.
    void sheetWanted(velmora::CameraAddress camera);

    /// The window for many cameras at once is to be shown.
    void listWanted();

    /// The program is to end.
    void endWanted();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    /// What the line at the foot is about, to know when it is no longer true.
    enum class Message { Other, StorageHint, Standstill };

    void tell(Message kind, const QString &text);
    void showMarks();
    void bindStorage();
    void bindOptions();
    void bindEdit(BoxEdit &box, void (CaptureOptions::*begin)(), void (CaptureOptions::*end)());
    void bindPage();
    void bindLive(LiveView &live);
    void bindStatus();
    void showStorageHint(const StorageState &state);
    void makeTabs();
    void makeRows();
    void bindRow(CameraRowBoxes &row);
    void showPage();
    void refreshPage();
    void showSwitches();
    void switchGroup(bool on);
    void resetGroup();
    void showCaption(Caption caption, const QString &text);
    void showStandstill(const QString &text);
    void showTrouble(const QString &text);
    void selectGroup(int group);
    void leaveAddress();

    /// The hide button was clicked ("cache" hides).
    void Cache_Click();

    /// The import button was clicked.
    void Import_Click();

    /// The button that shows the log was pressed.
    void cmdDebug_MouseDown();

    void openFolder(int row);
    void openIfThere(const QString &path, const QString &otherwise);
    void open(const QString &path);

    Uses uses_;
    std::unique_ptr<Ui::Interface> ui_;
    StorageBox *storageBox_ = nullptr;
    AddressPaste *paste_ = nullptr;
    std::array<CameraRowBoxes *, kRows> rows_{};
    std::vector<CameraAddress> late_;
    Message message_ = Message::Other;
    std::optional<int> pressedGroup_; // whose switch is pressed
    int resetGroup_ = 0;              // whose reset was, last
    bool mayClose_ = false;
};

} // namespace velmora
