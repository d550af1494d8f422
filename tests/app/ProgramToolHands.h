// The same user in the windows that are opened from the other two: a camera's sheet, the calendar,
// the health of the cameras, the import and the alarm.
#pragma once

#include "ProgramBesideHands.h"

#include <QAbstractScrollArea>
#include <QComboBox>
#include <QTableView>

namespace velmora::test {

class ProgramToolHands : public ProgramBesideHands
{
protected:
    void close(const QString &window)
    {
        if (open_.erase(window) > 0) {
            topLevel(window)->close();
        }
    }

    void closeTool()
    {
        static const QStringList kTools{kSheet, kHealth, kImport, kAlarm, kKeep};
        const QString window = pick(kTools);
        if (isOpen(window) && oneIn(2)) {
            toFront(window);
            QTest::keyClick(topLevel(window), Qt::Key_Escape);
            open_.erase(window);
        } else {
            close(window);
        }
    }

    bool isOpen(const QString &window) { return open_.contains(window); }

    // The sheet of the row that has the cursor.
    void openSheet()
    {
        if (!mayUseMain() || cursorRow() < 0) {
            return;
        }
        const CameraAddress camera{rows_.group, cursorRow()};
        leaveRow();
        const bool isBusy = isOpen(kSheet) && inSheet_ != filled_;
        QTest::keyClick(&box(camera.row), Qt::Key_F4);
        open_.insert(kSheet);
        if (!isBusy) {
            sheetOf_ = camera;
            filled_ = {nameOf(camera), rows_.at(camera).url};
            inSheet_ = filled_;
        }
    }

    void typeInSheet()
    {
        if (!isOpen(kSheet)) {
            return;
        }
        const bool isName = oneIn(2);
        const QString text = oneIn(4) ? QString() : isName ? pick(kNames) : anyUrl();
        auto &edit = find<QLineEdit>(kSheet, isName ? QStringLiteral("sheetName")
                                                    : QStringLiteral("sheetAddress"));
        toFront(kSheet);
        QTest::mouseClick(&edit, Qt::LeftButton);
        QTest::keyClick(&edit, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&edit, Qt::Key_Delete);
        QTest::keyClicks(&edit, text);
        (isName ? inSheet_.name : inSheet_.url) = text;
    }

    // Refused when the row has got another address since the sheet was filled.
    void saveSheet()
    {
        if (!isOpen(kSheet)) {
            return;
        }
        toFront(kSheet);
        clickOn(kSheet, QStringLiteral("sheetSave"));
        const bool isRefused = rows_.at(sheetOf_).url != filled_.url;
        EXPECT_EQ(isVisible(kSheet), isRefused);
        if (isRefused) {
            return;
        }
        open_.erase(kSheet);
        if (inSheet_.url != filled_.url) {
            rows_.fill(sheetOf_, inSheet_.url);
        }
        const bool isStored = !inSheet_.url.isEmpty() || filled_.url.isEmpty();
        if (isStored && inSheet_.name != filled_.name) {
            rows_.at(sheetOf_).choices[QStringLiteral("Name")] = inSheet_.name;
        }
        hear();
    }

    // The calendar.
    void openCalendar()
    {
        if (mayBrowse()) {
            clickInBrowser(QStringLiteral("bCalendar"));
            if (!browser_.isCalendarOpen) {
                browser_.openCalendar();
            }
        }
    }

    void closeCalendar()
    {
        if (browser_.isCalendarOpen) {
            topLevel(kCalendar)->close();
            browser_.isCalendarOpen = false;
        }
    }

    // All images are of one month, the first line of the map.
    void clickDay()
    {
        if (!browser_.isCalendarOpen || isAway_ || browser_.days().isEmpty()) {
            return;
        }
        toFront(kCalendar);
        const int day = 1 + below(8);
        auto &map = find<QAbstractScrollArea>(kCalendar, QStringLiteral("calendarDays"));
        const int label = map.fontMetrics().horizontalAdvance(QStringLiteral("0000-00")) + 8;
        const int column = (map.viewport()->width() - label) / 31;
        const QPoint at(label + (day - 1) * column + column / 2, map.fontMetrics().height() / 2);
        QTest::mouseClick(map.viewport(), Qt::LeftButton, {}, at);
        browser_.clickDay(QStringLiteral("2006030%1").arg(day));
    }

    void clickHour()
    {
        if (browser_.isCalendarOpen && !isAway_) {
            toFront(kCalendar);
            const int hour = below(24);
            auto &hours = find(kCalendar, QStringLiteral("calendarHours"));
            QTest::mouseClick(&hours, Qt::LeftButton, {},
                              {(hour * 2 + 1) * hours.width() / 48, hours.height() / 2});
            browser_.clickHour(hour);
        }
    }

    // The health of the cameras.
    void openHealth()
    {
        if (mayBrowse()) {
            clickInBrowser(QStringLiteral("bHealth"));
            open_.insert(kHealth);
        }
    }

    QTableView &healthTable() { return find<QTableView>(kHealth, QStringLiteral("healthTable")); }

