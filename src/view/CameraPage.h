// The camera table on screen: the ten rows of one group, filled from the settings file when its tab
// is selected; every change is stored at once. Groups and rows are 0-based.
#pragma once

#include "cameras/CameraTable.h"
#include "cameras/StorageFolder.h"
#include "view/AddressEditing.h"
#include "view/CameraRemarks.h"

#include <QObject>

#include <array>
#include <optional>

namespace velmora {

enum class WindowState { Hidden, Visible };

/// A camera as a row shows it, which is no longer there once the row has a different address.
struct ShownCamera
{
    CameraAddress camera;
    QString address;
};

class CameraPage : public QObject
{
    Q_OBJECT

public:
    CameraPage(const CameraTable &table, const StorageFolder &storage, EventLog &log,
               Problems &problems);

    /// The group whose tab is selected.
    [[nodiscard]] int group() const { return group_; }

    /// The row last clicked, edited or captured.
    [[nodiscard]] int currentRow() const { return currentRow_; }

    [[nodiscard]] bool isGroupActive() const { return groupActive_; }

    [[nodiscard]] const CameraRow &row(int row) const
    {
        return rows_.at(static_cast<std::size_t>(row));
    }

    /// The camera that a row shows, whatever stands in its box.
    [[nodiscard]] ShownCamera shownCamera(int row) const;

    /// True when that camera is on screen and still has its row: what the user does to it may be
    /// done. A row to which another program has given a different one is loaded again.
    [[nodiscard]] bool isStillThere(const ShownCamera &shown);

    /// "3:7 Garage" for a row whose camera has a name; empty for any other.
    [[nodiscard]] QString title(int row) const;

    /// Start-up: loads the group shown last and its switch, without its rows.
    void load();

    /// A group's tab was selected: loads its rows and resets rows without an address in the file.
    /// Does nothing while the main window is hidden.
    void Selecteur_Click(int group, WindowState window);

    /// Another program has changed the settings: loads the rows of the group on screen again. An
    /// address that is being edited stays as it is.
    void reread();

    void setAutomatic(int row, bool on);
    void setDeleteOld(int row, bool on);
    void resetBestTime(int row);
    void setGroupActive(bool on);

    /// Resets the counters ("remise à zéro"): the new images of the group on screen become 0.
    void RAZ();

    /// A row's address box was changed, clicked (or got Enter), or left with this text, whose
    /// surrounding blanks are dropped. What is wrong with a text is reported once, not each time
    /// its box is left.
    void changeSource(int row, const QString &text);
    void clickSource(int row, const QString &text);
    void leaveSource(int row, const QString &text);

    /// A row's box shows the stored address again.
    void restoreSource(int row);

    /// A row's box was filled with an address that the user gave elsewhere: it counts as
    /// typed, but the live view does not show it.
    void fillSource(int row, const QString &text);

    /// Stores an address that was typed elsewhere for a camera whose group is not on screen, under
    /// the rules of its row's box.
    void storeElsewhere(CameraAddress camera, const QString &text);

    /// Native path that a row's folder link opens; empty while the storage lamp is not green.
    [[nodiscard]] QString folderToOpen(int row) const;

    /// Why a row's folder link cannot open anything now, for the user; empty when there is a
    /// folder.
    [[nodiscard]] QString whyNothingToOpen(int row) const;

    /// The remarks on all cameras, on screen or not.
    [[nodiscard]] CameraRemarks &remarks() { return remarks_; }

    /// Why a row's lamp is red, or any other remark on its camera; empty when all is well, and for
    /// a row without an address, whose lamp needs no reason.
    [[nodiscard]] QString reason(int row) const;

    /// The live view is fetching a camera: its lamp is orange until endLive(), and then back to
    /// what the capture made it. endLive() does nothing without a beginLive() before it.
    void beginLive(CameraAddress camera);
    void endLive();

    /// News of a camera from the capture; shown when its group is on screen.
    void showLoading(CameraAddress camera);
    void showLamp(CameraAddress camera, LampColour colour);
    void showLoadSeconds(CameraAddress camera, int seconds);
    void showBestTime(CameraAddress camera, BestTime time);
    void showNewImages(CameraAddress camera, int count);

Q_SIGNALS:
    /// Rows, switch or group have changed.
    void pageLoaded();
    void rowChanged(int row);

    /// Rows and switch were loaded again while the user may be typing in one of them.
    void pageReread();

    /// The same for one row.
    void rowReread(int row);

    /// A camera's address was stored, and it has changed.
    void addressStored(velmora::CameraAddress camera);

    /// A row is given another camera, or none, elsewhere than in its box.
    void cameraReplaced(velmora::CameraAddress camera);

    /// The pictures of the live view no longer belong to the page.
    void picturesCleared();

    /// The live view is to show this camera, with the address in the box.
    void liveViewWanted(velmora::CameraAddress camera, const QString &url);

private:
    CameraRow &at(int row) { return rows_.at(static_cast<std::size_t>(row)); }

    [[nodiscard]] const CameraRow &at(int row) const
    {
        return rows_.at(static_cast<std::size_t>(row));
    }

    /// Changes the row of a camera if its group is on screen.
    template <typename Change>
    void changeShown(CameraAddress camera, Change change);

    struct LiveLamp
    {
        CameraAddress camera;
        LampColour colour; // as last set by the capture
        QString address;   // stored when the fetch began
    };

    [[nodiscard]] QString storedAddress(int row) const;
    [[nodiscard]] QString storedFolder(int row) const;
    void loadRow(int row);
    void rereadRow(const SettingsSnapshot &settings, int row);
    void forgetLive(CameraAddress camera);
    void followAddress(CameraAddress camera, const QString &address);
    void followAddresses(const SettingsSnapshot &settings);
    void followStored(CameraAddress camera, const QString &address);
    void takeRow(CameraAddress camera);
    void takeOther(CameraAddress camera, const QString &address);
    void keepForLive(CameraAddress camera, LampColour colour);
    [[nodiscard]] int rememberedRow() const;

    const CameraTable &table_;
    const StorageFolder &storage_;
    EventLog &log_;
    Problems &problems_;
    int group_ = 0;
    int currentRow_ = 0;
    bool groupActive_ = false;
    bool loading_ = false;
    QString lastUrlShown_;
    PerCamera<QString> addresses_; // as last known to be stored
    CameraRemarks remarks_;
    std::optional<LiveLamp> live_;
    std::array<CameraRow, kRows> rows_;
    AddressEditing editing_;
};

} // namespace velmora
