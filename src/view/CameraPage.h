// The camera table on screen: the ten rows of one group, filled from the settings file by a tab
// switch; every change is stored at once. Groups and rows are 0-based.
#pragma once

#include "cameras/CameraTable.h"
#include "cameras/StorageFolder.h"
#include "view/CameraRemarks.h"

#include <QObject>

#include <array>
#include <optional>

namespace velmora {

enum class WindowState { Hidden, Visible };

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

    /// "3:7 Garage" of a row whose camera has a name; empty for any other.
    [[nodiscard]] QString title(int row) const;

    /// Start-up: the group that was shown last and its switch, without its rows.
    void load();

    /// The tab of a group was selected: loads its rows and brings rows without address to their
    /// state in the file. Does nothing while the main window is hidden.
    void Selecteur_Click(int group, WindowState window);

    /// Another program has changed the settings: loads the rows of the group on screen anew. An
    /// address that is being edited stays as it is.
    void reread();

    void setAutomatic(int row, bool on);
    void setDeleteOld(int row, bool on);
    void resetBestTime(int row);
    void setGroupActive(bool on);

    /// The reset button: the new-image counters of the group on screen become 0.
    void RAZ();

    /// The address box of a row was changed, clicked (or got Enter), or left with this text, of
    /// which the blanks around it go. What is wrong with a text is told once, not each time that
    /// its box is left.
    void changeSource(int row, const QString &text);
    void clickSource(int row, const QString &text);
    void leaveSource(int row, const QString &text);

    /// Native path that a row's folder link opens; empty while the storage lamp is not green.
    [[nodiscard]] QString folderToOpen(int row) const;

    /// Why a row's folder link opens nothing just now, for people; empty when there is a folder.
    [[nodiscard]] QString whyNothingToOpen(int row) const;

    /// What there is to say of the cameras, on screen or not.
    [[nodiscard]] CameraRemarks &remarks() { return remarks_; }

    /// Why a row's lamp is red, or what else there is to say of its camera; empty when all is well,
    /// and for a row without address, whose lamp needs no reason.
    [[nodiscard]] QString reason(int row) const;

    /// The live view fetches a camera: its lamp is orange until endLive(), and then again what the
    /// capture has made of it. Without a beginLive() before it endLive() does nothing.
    void beginLive(CameraAddress camera);
    void endLive();

    /// What the capture learns of a camera; shown when its group is the one on screen.
    void showLoading(CameraAddress camera);
    void showLamp(CameraAddress camera, LampColour colour);
    void showLoadSeconds(CameraAddress camera, int seconds);
    void showBestTime(CameraAddress camera, BestTime time);
    void showNewImages(CameraAddress camera, int count);

Q_SIGNALS:
    /// Rows, switch or group are others than before.
    void pageLoaded();
    void rowChanged(int row);

    /// Rows and switch were loaded anew while the user may be typing in one of them.
    void pageReread();

    /// A camera's address was stored, and it is another than before.
    void addressStored(velmora::CameraAddress camera);

    /// The pictures of the live view no longer belong to the page.
    void picturesCleared();

    /// The live view is to show this camera, with the address as it stands in the box.
    void liveViewWanted(velmora::CameraAddress camera, const QString &url);

private:
    CameraRow &at(int row) { return rows_.at(static_cast<std::size_t>(row)); }

    [[nodiscard]] const CameraRow &at(int row) const
    {
        return rows_.at(static_cast<std::size_t>(row));
    }

    /// Changes the row of a camera whose group is on screen.
    template <typename Change>
    void changeShown(CameraAddress camera, Change change);

    struct LiveLamp
    {
        CameraAddress camera;
        LampColour colour; // that the capture has given it
    };

    [[nodiscard]] QString storedFolder(CameraAddress camera) const;
    void loadRow(int row);
    void tellOnce(int row, const QString &message);
    [[nodiscard]] bool isStorable(int row, const QString &address);
    void makeFolderBefore(int row, const QString &address);
    void storeAddress(CameraAddress camera, const QString &address);
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
    CameraRemarks remarks_;
    std::optional<LiveLamp> live_;
    std::array<CameraRow, kRows> rows_;

    /// What was told about the text that stands in a row's box.
    struct Told
    {
        QString text;
        QStringList messages;
    };

    std::array<Told, kRows> told_;
};

} // namespace velmora
