// A user who does anything with mouse and keys in the browser and its film, by chance; the rule of
// the browser is told of each event.
#pragma once

#include "ProgramWorld.h"
#include "support/ListKeys.h"

#include <QMessageBox>

namespace velmora::test {

class ProgramBrowserHands : public ProgramWorld
{
protected:
    /// The browser can be used: it is shown, and comes to the front. While the storage folder is
    /// away, what is on show stays.
    bool mayBrowse()
    {
        if (isBrowser_ && !isAway_) {
            toFront(kBrowser);
        }
        return isBrowser_ && !isAway_;
    }

    void focusOn(const QString &name)
    {
        list(name).setFocus(Qt::TabFocusReason);
        browser_.leave();
    }

    // What takes the cursor out of a box of the search leaves that.
    void clickInBrowser(const QString &name)
    {
        const QWidget *const before = topLevel(kBrowser)->focusWidget();
        clickOn(kBrowser, name);
        if (topLevel(kBrowser)->focusWidget() != before) {
            browser_.leave();
        }
    }

    QString viewsList() { return browser_.isGroup ? kListRows : kListImages; }

    // The lists.
    void clickGroup()
    {
        if (mayBrowse()) {
            const int group = oneIn(4) ? below(kGroups) : below(3);
            browser_.leave();
            clickRow(list(kListGroups), group);
            browser_.chooseGroup(group);
        }
    }

    void clickCamera()
    {
        if (mayBrowse()) {
            const int row = oneIn(4) ? below(kRows) : anyCamera().row;
            browser_.leave();
            clickRow(list(kListCameras), row);
            browser_.chooseCamera(row);
        }
    }

    void keyCamera()
    {
        if (mayBrowse()) {
            const Qt::Key key = pick(kListMoves);
            const int to = rowAfter(key, rowOf(kListCameras), kRows);
            focusOn(kListCameras);
            QTest::keyClick(&list(kListCameras), key);
            browser_.chooseCamera(to);
        }
    }

    void clickImage()
    {
        if (!mayBrowse()) {
            return;
        }
        QListView &of = list(viewsList());
        if (const int rows = of.model()->rowCount(); rows > 0) {
            const int row = below(rows);
            browser_.leave();
            clickRow(of, row);
            browser_.isGroup ? browser_.chooseRow(row) : browser_.chooseImage(row);
        }
    }

    void keyImage()
    {
        if (!mayBrowse()) {
            return;
        }
        const Qt::Key key = pick(kListMoves);
        focusOn(viewsList());
        QTest::keyClick(&list(viewsList()), key);
        const bool isGroup = browser_.isGroup;
        const int from = isGroup ? browser_.row : browser_.index;
        const int count = isGroup ? kRows : static_cast<int>(browser_.list.size());
        if (const int to = rowAfter(key, from, count); to != from) {
            isGroup ? browser_.chooseRow(to) : browser_.chooseImage(to);
        }
    }

    void keyZoom()
    {
        if (!mayBrowse()) {
            return;
        }
        if (oneIn(2)) {
            focusOn(viewsList());
            QTest::keyClick(&list(viewsList()), Qt::Key_Return);
            browser_.toggleZoom();
        } else {
            QTest::keyClick(topLevel(kBrowser), Qt::Key_Escape);
            browser_.hideZoom();
        }
    }

    void keyRefresh()
    {
        if (mayBrowse()) {
            QTest::keyClick(topLevel(kBrowser)->windowHandle(), Qt::Key_F5);
            browser_.refresh();
        }
    }

    // The cells.
    void clickCell()
    {
        const int cell = below(kRows);
        if (!mayBrowse()) {
            return;
        }
        if (browser_.isZoomed && cell < kRows - 1) { // it lies over the first nine
            clickOn(kBrowser, QStringLiteral("ZoomImage"));
            browser_.hideZoom();
        } else {
            clickOn(kBrowser, QStringLiteral("Vue%1").arg(cell));
            browser_.clickCell(cell);
        }
    }

    void zoomCell()
    {
        const int cell = below(kRows);
        if (mayBrowse() && !browser_.isZoomed) {
            browser_.zoomCell(cell);
            QTest::mouseClick(&find(kBrowser, QStringLiteral("Vue%1").arg(cell)), Qt::RightButton);
        }
    }

