// The same user in the film, the main window and the calendar.
#pragma once

#include "ModesHands.h"
#include "base/FileStamp.h"

#include <QAbstractScrollArea>
#include <QTabBar>

namespace velmora::test {

class ModesWindows : public ModesHands
{
protected:
    // The film.
    void pressFilm()
    {
        auto &button = house_.find<QWidget>(QStringLiteral("bFilm"));
        if (button.isEnabled()) {
            tell([](ModesRule &rule) { rule.leave(); });
        }
        QTest::mouseClick(&button, Qt::LeftButton);
        tell([](ModesRule &rule) { rule.pressFilm(); });
    }

    void pausePressed()
    {
        if (house_.filmWindow.isVisible()) {
            house_.filmWindow.activateWindow();
            QTest::mouseClick(&house_.find<QWidget>(QStringLiteral("PauseCine")), Qt::LeftButton);
            tell([](ModesRule &rule) { rule.pressPause(); });
        }
    }

    void closeFilm()
    {
        house_.filmWindow.close();
        tell([](ModesRule &rule) { rule.closeFilm(); });
    }

    // The main window.
    void pressSetup()
    {
        tell([](ModesRule &rule) { rule.leave(); });
        QTest::mouseClick(&house_.find<QWidget>(QStringLiteral("cSetUp")), Qt::LeftButton);
        tell([](ModesRule &rule) { rule.closeFilm(); });
        EXPECT_TRUE(main_.isVisible());
    }

    void hideMain()
    {
        if (main_.isVisible()) {
            toMain();
            QTest::mouseClick(main_.findChild<QWidget *>(QStringLiteral("Cache")), Qt::LeftButton);
            EXPECT_FALSE(main_.isVisible());
        }
    }

    void clickTab()
    {
        if (main_.isVisible()) {
            toMain();
            auto &tabs = *main_.findChild<QTabBar *>(QStringLiteral("Selecteur"));
            tab_ = oneIn(4) ? below(velmora::kGroups) : below(3);
            QTest::mouseClick(&tabs, Qt::LeftButton, {}, tabs.tabRect(tab_).center());
        }
    }

    void switchGroup()
    {
        if (main_.isVisible()) {
            toMain();
            auto &box = *main_.findChild<QWidget *>(QStringLiteral("ActLst"));
            QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(8, box.height() / 2));
            tell([tab = tab_](ModesRule &rule) {
                bool &isActive = rule.isActive.at(static_cast<std::size_t>(tab));
                isActive = !isActive;
            });
        }
    }

    void typeAddress()
    {
        const CameraAddress camera{tab_, anyCamera().row};
        const QString url =
            oneIn(4) ? QString() : cameraUrl(oneIn(2) ? anyCamera() : CameraAddress{9, camera.row});
        if (!main_.isVisible() || url == rule().address(camera)) {
            return;
        }
        toMain();
        auto &box = *main_.findChild<QLineEdit *>(QStringLiteral("Source%1").arg(camera.row));
        QTest::mouseClick(&box, Qt::LeftButton);
        QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&box, Qt::Key_Delete);
        QTest::keyClicks(&box, url);
        QTest::keyClick(&box, Qt::Key_Tab);
        tell([=](ModesRule &rule) { rule.changeAddress(camera, url); });
    }

    // The browser goes, beside the main window, and comes back.
    void quit()
    {
        if (!main_.isVisible()) {
            return;
        }
        tell([](ModesRule &rule) { rule.leave(); });
        QTest::mouseClick(&house_.find<QWidget>(QStringLiteral("Quitter")), Qt::LeftButton);
        house_.settle();
        EXPECT_FALSE(house_.window.isVisible());
        EXPECT_FALSE(house_.find<QTimer>(QStringLiteral("TimerScan")).isActive());
        passTime();
        hideMain();
        tell([at = now()](ModesRule &rule) { rule.reload(at); });
    }

    void otherWindow()
    {
        other_.show();
        other_.activateWindow();
        QCoreApplication::processEvents();
    }

    /// Until what is read of the camera's folder will be known from then on.
    void rest()
    {
        const QString folder = rule().folderOf(rule().camera);
        ASSERT_TRUE(QTest::qWaitFor([&folder] {
            const auto stamp = folderStamp(folder);
            return !stamp ||
                   tellsChanges(*stamp, std::chrono::system_clock::now().time_since_epoch());
        }));
    }

    void passTime() { house_.clock.advance(std::chrono::seconds{1 + below(20)}); }

    // The calendar.
    void openCalendar()
    {
        const bool isOpen = calendar_.isVisible();
        QTest::mouseClick(&house_.find<QWidget>(QStringLiteral("bCalendar")), Qt::LeftButton);
        EXPECT_TRUE(calendar_.isVisible());
        if (!isOpen) {
            tell([](ModesRule &rule) { rule.openCalendar(); });
        }
    }

    void closeCalendar()
    {
        calendar_.close();
        tell([](ModesRule &rule) { rule.isCalendarOpen = false; });
    }

    void clickDay()
    {
        if (!calendar_.isVisible() || rule().days().isEmpty()) {
            return;
        }
        toFront(calendar_);
        const int day =
            oneIn(2) ? rule().known().at(0).mid(6, 2).toInt() + below(4) : 1 + below(31);
        const auto &map =
            *calendar_.findChild<QAbstractScrollArea *>(QStringLiteral("calendarDays"));
        const int label = map.fontMetrics().horizontalAdvance(QStringLiteral("0000-00")) + 8;
        const int column = (map.viewport()->width() - label) / 31;
        QTest::mouseClick(
            map.viewport(), Qt::LeftButton, {},
            {label + (day - 1) * column + column / 2, map.fontMetrics().height() / 2});
        tell([day](ModesRule &rule) {
            rule.clickDay(QStringLiteral("200603%1").arg(day, 2, 10, QLatin1Char('0')));
        });
    }

    void clickHour()
    {
        if (!calendar_.isVisible()) {
            return;
        }
        toFront(calendar_);
        const int hour = below(24);
        auto &hours = *calendar_.findChild<QWidget *>(QStringLiteral("calendarHours"));
        QTest::mouseClick(&hours, Qt::LeftButton, {},
                          {(hour * 2 + 1) * hours.width() / 48, hours.height() / 2});
        tell([hour](ModesRule &rule) { rule.clickHour(hour); });
    }

private:
    int tab_ = 0; // of the main window
};

} // namespace velmora::test
