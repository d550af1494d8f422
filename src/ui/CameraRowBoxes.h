// The boxes of one camera row of the main window.
//
//   n | SB | Source ................ | AutoDelay | BestTime | TimeLoad | lNew | EffM
#pragma once

#include "ui/AddressEdit.h"
#include "ui/ClickLabel.h"
#include "ui/Lamp.h"
#include "view/CameraPage.h"

#include <QAction>
#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>

#include <array>
#include <optional>

namespace velmora {

/// Makes the boxes of a row (0-based), adds them to a line of the grid, and binds them to the page.
/// The boxes belong to the grid's widget; this object lives no longer than they do.
class CameraRowBoxes : public QObject
{
    Q_OBJECT

public:
    CameraRowBoxes(int row, QGridLayout &grid, CameraPage &page);

    /// Shows the whole row, as after a tab switch.
    void showRow();

    /// Shows the whole row, except for an address that is being edited.
    void refreshRow();

    /// True when one of the boxes has the focus.
    [[nodiscard]] bool hasFocus() const;

    /// Shows what the capture changes; the address box is the user's.
    void showCounters();

    /// Marks the row of a camera that is late.
    void showLate(bool late);

    /// Puts the boxes that take the focus after `before` in the tab order, address first; returns
    /// the last of them.
    QWidget *orderTabs(QWidget &before);

    /// True while the address is being edited, even if set aside.
    [[nodiscard]] bool isAddressInHand() const { return Source->isInHand(); }

    /// Ends the edit of the address, which is stored.
    void leave() { Source->leave(); }

    /// Puts an address into the box and stores it, as if it had been typed and left.
    void fill(const QString &address);

Q_SIGNALS:
    void folderClicked(int row);

    /// The sheet of the row's camera is to be shown.
    void sheetWanted(int row);

    /// The window for many cameras at once is to be shown.
    void listWanted();

    /// Several addresses were pasted into the box.
    void linesPasted(int row, const QStringList &addresses);

    /// One of the boxes got the focus or was pressed.
    void taken(int row);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    [[nodiscard]] std::array<QWidget *, 8> boxes() const;
    void place(QGridLayout &grid);
    void showChoices();
    void showSwitches();
    void showName();
    void showReason();
    void bind();
    void bindSwitch(QCheckBox &box, void (CameraPage::*set)(int row, bool on));
    void resetBestTime();
    void setNames();
    void setTips();
    void offerSheet();
    QAction *action(const QString &text, Qt::Key key);
    void showAddress(const QString &address);
    void changeAddress(const QString &text);
    void storeAddress();

    int row_;
    CameraPage &page_;
    ClickLabel *n;
    Lamp *SB;
    AddressEdit *Source;
    QCheckBox *AutoDelay;
    ClickLabel *BestTime;
    QLabel *TimeLoad;
    QLabel *lNew;
    QCheckBox *EffM;
    bool isTyped_ = false;                  // since the box was last left or filled, also by a tool
    std::optional<ShownCamera> pressedFor_; // the camera for which a switch is pressed
    ShownCamera resetFor_;                  // and that for which the best time was, last
};

} // namespace velmora
