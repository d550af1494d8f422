// A user who does anything with mouse and keys in the main window, by chance, and what the rules of
// the camera rows make of it.
#pragma once

#include "DroppedText.h"
#include "RowReference.h"
#include "WindowHouse.h"
#include "cameras/CameraTable.h"

#include <QClipboard>
#include <QMessageBox>
#include <QRandomGenerator>
#include <QTabBar>

#include <gtest/gtest.h>

#include <optional>
#include <utility>

namespace velmora::test {

inline constexpr int kGroupsUsed = 3;
inline constexpr int kRowsUsed = 4;

inline const QStringList kUrls{QStringLiteral("http://a/1.jpg"), QStringLiteral("http://a/2.jpg"),
                               QStringLiteral("http://b/1.jpg"), QStringLiteral("http://b/2.png")};

/// A button that is held on a box of the window.
struct Press
{
    QString control;
    CameraAddress camera;
    QString known;
    bool wasOn = false;
    bool isOver = false; // though the button is still held
    bool isKey = false;  // and not of the mouse
};

/// What the user has in the sheet.
struct SheetFields
{
    QString name;
    QString url;
    QString user;

    bool operator==(const SheetFields &) const = default;
};

class RowHands : public testing::Test
{
protected:
    RowHands()
    {
        another_.show();
        rules_.load(0);
    }

    int below(int bound) { return static_cast<int>(random_.bounded(bound)); }

    bool oneIn(int chances) { return below(chances) == 0; }

    // Mostly the one that the user is at.
    CameraAddress anyCamera()
    {
        if (press_ && !oneIn(3)) {
            return press_->camera;
        }
        if (cursorRow() >= 0 && !oneIn(3)) {
            return {rules_.group, cursorRow()};
        }
        return {below(kGroupsUsed), below(kRowsUsed)};
    }

    QString anyUrl() { return kUrls.at(below(static_cast<int>(kUrls.size()))); }

    QLineEdit &box(int row) { return rooms_.find<QLineEdit>(rowKey(u"Source", row)); }

    bool isInFront() { return QApplication::activeWindow() == &rooms_.window; }

    // The row whose box has the cursor, if only for the window; -1 for none.
    int cursorRow()
    {
        for (int row = 0; row < kRows; ++row) {
            if (rooms_.window.focusWidget() == &box(row)) {
                return row;
            }
        }
        return -1;
    }

    void activateMain()
    {
        if (!rooms_.window.isVisible() || isInFront()) {
            return;
        }
        rooms_.window.activateWindow();
        QCoreApplication::processEvents();
        followFront();
    }

    // A window that comes to the front takes up the box that has its cursor.
    void followFront()
    {
        const bool wasInFront = std::exchange(wasInFront_, isInFront());
        if (wasInFront_ && !wasInFront && cursorRow() >= 0 && rules_.hand < 0) {
            rules_.enter(cursorRow());
        }
    }

    bool mayUseMain()
    {
        activateMain();
        return rooms_.window.isVisible() && isInFront() && !press_;
    }

    void followFocus(int before)
    {
        const int after = cursorRow();
        if (before != after) {
            rules_.leave();
            if (after >= 0) {
                rules_.enter(after);
            }
        }
    }

    // Events.
    void clickBox()
    {
        if (mayUseMain()) {
            const int before = cursorRow();
            QTest::mouseClick(&box(below(kRowsUsed)), Qt::LeftButton);
            followFocus(before);
        }
    }

    void typed(int row, const QString &text)
    {
        EXPECT_EQ(box(row).text(), text);
        rules_.type(row, text);
    }

    void paste()
    {
        if (!mayUseMain() || cursorRow() < 0) {
            return;
        }
        const int row = cursorRow();
        const QString text = oneIn(12) ? QString(300, u'a') : anyUrl();
        QGuiApplication::clipboard()->setText(text);
        QTest::keyClick(&box(row), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&box(row), Qt::Key_V, Qt::ControlModifier);
        typed(row, text);
    }

    // Into the box wherever the pointer is, whichever window is active.
    void drop()
    {
        if (!press_ && rooms_.window.isVisible()) {
            const int row = below(kRowsUsed);
            const int before = cursorRow();
            dropText(box(row), anyUrl());
            followFocus(before);
            rules_.type(row, box(row).text());
        }
    }

