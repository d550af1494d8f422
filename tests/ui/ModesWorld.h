// The browser with its film, its calendar and the main window beside it, images on the disk, and
// the roads that all of it may have taken.
#pragma once

#include "ModesRoads.h"
#include "RandomHands.h"
#include "ui/CalendarWindow.h"
#include "ui/Interface.h"

#include <set>

namespace velmora::test {

class ModesWorld : public RandomHands
{
protected:
    ModesWorld()
    {
        house_.house.settings.write(u"Control", u"Vitesse", 1000);
        connectWindows();
        house_.open();
    }

    template <typename List>
    auto pick(const List &list)
    {
        return list[static_cast<decltype(list.size())>(below(static_cast<int>(list.size())))];
    }

    void tell(const ModesRoads::Event &event, const ModesRoads::IsSure &isSure = {})
    {
        roads_.tell(event, isSure);
    }

    const ModesRule &rule() { return roads_.any(); }

    bool oneIn(int chances) { return below(chances) == 0; }

    CameraAddress anyCamera() { return pick(kUsed); }

    QDateTime now()
    {
        return QDateTime::fromSecsSinceEpoch(
            std::chrono::floor<std::chrono::seconds>(house_.clock.localNow())
                .time_since_epoch()
                .count(),
            Qt::UTC);
    }

    QString root() { return QDir::cleanPath(house_.house.tree.path(u"drives/c/in")); }

    QString viewsList() { return rule().isGroup ? kRowsOfGroup : kImages; }

    void toFront(QWidget &window)
    {
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitFor([&window] { return QApplication::activeWindow() == &window; }));
    }

    void toMain() { toFront(main_); }

    void focusOn(const QString &list)
    {
        view(list).setFocus(Qt::TabFocusReason);
        tell([](ModesRule &rule) { rule.leave(); });
    }

    // A folder that a camera has, or the storage folder itself.
    QString anyFolder() { return oneIn(10) ? root() : rule().folderOf(anyCamera()); }

    QString anyName()
    {
        static const QStringList kTimes{QStringLiteral("0000"), QStringLiteral("0930"),
                                        QStringLiteral("1405"), QStringLiteral("2359")};
        return QStringLiteral("%1_%2%3")
                   .arg(pick(kDays), pick(kTimes))
                   .arg(below(6) * 10, 2, 10, QLatin1Char('0')) +
               QStringLiteral("0714.jpg");
    }

    void write(const QString &path)
    {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(picture());
        file.flush();
        file.setFileTime(kFirstStamp.addSecs(below(5)), QFileDevice::FileModificationTime);
        files_.insert(path);
        gone_.erase(path);
    }

    static const QByteArray &picture()
    {
        static const QByteArray bytes = pictureBytes(Qt::red, {16, 12});
        return bytes;
    }

    inline static const QDateTime kFirstStamp{QDate(2006, 3, 7), QTime(16, 0), Qt::UTC};
    inline static const QStringList kDays{QStringLiteral("20060305"), QStringLiteral("20060307"),
                                          QStringLiteral("20060308"), QStringLiteral("20060311")};
    inline static const QList<CameraAddress> kUsed{{0, 0}, {0, 1}, {0, 4}, {1, 0}, {1, 9}, {2, 9}};

    ModesRoads roads_;
    std::set<QString> files_; // on the disk
    std::set<QString> gone_;
    CalendarWindow calendar_{house_.images.calendar()};
    Interface main_{{house_.house.timer, house_.house.table, house_.house.storage,
                     house_.house.options, house_.house.engine.debugSwitch(), house_.house.log,
                     house_.house.view, house_.opener}};
    QWidget other_;

private:
    void connectWindows()
    {
        QObject::connect(&house_.window, &planche::setUpPressed, &main_, &Interface::bringUp);
        QObject::connect(&house_.window, &planche::setUpReleased, &main_, &QWidget::show);
        QObject::connect(&main_, &Interface::hiddenByUser, &house_.window, &planche::present);
        QObject::connect(&house_.window, &planche::closeWanted, &main_,
                         [this] { house_.window.unload(); });
        QObject::connect(&house_.window, &planche::calendarWanted, &calendar_,
                         &CalendarWindow::present);
    }
};

} // namespace velmora::test
