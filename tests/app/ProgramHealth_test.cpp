// What the windows show of the cameras' health: marks on what is late, and counts that follow what
// other parts of the program do.
#include "ProgramHouse.h"
#include "health/HealthStore.h"
#include "health/HealthTable.h"
#include "ui/LateColour.h"

#include <QListWidget>
#include <QTabBar>
#include <QTableView>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

const QString kMain = QStringLiteral("Interface");
const QString kBrowser = QStringLiteral("planche");
const QString kFolder = QStringLiteral("drives/c/in/http%3A%2F%2Fcam%2Fa%2Epng");

class ProgramHealth : public ProgramHouse
{
protected:
    /// Nothing has come from the camera for two hours, and the run before this one said so.
    void startWithALateCamera()
    {
        CameraHealths known;
        CameraHealth &camera = known[{0, 0}];
        const Moment now((clock_.localNow() - clock_.utcOffset()).time_since_epoch());
        camera.folder = tree_.path(kFolder);
        camera.addImage(now - 2h - 1min, 2000);
        camera.addImage(now - 2h, 2000);
        camera.lateSince = now - 1h;
        saveHealth(tree_.path(), known);
        source_.answer(QStringLiteral("http://cam/a.png"),
                       {{}, {}, {}, {}, QStringLiteral("no answer")});
        start();
    }

    [[nodiscard]] bool isMarked(const QString &list)
    {
        const QListWidgetItem &item = *topLevel(kBrowser)->findChild<QListWidget *>(list)->item(0);
        return item.foreground() == QBrush(lateColour(topLevel(kBrowser)->palette()));
    }

    [[nodiscard]] bool isTabMarked()
    {
        return topLevel(kMain)
                   ->findChild<QTabBar *>(QStringLiteral("Selecteur"))
                   ->tabTextColor(0) == lateColour(topLevel(kMain)->palette());
    }

    /// In the window's first row.
    [[nodiscard]] QVariant health(HealthTable::Column column, int role = Qt::DisplayRole)
    {
        const auto *const table = topLevel(QStringLiteral("health"))
                                      ->findChild<QTableView *>(QStringLiteral("healthTable"));
        return table->model()->index(0, column).data(role);
    }

    void expectMarks(bool marked)
    {
        EXPECT_EQ(isMarked(QStringLiteral("lstGroupe")), marked);
        EXPECT_EQ(isMarked(QStringLiteral("lstCam")), marked);
        EXPECT_EQ(isTabMarked(), marked);
    }
};

TEST_F(ProgramHealth, MarksAfterARestartWhatWasLateBefore)
{
    startWithALateCamera();
    expectMarks(true);
}

TEST_F(ProgramHealth, MarksARowNoLongerWhoseCameraIsRemovedFromOutside)
{
    startWithALateCamera();
    SettingsFile(tree_.path()).write(u"Liste0", u"lst0", u"");
    engine_->adoptSettings();
    clock_.advance(5s);
    expectMarks(false);
}

TEST_F(ProgramHealth, CountsWhatIsImported)
{
    writeSettings("StRep=C:\\in\\\r\nDrive=C:\r\nDir=C:\\card\r\nPatern=*.png\r\n");
    tree_.write(u"drives/c/card/20240102_0304050203.png", QByteArray(500, 'x'));
    start();
    click(kBrowser, QStringLiteral("cSetUp"));
    click(kMain, QStringLiteral("Import"));
    click(QStringLiteral("frmImport"), QStringLiteral("cmdGo"));
    topLevel(QStringLiteral("frmImport"))->findChild<QMessageBox *>()->close();
    click(kBrowser, QStringLiteral("bHealth"));
    EXPECT_EQ(health(HealthTable::InAll, HealthTable::kSortRole), 2500);
}

TEST_F(ProgramHealth, KnowsTheDatesOfImagesThatHaveGotTheirNames)
{
    source_.answer(QStringLiteral("http://cam/a.png"),
                   {{}, {}, {}, {}, QStringLiteral("no answer")});
    for (const int time : {1000, 2000}) {
        tree_.write(kFolder + QStringLiteral("/20060307_13%1.png").arg(time), "picture");
    }
    start();
    clock_.advance(10s);
    click(kBrowser, QStringLiteral("bHealth"));
    EXPECT_EQ(health(HealthTable::Interval), QStringLiteral("10 min"));
}

TEST_F(ProgramHealth, MarksNoLongerWhatDeliversAgain)
{
    startWithALateCamera();
    source_.answer(
        QStringLiteral("http://cam/a.png"),
        {QByteArray(2000, 'x'), QStringLiteral("Tue, 07 Mar 2006 14:05:09 GMT"), {}, {}, {}});
    engine_->launch(engine_->scheduler().Timer_Timer());
    clock_.advance(10s);
    expectMarks(false);
}

class ProgramHealthRow : public ProgramHealth
{
protected:
    void SetUp() override
    {
        SettingsFile(tree_.path()).write(u"Liste3", u"lst2", u"http://cam/b.png");
        start();
        click(kBrowser, QStringLiteral("bHealth"));
        topLevel(kBrowser)->hide();
    }

    void clickItsRow() { QTest::mouseClick(table().viewport(), Qt::LeftButton, {}, middle()); }

    /// The middle of the row of camera 2 of group 3.
    [[nodiscard]] QPoint middle()
    {
        const QAbstractItemModel &rows = *table().model();
        const QModelIndexList found =
            rows.match(rows.index(0, HealthTable::Camera), Qt::DisplayRole, QStringLiteral("3:2"));
        return table().visualRect(found.value(0)).center();
    }

    [[nodiscard]] QTableView &table()
    {
        return *topLevel(QStringLiteral("health"))
                    ->findChild<QTableView *>(QStringLiteral("healthTable"));
    }

    void expectItsCameraInTheBrowser()
    {
        settle();
        EXPECT_TRUE(isVisible(kBrowser));
        const auto row = [](const QString &list) {
            return topLevel(kBrowser)->findChild<QListWidget *>(list)->currentRow();
        };
        EXPECT_EQ(row(QStringLiteral("lstGroupe")), 3);
        EXPECT_EQ(row(QStringLiteral("lstCam")), 2);
    }
};

TEST_F(ProgramHealthRow, GoesToItsCameraByADoubleClick)
{
    clickItsRow();
    QTest::mouseDClick(table().viewport(), Qt::LeftButton, {}, middle());
    expectItsCameraInTheBrowser();
}

TEST_F(ProgramHealthRow, GoesToItsCameraByEnter)
{
    clickItsRow();
    QTest::keyClick(&table(), Qt::Key_Return);
    expectItsCameraInTheBrowser();
}

} // namespace
} // namespace velmora::test