    // The modes.
    void clickAuto()
    {
        if (mayBrowse()) {
            clickOn(kBrowser, QStringLiteral("cAuto"));
            browser_.leave();
            browser_.setAuto(!browser_.isAuto);
        }
    }

    void clickView()
    {
        if (mayBrowse()) {
            clickOn(kBrowser, QStringLiteral("cCamera"));
            browser_.leave();
            browser_.setGroupView(!browser_.isGroup);
            if (browser_.isGroup) {
                browser_.showNow(now());
            }
        }
    }

    void clickScan()
    {
        if (mayBrowse()) {
            clickOn(kBrowser, QStringLiteral("cScan"));
            browser_.leave();
            browser_.hideZoom();
            browser_.isScan = !browser_.isScan;
        }
    }

    // Whether the browser is in front or not.
    void walk()
    {
        if (find<QTimer>(kBrowser, QStringLiteral("TimerScan")).isActive()) {
            EXPECT_FALSE(isAway_);
            fire(kBrowser, QStringLiteral("TimerScan"));
            browser_.walk();
        }
    }

    // The search.
    void search()
    {
        if (!mayBrowse() || browser_.isGroup) {
            return;
        }
        const bool isDate = oneIn(2);
        const QString day = pick(kDays);
        const QString text = isDate
                                 ? day.right(2) + QStringLiteral("/03/2006")
                                 : QStringLiteral("%1:0").arg(below(24), 2, 10, QLatin1Char('0'));
        auto &box =
            find<QLineEdit>(kBrowser, isDate ? QStringLiteral("lDate") : QStringLiteral("lTime"));
        if (!box.hasFocus()) {
            box.setFocus(Qt::TabFocusReason);
            browser_.leave();
        }
        QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(&box, text);
        (isDate ? browser_.date : browser_.time) = text;
        browser_.isTyped = true;
        if (oneIn(2)) {
            QTest::keyClick(&box, Qt::Key_Return);
            browser_.search();
        }
    }

    // A deletion, with a question, behind which the program goes on.
    void deleteImage()
    {
        if (!mayBrowse()) {
            return;
        }
        focusOn(viewsList());
        const QString target = browser_.selected();
        const bool isOfCamera = target.section(u'/', 0, -2) == nativeFolder(browser_.camera);
        const bool isAsked =
            !target.isEmpty() && isOfCamera && (browser_.isGroup || QFileInfo::exists(target));
        QTest::keyClick(&list(viewsList()), Qt::Key_Delete);
        auto *const box = topLevel(kBrowser)->findChild<QMessageBox *>();
        ASSERT_EQ(box != nullptr, isAsked) << target.toStdString();
        if (box == nullptr) {
            return;
        }
        EXPECT_TRUE(box->text().startsWith(u"Kill ") &&
                    box->text().endsWith(QFileInfo(target).fileName()))
            << box->text().toStdString(); // the group view gives the last 23 characters of a path
        const QString storage = root();
        for (int events = below(3); events > 0; --events) {
            behindQuestion();
        }
        const bool isYes = oneIn(2);
        QTest::mouseClick(box->button(isYes ? QMessageBox::Yes : QMessageBox::No), Qt::LeftButton);
        rest();
        if (isYes) {
            takeDeleted(target, storage == root());
        }
    }

    // One of another storage folder is spared.
    void takeDeleted(const QString &target, bool isInForce)
    {
        if (isInForce) {
            gone_.insert(target);
            files_.erase(target);
            browser_.deleted();
        } else {
            browser_.refresh();
        }
    }

    virtual void behindQuestion() = 0;

    // The film.
    void pressFilm()
    {
        if (mayBrowse()) {
            if (find(kBrowser, QStringLiteral("bFilm")).isEnabled()) {
                browser_.leave();
            }
            clickOn(kBrowser, QStringLiteral("bFilm"));
            browser_.pressFilm();
        }
    }

    // One that the storage folder holds goes by whether its timer runs.
    void pressPause()
    {
        if (topLevel(kFilm)->isVisible() && !isAway_) {
            toFront(kFilm);
            clickOn(kFilm, QStringLiteral("PauseCine"));
            browser_.pressPause();
        }
    }

    void closeFilm()
    {
        if (topLevel(kFilm)->isVisible()) {
            topLevel(kFilm)->close();
            browser_.closeFilm();
        }
    }
};

} // namespace velmora::test
