// A walk over the windows of the browser and the slideshow: names, kinds, tool tips, captions, and
// what the keyboard and a screen reader reach.
#include "BrowserWindowHouse.h"

#include <QAbstractButton>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

struct ControlRow
{
    const char *name;
    const char *type;
    const char *tip;  // nullptr: any
    const char *text; // nullptr: any
};

constexpr ControlRow kBrowserControls[] = {
    {"lstGroupe", "QListWidget", "List", nullptr},
    {"lstCam", "QListWidget", "Camera", nullptr},
    {"LstDir", "QListView", nullptr, nullptr},
    {"LstDirCam", "QListView", nullptr, nullptr},
    {"NbI", "QLabel", nullptr, nullptr},
    {"MousePos", "QLabel", nullptr, "0:0"},
    {"lDate", "QLineEdit", "Find date", "Date"},
    {"lTime", "QLineEdit", "Find hour", "Time"},
    {"cAuto", "QCheckBox", "Rafraîchissement automatique de l'affichage.", nullptr},
    {"cCamera", "QCheckBox", "Mode groupe ou caméra.", nullptr},
    {"cScan", "QCheckBox", "Affichage séquentiel des groupes de caméras.", nullptr},
    {"bFilm", "QAbstractButton", nullptr, "Film"},
    {"CmdAlarm", "QAbstractButton", nullptr, "Alarm"},
    {"cSetUp", "QAbstractButton", nullptr, "Setup"},
    {"Mini", "QAbstractButton", nullptr, "Mini"},
    {"Quitter", "QAbstractButton", nullptr, "Quit"},
    {"ctrT", "QLabel", "Click to reset", nullptr},
    {"txtLog", "QLabel", nullptr, nullptr},
    {"NbCapt", "QLabel", nullptr, nullptr},
    {"Capt", "QLabel", nullptr, nullptr},
};

constexpr ControlRow kFilmControls[] = {
    {"iCine", "velmora::PictureView", nullptr, nullptr},
    {"vitesse", "QSlider", nullptr, nullptr},
    {"sDebut", "QSlider", nullptr, nullptr},
    {"sFin", "QSlider", nullptr, nullptr},
    {"tDebut", "QLineEdit", nullptr, nullptr},
    {"tFin", "QLineEdit", nullptr, nullptr},
    {"PauseCine", "QAbstractButton", nullptr, "Pause"},
    {"Barre", "QProgressBar", nullptr, nullptr},
    {"Compte", "QLabel", nullptr, nullptr},
    {"Compte0", "QLabel", nullptr, nullptr},
    {"nFich", "QLabel", nullptr, nullptr},
};

class PlancheReach : public testing::Test
{
protected:
    void check(const ControlRow &row)
    {
        SCOPED_TRACE(row.name);
        const auto &control = house_.find<QWidget>(QString::fromUtf8(row.name));
        EXPECT_TRUE(control.inherits(row.type)) << control.metaObject()->className();
        EXPECT_FALSE(control.accessibleName().isEmpty());
        if (row.tip != nullptr) {
            EXPECT_EQ(control.toolTip(), QString::fromUtf8(row.tip));
        }
        if (row.text != nullptr) {
            EXPECT_EQ(control.property("text").toString(), QString::fromUtf8(row.text));
        }
    }

    // The controls that the tab key visits from here until it comes round again.
    static QStringList tabWalk(QWidget &window, QWidget &first)
    {
        QStringList names;
        first.setFocus();
        for (int i = 0; i < 50; ++i) {
            names.append(window.focusWidget()->objectName());
            QTest::keyClick(window.windowHandle(), Qt::Key_Tab);
            if (window.focusWidget() == &first) {
                break;
            }
        }
        return names;
    }

    static QStringList split(const char *names) { return QString::fromLatin1(names).split(u' '); }

    BrowserWindowHouse house_;
};

TEST_F(PlancheReach, EveryControlOfTheBrowserIsWhatItsNameSays)
{
    for (const ControlRow &row : kBrowserControls) {
        check(row);
    }
}

TEST_F(PlancheReach, EveryControlOfTheFilmIsWhatItsNameSays)
{
    for (const ControlRow &row : kFilmControls) {
        check(row);
    }
}

TEST_F(PlancheReach, TheSheetHasTenCellsInTenFramesAndTheZoomImage)
{
    for (int i = 0; i < kCells; ++i) {
        EXPECT_FALSE(house_.cell(i).accessibleName().isEmpty());
        auto &frame = house_.find<QWidget>(QStringLiteral("Cadre%1").arg(i));
        EXPECT_GE(frame.metaObject()->indexOfProperty("BorderStyle"), 0);
        EXPECT_EQ(frame.property("BorderStyle").typeId(), QMetaType::Int);
    }
    EXPECT_FALSE(house_.find<PictureView>(QStringLiteral("ZoomImage")).isVisible());
}