    QString titleInHealth(int row)
    {
        constexpr int kCameraColumn = 1;
        return healthTable().model()->index(row, kCameraColumn).data().toString();
    }

    // It is shown in the browser, which comes to the front, also when it was closed.
    void goToCamera()
    {
        if (!isOpen(kHealth) || isAway_ || healthTable().model()->rowCount() == 0) {
            return;
        }
        toFront(kHealth);
        const int row = below(healthTable().model()->rowCount());
        const QString place = titleInHealth(row).section(u' ', 0, 0);
        healthTable().selectRow(row);
        healthTable().setFocus();
        QTest::keyClick(&healthTable(), Qt::Key_Return);
        showBrowser();
        browser_.chooseGroup(place.section(u':', 0, 0).toInt());
        browser_.chooseCamera(place.section(u':', 1, 1).toInt());
    }

    // After a while it knows of all changes.
    void lookAtHealth()
    {
        if (!isOpen(kHealth)) {
            return;
        }
        clock_.advance(std::chrono::seconds{6});
        rest();
        std::set<QString> titles;
        for (int row = 0; row < healthTable().model()->rowCount(); ++row) {
            titles.insert(titleInHealth(row));
        }
        std::set<QString> wanted;
        for (const CameraAddress camera : kAllCameras) {
            if (!rows_.at(camera).url.isEmpty()) {
                wanted.insert(labelOf(camera));
            }
        }
        EXPECT_EQ(titles, wanted);
    }

    // The film to keep is of the camera whose images are listed when the window is opened.
    void openKeep()
    {
        if (mayBrowse()) {
            clickInBrowser(QStringLiteral("bKeep"));
            open_.insert(kKeep);
            kept_ = labelOf(browser_.listed());
        }
    }

    QString labelOf(CameraAddress camera)
    {
        const QString shown = shownCamera(camera);
        return nameOf(camera).isEmpty() ? placeOf(camera) + u' ' + shown : shown;
    }

    // The import: every image of a folder, into the folder of the camera that is chosen.
    void import()
    {
        if (!mayUseMain() || isAway_ || isStorageInHand()) {
            return;
        }
        fillCard();
        close(kImport);
        clickInMain(QStringLiteral("Import"));
        open_.insert(kImport);
        const CameraAddress camera = anyCamera();
        chooseIn(QStringLiteral("Cam"), camera.group, QStringLiteral("ICam"));
        chooseIn(QStringLiteral("Lien"), camera.row, QStringLiteral("ILien"));
        rest();
        const bool isPossible = !rows_.at(camera).url.isEmpty();
        EXPECT_EQ(find(kImport, QStringLiteral("cmdGo")).isEnabled(), isPossible);
        if (isPossible) {
            const bool isThere = QFileInfo(nativeFolder(camera)).isDir();
            clickOn(kImport, QStringLiteral("cmdGo"));
            rest();
            auto *const message = topLevel(kImport)->findChild<QMessageBox *>();
            ASSERT_NE(message, nullptr);
            EXPECT_EQ(message->text() == u"Copy aborted", !isThere);
            QTest::mouseClick(message->button(QMessageBox::Ok), Qt::LeftButton);
            takeImported(camera, isThere);
        }
    }

    // The alarm works on what the browser lists, and changes nothing.
    void openAlarm()
    {
        if (mayBrowse()) {
            clickInBrowser(QStringLiteral("CmdAlarm"));
            open_.insert(kAlarm);
            clickOn(kAlarm, QStringLiteral("iVide"));
        }
    }

    struct SheetText
    {
        QString name;
        QString url;

        bool operator==(const SheetText &) const = default;
    };

    QString kept_; // camera
    CameraAddress sheetOf_;
    SheetText filled_;
    SheetText inSheet_;

private:
    void chooseIn(const QString &name, int row, const QString &key)
    {
        auto &choices = find<QComboBox>(kImport, name);
        choices.setFocus();
        QTest::keyClick(&choices, Qt::Key_Home);
        for (int i = 0; i < row; ++i) {
            QTest::keyClick(&choices, Qt::Key_Down);
        }
        control_[key] = QString::number(row);
    }

    void fillCard()
    {
        const QString card = QDir::cleanPath(tree_.path(u"drives/c/card"));
        for (const QString &name : tree_.files(u"drives/c/card")) {
            QFile::remove(card + u'/' + name);
            files_.erase(card + u'/' + name);
        }
        for (int images = 1 + below(3); images > 0; --images) {
            const QString second = QString::number(10 + ++imported_).right(2);
            writeImage(card + QStringLiteral("/20060304_1200") + second +
                       QStringLiteral("0714.jpg"));
        }
    }

    // In the browser it is as if its camera had been chosen again.
    void takeImported(CameraAddress camera, bool isCopied)
    {
        const QStringList names = isCopied ? tree_.files(u"drives/c/card") : QStringList();
        for (const QString &name : names) {
            const QString path = nativeFolder(camera) + u'/' + name;
            EXPECT_FALSE(files_.contains(path));
            files_[path] = picture();
        }
        browser_.chooseCamera(browser_.camera.row);
    }

    int imported_ = 0;
};

} // namespace velmora::test