    // Two addresses fill two rows after a question, unless the rows have changed behind it.
    void pasteLines()
    {
        if (!mayUseMain() || cursorRow() < 0 || cursorRow() >= kRows - 1) {
            return;
        }
        const int row = cursorRow();
        const QStringList urls{anyUrl(), anyUrl()};
        QGuiApplication::clipboard()->setText(urls.join(u'\n'));
        QTest::keyClick(&box(row), Qt::Key_V, Qt::ControlModifier);
        const QStringList before{rules_.inRow(row).url, rules_.inRow(row + 1).url};
        for (int events = below(3); events > 0; --events) {
            behind();
        }
        const bool isYes = !oneIn(3);
        answer(isYes);
        if (isYes && before == QStringList{rules_.inRow(row).url, rules_.inRow(row + 1).url}) {
            rules_.fill({rules_.group, row}, urls.at(0));
            rules_.fill({rules_.group, row + 1}, urls.at(1));
            rules_.leave();
        } else if (isYes) {
            rules_.reread();
            answer(false);
        }
    }

    void answer(bool isYes)
    {
        auto *const question = rooms_.window.findChild<QMessageBox *>();
        ASSERT_NE(question, nullptr);
        QTest::mouseClick(question->button(isYes ? QMessageBox::Yes : QMessageBox::No),
                          Qt::LeftButton);
        QCoreApplication::sendPostedEvents(question, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }

    virtual void behind() = 0; // happens by itself, whatever the user does
    virtual void check() = 0;

    void typeLetter()
    {
        if (mayUseMain() && cursorRow() >= 0) {
            const int row = cursorRow();
            const QString before = box(row).text();
            const QChar letter = oneIn(3) ? u' ' : u'x';
            QTest::keyClick(&box(row), Qt::Key_End);
            QTest::keyClick(&box(row), letter.toLatin1());
            typed(row, before + letter);
        }
    }

    void takeBack()
    {
        if (mayUseMain() && cursorRow() >= 0) {
            const int row = cursorRow();
            const QString before = box(row).text();
            QTest::keyClick(&box(row), Qt::Key_End);
            QTest::keyClick(&box(row), Qt::Key_Backspace);
            if (!before.isEmpty()) {
                typed(row, before.chopped(1));
            }
        }
    }

    void undo()
    {
        if (mayUseMain() && cursorRow() >= 0) {
            const int row = cursorRow();
            const QString before = box(row).text();
            QTest::keyClick(&box(row), Qt::Key_Z, Qt::ControlModifier);
            if (box(row).text() != before) {
                rules_.type(row, box(row).text());
            }
        }
    }

    void empty()
    {
        if (mayUseMain() && cursorRow() >= 0) {
            const int row = cursorRow();
            const bool isEmpty = box(row).text().isEmpty();
            QTest::keyClick(&box(row), Qt::Key_A, Qt::ControlModifier);
            QTest::keyClick(&box(row), Qt::Key_Delete);
            if (!isEmpty) {
                typed(row, QString());
            }
        }
    }

    // As an aid for those who cannot type does.
    void putText()
    {
        if (mayUseMain()) {
            const int row = below(kRowsUsed);
            const QString text = anyUrl();
            const bool isOther = box(row).text() != text;
            const int before = cursorRow();
            box(row).setText(text);
            followFocus(before);
            if (isOther) {
                typed(row, text);
            }
        }
    }

    void key()
    {
        static const QList<Qt::Key> keys{Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_Return,
                                         Qt::Key_Escape, Qt::Key_Tab};
        if (mayUseMain() && rooms_.window.focusWidget() != nullptr) {
            const int before = cursorRow();
            const bool isBox = before >= 0;
            const Qt::Key pressed = keys.at(below(isBox ? 5 : 2)); // Enter would click a button
            QTest::keyClick(rooms_.window.focusWidget(), pressed);
            followFocus(before);
        }
    }

    void pressSwitch()
    {
        const int row = below(kRowsUsed);
        pressOn(rowKey(oneIn(2) ? u"AutoDelay" : u"EffM", row), row);
    }

    void pressBestTime()
    {
        const int row = below(kRowsUsed);
        pressOn(rowKey(u"BestTime", row), row);
    }

    void pressGroup() { pressOn(QStringLiteral("ActLst"), 0); }

    static QPoint placeOn(const QWidget &widget) { return {8, widget.height() / 2}; }

    void pressOn(const QString &control, int row)
    {
        if (!mayUseMain()) {
            return;
        }
        const int before = cursorRow();
        auto &widget = rooms_.find<QWidget>(control);
        const bool isKey = qobject_cast<QCheckBox *>(&widget) != nullptr && oneIn(3);
        if (isKey) {
            widget.setFocus(Qt::TabFocusReason);
            QTest::keyPress(&widget, Qt::Key_Space);
        } else {
            QTest::mousePress(&widget, Qt::LeftButton, {}, placeOn(widget));
        }
        followFocus(before);
        press_ = pressed(control, row);
        press_->isKey = isKey;
        for (int events = below(4); events > 0; --events) {
            oneIn(4) ? toolOnTabs() : behind();
            check();
        }
        if (!oneIn(6)) {
            release();
        }
    }

    bool isPressed(const QString &control)
    {
        return press_ && press_->control == control && !press_->isOver;
    }

    Press pressed(const QString &control, int row)
    {
        const ShownRow &shown = rules_.shown(row);
        const bool isOn = control == u"ActLst"          ? rules_.groupOn
                          : control.startsWith(u"EffM") ? shown.deletes
                                                        : shown.automatic;
        return {control, {rules_.group, row}, shown.known, isOn, false, false};
    }

    // A button that moves on what was pressed presses it again.
    void release()
    {
        if (!press_) {
            return;
        }
        const Press press = *std::exchange(press_, std::nullopt);
        auto &widget = rooms_.find<QWidget>(press.control);
        if (press.isKey) {
            QTest::keyRelease(&widget, Qt::Key_Space);
            if (!press.isOver) {
                act(press);
            }
            return;
        }
        const bool isInside = !oneIn(4) && rooms_.window.isVisible();
        const QPoint place = isInside ? placeOn(widget) : QPoint(-50, -50);
        QTest::mouseMove(&widget, place);
        QTest::mouseRelease(&widget, Qt::LeftButton, {}, place);
        if (isInside) {
            act(press.isOver ? pressed(press.control, press.camera.row) : press);
        }
    }

    void act(const Press &press)
    {
        const auto group = static_cast<std::size_t>(press.camera.group);
        const int row = press.camera.row;
        if (press.control == u"ActLst") {
            if (press.camera.group == rules_.group) {
                rules_.active.at(group) = press.wasOn ? QStringLiteral("0") : QStringLiteral("1");
                rules_.groupOn = !press.wasOn;
            }
        } else if (!rules_.actsFor(press.camera, press.known)) {
            return;
        } else if (press.control.startsWith(u"BestTime")) {
            rules_.resetBestTime(row);
        } else {
            rules_.choose(row,
                          press.control.startsWith(u"EffM") ? QStringLiteral("EffM")
                                                            : QStringLiteral("AutoDelai"),
                          !press.wasOn);
        }
    }

    void reset()
    {
        if (mayUseMain()) {
            const int before = cursorRow();
            rooms_.click(QStringLiteral("RAZ"));
            followFocus(before);
            rules_.resetNewImages();
        }
    }

    void clickTab()
    {
        if (mayUseMain()) {
            const int group = below(kGroupsUsed);
            rules_.leave();
            rooms_.selectTab(group);
            rules_.load(group);
        }
    }

    void keyOfTab()
    {
        auto &tabs = rooms_.find<QTabBar>(QStringLiteral("Selecteur"));
        if (mayUseMain()) {
            const int before = cursorRow();
            tabs.setFocus(Qt::TabFocusReason);
            followFocus(before);
            const bool isBack =
                tabs.currentIndex() >= kGroupsUsed - 1 || (tabs.currentIndex() > 0 && oneIn(2));
            QTest::keyClick(&tabs, isBack ? Qt::Key_Left : Qt::Key_Right);
            rules_.load(tabs.currentIndex());
        }
    }

    // A tool needs no window in front, nor a free hand.
    void toolOnTabs()
    {
        auto &tabs = rooms_.find<QTabBar>(QStringLiteral("Selecteur"));
        const int group = below(kGroupsUsed);
        if (group == tabs.currentIndex()) {
            return;
        }
        rules_.leave();
        tabs.setCurrentIndex(group);
        if (rooms_.window.isVisible()) {
            rules_.load(group);
        }
    }

    void hide()
    {
        if (mayUseMain()) {
            rules_.leave();
            rooms_.click(QStringLiteral("Cache"));
            EXPECT_FALSE(rooms_.window.isVisible());
            behind();
            if (!oneIn(4)) {
                bringUp();
            }
        }
    }

    void close()
    {
        if (mayUseMain()) {
            rules_.leave();
            rooms_.window.close();
        }
    }

    void bringUp()
    {
        rules_.leave();
        rooms_.window.bringUp();
        QCoreApplication::processEvents();
        rules_.load(rooms_.find<QTabBar>(QStringLiteral("Selecteur")).currentIndex());
        followFront();
    }

    // A press does not outlast it.
    void otherWindow()
    {
        const bool isBox = press_ && !press_->control.startsWith(u"BestTime");
        if (isBox && isInFront()) {
            press_->isOver = true;
        }
        another_.activateWindow();
        QCoreApplication::processEvents();
    }

    WindowHouse rooms_;
    CaptureHouse &house_ = rooms_.house;
    QWidget another_;
    QRandomGenerator random_;
    RowReference rules_;
    std::optional<Press> press_;
    bool wasInFront_ = true;
};

} // namespace velmora::test
