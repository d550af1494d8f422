// The same user in the main window: rows, tabs, switches and options; both rules are told.
#pragma once

#include "ProgramBrowserHands.h"
#include "cameras/CameraTable.h"
#include "ui/Lamp.h"

#include <QClipboard>
#include <QTabBar>

namespace velmora::test {

class ProgramMainHands : public ProgramBrowserHands
{
protected:
    bool mayUseMain()
    {
        if (isMain_) {
            toFront(kMain);
            followFront();
        }
        return isMain_;
    }

    /// A window that comes to the front takes up the box that has its cursor.
    void followFront()
    {
        const bool isInFront = isMain_ && QApplication::activeWindow() == topLevel(kMain);
        const bool comes = !std::exchange(wasInFront_, isInFront) && isInFront;
        if (comes && cursorRow() >= 0 && rows_.hand < 0) {
            rows_.enter(cursorRow());
        }
    }

    // The row whose box has the cursor, if only for the window; -1 for none.
    int cursorRow()
    {
        for (int row = 0; row < kRows; ++row) {
            if (topLevel(kMain)->focusWidget() == &box(row)) {
                return row;
            }
        }
        return -1;
    }

    /// What takes the cursor out of an address box leaves that.
    template <typename Action>
    void inMain(Action action)
    {
        const int before = cursorRow();
        action();
        const int after = cursorRow();
        if (before != after) {
            leaveRow();
            if (after >= 0) {
                rows_.enter(after);
            }
        }
    }

    void clickInMain(const QString &name)
    {
        inMain([&] { clickOn(kMain, name); });
    }

    QTabBar &tabs() { return find<QTabBar>(kMain, QStringLiteral("Selecteur")); }

    QLineEdit &box(int row) { return find<QLineEdit>(kMain, rowKey(u"Source", row)); }

    // The rows are loaded as for a click on the tab, and the film ends.
    void pressSetup()
    {
        if (!mayBrowse()) {
            return;
        }
        browser_.leave();
        leaveRow();
        clickOn(kBrowser, QStringLiteral("cSetUp"));
        browser_.closeFilm();
        isMain_ = true;
        loadRows(tabs().currentIndex());
    }

    void hideMain()
    {
        if (!mayUseMain() || isAway_) { // when it would end the program
            return;
        }
        leaveRow();
        clickOn(kMain, QStringLiteral("Cache"));
        isMain_ = false;
        showBrowser();
    }

    void showBrowser()
    {
        if (!std::exchange(isBrowser_, true)) {
            browser_.reload(now());
        }
    }

    /// Beside the main window only the browser closes.
    void closeBrowser()
    {
        if (isBrowser_ && isMain_) {
            browser_.leave();
            clickOn(kBrowser, QStringLiteral("Quitter"));
            isBrowser_ = false;
        }
    }

    void clickTab()
    {
        if (mayUseMain()) {
            const int group = oneIn(4) ? below(kGroups) : below(3);
            leaveRow();
            QTest::mouseClick(&tabs(), Qt::LeftButton, {}, tabs().tabRect(group).center());
            loadRows(group);
        }
    }

    void loadRows(int group)
    {
        rows_.load(group);
        for (int row = 0; row < kRows; ++row) {
            hearAddress({group, row});
        }
    }

    CameraAddress anyOnScreen()
    {
        const CameraAddress camera = anyCamera();
        return {rows_.group, camera.row};
    }

    // Only when the box is left is it stored.
    void typeAddress()
    {
        if (!mayUseMain()) {
            return;
        }
        const CameraAddress camera = anyOnScreen();
        const QString text = oneIn(4) ? QString() : anyUrl();
        QLineEdit &source = box(camera.row);
        inMain([&] { QTest::mouseClick(&source, Qt::LeftButton); });
        QTest::keyClick(&source, Qt::Key_A, Qt::ControlModifier);
        if (text.isEmpty()) {
            const bool isEmpty = source.text().isEmpty();
            QTest::keyClick(&source, Qt::Key_Delete);
            isEmpty ? void() : rows_.type(camera.row, text);
        } else {
            QGuiApplication::clipboard()->setText(text);
            QTest::keyClick(&source, Qt::Key_V, Qt::ControlModifier);
            rows_.type(camera.row, text);
        }
        if (!oneIn(3)) {
            inMain([&] { QTest::keyClick(&source, Qt::Key_Tab); });
        }
    }