TEST_F(PlancheReach, TheListsOfChoicesHoldTheDigits)
{
    for (const QString &name : {QStringLiteral("lstGroupe"), QStringLiteral("lstCam")}) {
        const auto &list = house_.find<QListWidget>(name);
        ASSERT_EQ(list.count(), 10);
        for (int i = 0; i < list.count(); ++i) {
            EXPECT_EQ(list.item(i)->text(), QString::number(i));
        }
    }
}

TEST_F(PlancheReach, EveryListIsAQListViewOrQListWidget)
{
    for (const char *const name : {"lstGroupe", "lstCam", "LstDir", "LstDirCam"}) {
        EXPECT_NO_THROW(house_.find<QListView>(QString::fromLatin1(name))) << name;
    }
}

TEST_F(PlancheReach, TheTimersStandInTheirWindows)
{
    const auto *const scan = house_.window.findChild<QTimer *>(QStringLiteral("TimerScan"));
    ASSERT_NE(scan, nullptr);
    EXPECT_EQ(scan->interval(), 10000);
    EXPECT_FALSE(scan->isActive());
    EXPECT_NE(house_.filmWindow.findChild<QTimer *>(QStringLiteral("cine")), nullptr);
    EXPECT_NE(house_.filmWindow.findChild<QTimer *>(QStringLiteral("Timer1")), nullptr);
}

TEST_F(PlancheReach, TheSlidersHaveTheirRanges)
{
    const auto &speed = house_.find<QSlider>(QStringLiteral("vitesse"));
    EXPECT_EQ(speed.minimum(), 10);
    EXPECT_EQ(speed.maximum(), 1000);
    EXPECT_EQ(speed.singleStep(), 1);
    for (const QString &name : {QStringLiteral("sDebut"), QStringLiteral("sFin")}) {
        EXPECT_EQ(house_.find<QSlider>(name).minimum(), 0);
        EXPECT_EQ(house_.find<QSlider>(name).maximum(), 500);
    }
}

TEST_F(PlancheReach, EveryControlThatTakesKeysHasANameForScreenReaders)
{
    QList<QWidget *> controls = house_.window.findChildren<QWidget *>();
    controls += house_.filmWindow.findChildren<QWidget *>();
    for (const QWidget *const control : controls) {
        const bool ours = !control->objectName().startsWith(QStringLiteral("qt_"));
        if (control->focusPolicy() != Qt::NoFocus && ours) {
            EXPECT_FALSE(control->accessibleName().isEmpty())
                << control->objectName().toStdString();
        }
    }
}

TEST_F(PlancheReach, TheTabKeyVisitsTheBrowsersControlsInOrder)
{
    house_.openOn(2);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&house_.window));
    EXPECT_EQ(tabWalk(house_.window, house_.find<QWidget>(QStringLiteral("lstGroupe"))),
              split("lstGroupe lstCam LstDir cAuto cCamera cScan lDate lTime bFilm CmdAlarm cSetUp "
                    "Mini Quitter ctrT"));
}

TEST_F(PlancheReach, TheTabKeyVisitsTheFilmsControlsInOrder)
{
    house_.openOn(12);
    house_.click(QStringLiteral("bFilm"));
    house_.filmWindow.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&house_.filmWindow));
    EXPECT_EQ(tabWalk(house_.filmWindow, house_.find<QWidget>(QStringLiteral("PauseCine"))),
              split("PauseCine tDebut sDebut tFin sFin vitesse"));
}

TEST_F(PlancheReach, LabelsWithAKeyLeadToTheirBox)
{
    QList<QLabel *> labels = house_.window.findChildren<QLabel *>();
    labels += house_.filmWindow.findChildren<QLabel *>();
    int found = 0;
    for (const QLabel *const label : labels) {
        if (label->text().contains(u'&')) {
            ++found;
            EXPECT_NE(label->buddy(), nullptr) << label->text().toStdString();
        }
    }
    EXPECT_EQ(found, 3);
}

TEST_F(PlancheReach, TheBrowserOpensWithTheKeyboardInItsList)
{
    house_.openOn(2);
    EXPECT_EQ(house_.window.focusWidget(), &house_.find<QWidget>(QStringLiteral("LstDir")));
}

} // namespace
} // namespace velmora::test