    void clickAddress()
    {
        if (mayUseMain()) {
            inMain([&] { QTest::mouseClick(&box(anyOnScreen().row), Qt::LeftButton); });
        }
    }

    /// The camera is still in the row that showed it; otherwise the row is read again.
    bool actsFor(CameraAddress camera, const QString &known)
    {
        const bool isThere = rows_.actsFor(camera, known);
        hearAddress(camera);
        return isThere;
    }

    void clickSwitch()
    {
        if (!mayUseMain()) {
            return;
        }
        const CameraAddress camera = anyOnScreen();
        const bool isKeep = oneIn(2);
        clickInMain(rowKey(isKeep ? u"EffM" : u"AutoDelay", camera.row));
        const ShownRow before = rows_.shown(camera.row);
        if (actsFor(camera, before.known)) {
            rows_.choose(camera.row, isKeep ? QStringLiteral("EffM") : QStringLiteral("AutoDelai"),
                         isKeep ? !before.deletes : !before.automatic);
        }
    }

    void clickBestTime()
    {
        if (mayUseMain()) {
            const CameraAddress camera = anyOnScreen();
            clickInMain(rowKey(u"BestTime", camera.row));
            if (actsFor(camera, rows_.shown(camera.row).known)) {
                rows_.resetBestTime(camera.row);
            }
        }
    }

    void clickReset()
    {
        if (mayUseMain()) {
            clickInMain(QStringLiteral("RAZ"));
            rows_.resetNewImages();
        }
    }

    void clickGroupSwitch()
    {
        if (mayUseMain()) {
            clickInMain(QStringLiteral("ActLst"));
            switchGroup(rows_.group, !rows_.groupOn);
            rows_.groupOn = !rows_.groupOn;
        }
    }

    void switchGroup(int group, bool on)
    {
        const auto index = static_cast<std::size_t>(group);
        rows_.active.at(index) = on ? QStringLiteral("1") : QStringLiteral("0");
        browser_.isActive.at(index) = on;
    }

    void typeOption()
    {
        if (!mayUseMain()) {
            return;
        }
        const bool isTick = oneIn(2);
        const QString text = QString::number(isTick ? 30 + below(30) : 5 + below(20));
        auto &edit =
            find<QLineEdit>(kMain, isTick ? QStringLiteral("tempo") : QStringLiteral("TIO"));
        inMain([&] { QTest::mouseClick(&edit, Qt::LeftButton); });
        QTest::keyClick(&edit, Qt::Key_A, Qt::ControlModifier);
        QGuiApplication::clipboard()->setText(text);
        QTest::keyClick(&edit, Qt::Key_V, Qt::ControlModifier);
        QTest::keyClick(&edit, Qt::Key_Return);
        tabs().setFocus(Qt::TabFocusReason); // what has the cursor is taken up again
        control_[isTick ? QStringLiteral("Tempo") : QStringLiteral("TIO")] = text;
    }

    void clickDebug()
    {
        if (mayUseMain()) {
            clickInMain(QStringLiteral("cDebug"));
            QString &stored = control_[QStringLiteral("Debug")];
            stored = stored == u"1" ? QStringLiteral("0") : QStringLiteral("1");
        }
    }

    // It asks this one to come to the front. A film whose folder was being read opens above.
    void startSecond()
    {
        const bool wasFilm = isVisible(kFilm);
        program_->bringToFront();
        if (!isMain_) {
            showBrowser();
        }
        EXPECT_TRUE(QTest::qWaitFor([&] {
            const QWidget *const front = QApplication::activeWindow();
            return front == topLevel(isMain_ ? kMain : kBrowser) ||
                   (!wasFilm && front != nullptr && front == topLevel(kFilm));
        }));
    }
};

} // namespace velmora::test
