// The health of the cameras, under mouse and keys.
#include "ui/HealthWindow.h"

#include "TurnedWheel.h"
#include "WindowHouse.h"
#include "admin/Administration.h"
#include "cameras/CameraChoices.h"
#include "health/HealthEngine.h"
#include "support/MailDouble.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QHelpEvent>
#include <QScreen>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTableView>
#include <QTextDocumentFragment>
#include <QToolTip>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

constexpr int kCameras = 5;

class HealthWindowTest : public testing::Test
{
protected:
    HealthWindowTest()
    {
        for (int row = 0; row < kCameras; ++row) {
            house_.house.addCamera({0, row}, cameraUrl({0, row}));
        }
        house_.house.settings.write(u"Camera03", u"Name", u"Garage");
        book_.load();
        house_.house.finish();
        book_.addFailure({0, 3}, QStringLiteral("no answer"));
        window_.present();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
    }

    // What the book has begun ends before the book does.
    ~HealthWindowTest() override { house_.house.finish(); }

    template <typename Control>
    Control &find(const char *name)
    {
        return *window_.findChild<Control *>(QLatin1String(name));
    }

    static void typeOver(QSpinBox &box, const QString &text)
    {
        box.setFocus();
        box.selectAll();
        QTest::keyClicks(&box, text);
    }

    QTableView &table() { return find<QTableView>("healthTable"); }

    [[nodiscard]] QString cell(int row, HealthTable::Column column)
    {
        return table().model()->index(row, column).data().toString();
    }

    WindowHouse house_;
    MailDouble mail_;
    HealthEngine health_{house_.house.engine, mail_};
    HealthBook &book_ = health_.book();
    HealthWatch &watch_ = health_.watch();
    HealthWindow window_{book_, watch_, house_.house.settings};
};

TEST_F(HealthWindowTest, ShowsTheWorstFirstWithTheKeyboardInTheTable)
{
    EXPECT_EQ(window_.objectName(), QStringLiteral("health"));
    EXPECT_EQ(table().model()->rowCount(), kCameras);
    EXPECT_EQ(cell(0, HealthTable::Camera), QStringLiteral("0:3 Garage"));
    EXPECT_EQ(cell(0, HealthTable::Failure), QStringLiteral("no answer"));
    EXPECT_EQ(table().currentIndex().row(), 0);
    EXPECT_EQ(window_.focusWidget(), &table());
}

TEST_F(HealthWindowTest, ALampKeepsItsColourInTheSelectedRow)
{
    const QRect cell = table().visualRect(table().model()->index(0, HealthTable::Lamp));
    const QPoint lamp(cell.left() + cell.height() / 2, cell.center().y());
    const auto colour = [&] { return table().viewport()->grab().toImage().pixelColor(lamp); };
    table().selectRow(0);
    const QColor selected = colour();
    table().clearSelection();
    EXPECT_EQ(selected, colour());
    EXPECT_GT(selected.red(), selected.blue() + 100) << "the worst camera is failing: orange";
}

TEST_F(HealthWindowTest, EnterGoesToTheCamera)
{
    QSignalSpy wanted(&window_, &HealthWindow::cameraWanted);
    QTest::keyClick(&table(), Qt::Key_Return);
    ASSERT_EQ(wanted.size(), 1);
    EXPECT_EQ(wanted.front().front().value<CameraAddress>(), (CameraAddress{0, 3}));
    QTest::keyClick(&table(), Qt::Key_Down);
    QTest::keyClick(&table(), Qt::Key_Enter);
    EXPECT_EQ(wanted.size(), 2);
}

TEST_F(HealthWindowTest, WhatIsTypedOverTheTableFiltersIt)
{
    QTest::keyClicks(&table(), QStringLiteral("g"));
    QTest::keyClicks(window_.focusWidget(), QStringLiteral("arage"));
    EXPECT_EQ(find<QLineEdit>("healthFilter").text(), QStringLiteral("garage"));
    ASSERT_EQ(table().model()->rowCount(), 1);
    QSignalSpy wanted(&window_, &HealthWindow::cameraWanted);
    QTest::keyClick(&find<QLineEdit>("healthFilter"), Qt::Key_Return);
    EXPECT_EQ(wanted.size(), 1);
}

TEST_F(HealthWindowTest, OffersToClearTheFilter)
{
    EXPECT_TRUE(find<QLineEdit>("healthFilter").isClearButtonEnabled());
}

TEST_F(HealthWindowTest, SortsByTheColumnThatIsClicked)
{
    QHeaderView &header = *table().horizontalHeader();
    const QPoint title(header.sectionViewportPosition(HealthTable::Camera) + 20, 5);
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, title);
    const QString first = cell(0, HealthTable::Camera);
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, title);
    EXPECT_EQ(first, cell(kCameras - 1, HealthTable::Camera));
    EXPECT_NE(first, cell(0, HealthTable::Camera));
}

TEST_F(HealthWindowTest, SortsByTheColumnOfTheCursor)
{
    const auto sorted = [this] {
        const QHeaderView &header = *table().horizontalHeader();
        return std::pair(header.sortIndicatorSection(), header.sortIndicatorOrder());
    };
    for (int i = 0; i < HealthTable::Failures; ++i) {
        QTest::keyClick(&table(), Qt::Key_Right);
    }
    QTest::keyClick(&table(), Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(sorted(), std::pair(int{HealthTable::Failures}, Qt::AscendingOrder));
    QTest::keyClick(&table(), Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(sorted(), std::pair(int{HealthTable::Failures}, Qt::DescendingOrder));
}

TEST_F(HealthWindowTest, ShowsAllCamerasWhenItIsOpenedAgain)
{
    QTest::keyClicks(&table(), QStringLiteral("garage"));
    ASSERT_EQ(table().model()->rowCount(), 1);
    window_.present();
    EXPECT_EQ(table().model()->rowCount(), 1) << "only raised";
    window_.close();
    window_.present();
    EXPECT_EQ(table().model()->rowCount(), kCameras);
}

TEST_F(HealthWindowTest, CopiesItsRowsAsText)
{
    QTest::keySequence(&table(), QKeySequence::Copy);
    const QStringList lines = QGuiApplication::clipboard()->text().split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), kCameras);
    EXPECT_TRUE(lines.first().contains(QStringLiteral("0:3 Garage\t")));
    EXPECT_EQ(lines.first().count(u'\t'), HealthTable::kColumns - 1);
}

TEST_F(HealthWindowTest, RemembersWhatIsChosen)
{
    const HealthOptions options(house_.house.settings);
    EXPECT_TRUE(find<QCheckBox>("healthNotices").isChecked());
    for (const char *const name :
         {"healthNotices", "healthMail", "healthDelete", "healthStop", "healthNever"}) {
        QTest::keyClick(&find<QCheckBox>(name), Qt::Key_Space);
    }
    EXPECT_FALSE(options.isOn(HealthChoice::Notices));
    EXPECT_TRUE(options.isOn(HealthChoice::Mail));
    EXPECT_TRUE(options.isOn(HealthChoice::DeleteOldest));
    EXPECT_TRUE(options.isOn(HealthChoice::StopWhenFull));
    EXPECT_TRUE(options.isNever({0, 3}));
    EXPECT_FALSE(options.isNever({0, 2}));
}

TEST_F(HealthWindowTest, TakesTheNumbersThatAreTyped)
{
    const HealthOptions options(house_.house.settings);
    auto &times = find<QSpinBox>("healthLateTimes");
    auto &limit = find<QSpinBox>("healthLimit");
    EXPECT_EQ(times.value(), 10);
    EXPECT_EQ(limit.text(), QStringLiteral("1 GB or 2 %"));
    typeOver(times, QStringLiteral("25"));
    EXPECT_EQ(options.lateTimes(), 10);
    QTest::keyClick(&times, Qt::Key_Return);
    EXPECT_EQ(options.lateTimes(), 25);
    EXPECT_EQ(options.rule({0, 3}).times, 25);
    typeOver(limit, QStringLiteral("500"));
    QTest::keyClick(&limit, Qt::Key_Tab);
    EXPECT_EQ(options.limitBytes(1'000'000'000'000), 500'000'000);
    QTest::keyClick(&limit, Qt::Key_Up);
    EXPECT_EQ(options.limitMegabytes(), 600);
    limit.setValue(0);
    EXPECT_EQ(options.limitBytes(1'000'000'000'000), 1'000'000'000);
}

TEST_F(HealthWindowTest, ANumberBeingTypedIsNotTakenWhenAnotherWindowComesUp)
{
    const HealthOptions options(house_.house.settings);
    auto &times = find<QSpinBox>("healthLateTimes");
    typeOver(times, QStringLiteral("1"));
    QWidget another;
    another.show();
    another.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&another));
    EXPECT_EQ(options.lateTimes(), 10);
    window_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    QTest::keyClicks(&times, QStringLiteral("5"));
    QTest::keyClick(&times, Qt::Key_Tab);
    EXPECT_EQ(options.lateTimes(), 15);
}

TEST_F(HealthWindowTest, ANumberBeingTypedCountsWhenTheWindowIsRaisedAgainOrClosed)
{
    const HealthOptions options(house_.house.settings);
    auto &times = find<QSpinBox>("healthLateTimes");
    typeOver(times, QStringLiteral("25"));
    window_.present();
    EXPECT_EQ(options.lateTimes(), 25);
    EXPECT_EQ(times.value(), 25);
    typeOver(times, QStringLiteral("35"));
    window_.close();
    EXPECT_EQ(options.lateTimes(), 35);
}

TEST_F(HealthWindowTest, TheWheelTurnsOnlyTheNumberThatHasTheCursor)
{
    const HealthOptions options(house_.house.settings);
    auto &limit = find<QSpinBox>("healthLimit");
    turnWheel(limit, 1);
    EXPECT_FALSE(limit.hasFocus());
    EXPECT_EQ(options.limitMegabytes(), 0);
    limit.setFocus();
    turnWheel(limit, 1);
    EXPECT_EQ(options.limitMegabytes(), 100);
}

TEST_F(HealthWindowTest, ShowsTheNumbersThatWereChosenElsewhere)
{
    window_.close();
    house_.house.settings.write(u"Health", u"LateTimes", u"3");
    house_.house.settings.write(u"Health", u"LimitMB", u"2048");
    window_.present();
    EXPECT_EQ(find<QSpinBox>("healthLateTimes").value(), 3);
    EXPECT_EQ(find<QSpinBox>("healthLimit").value(), 2048);
    EXPECT_EQ(house_.house.settings.read(u"Health", u"LateTimes"), QStringLiteral("3"));
}

TEST_F(HealthWindowTest, StaysOnItsCameraWhenOthersComeAndGo)
{
    const HealthOptions options(house_.house.settings);
    options.setNever({0, 3}, true);
    house_.house.addCamera({0, 0}, {});
    house_.house.addCamera({2, 0}, cameraUrl({2, 0}));
    book_.followTable();
    EXPECT_EQ(table().model()->rowCount(), kCameras);
    ASSERT_TRUE(table().currentIndex().isValid());
    EXPECT_EQ(cell(table().currentIndex().row(), HealthTable::Camera),
              QStringLiteral("0:3 Garage"));
    EXPECT_TRUE(table().selectionModel()->isRowSelected(table().currentIndex().row()));
}

TEST_F(HealthWindowTest, TellsOfTheCameraThatTakesTheSelectionWhetherItIsNeverLate)
{
    const HealthOptions options(house_.house.settings);
    auto &never = find<QCheckBox>("healthNever");
    QTest::keyClick(&never, Qt::Key_Space);
    ASSERT_TRUE(options.isNever({0, 3}));
    house_.house.addCamera({0, 3}, {});
    book_.followTable();
    EXPECT_TRUE(never.isEnabled());
    EXPECT_FALSE(never.isChecked());
    QTest::keyClick(&never, Qt::Key_Space);
    const QString chosen = cell(table().currentIndex().row(), HealthTable::Camera).left(3);
    EXPECT_TRUE(options.isNever(*cameraFromText(chosen)));
}

TEST_F(HealthWindowTest, TellsOfAnotherCameraInTheSameRowWhetherItIsNeverLate)
{
    auto &never = find<QCheckBox>("healthNever");
    QTest::keyClick(&never, Qt::Key_Space);
    const auto replaced = house_.house.settings.change([](SettingsDraft &draft) {
        forgetCamera(draft, {0, 3});
        setUrl(draft, {0, 3}, u"http://other/a.jpg");
    });
    ASSERT_EQ(replaced, SettingsChange::Made);
    book_.followTable();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !never.isChecked(); }));
}

// A command has removed the camera, and the book has not looked at the table since.
TEST_F(HealthWindowTest, ChoosesNothingForACameraThatIsNoLongerThere)
{
    ASSERT_EQ(cell(table().currentIndex().row(), HealthTable::Camera),
              QStringLiteral("0:3 Garage"));
    const auto command = [this](const AdminCommand &asked) {
        const auto none = [](const QString &) { return std::optional<qint64>(); };
        EXPECT_EQ(administer(house_.house.tree.path(), asked, none).status, 0);
        house_.house.engine.adoptSettings(); // as the command has it done
    };
    command(RemoveCommand{{0, 3}});
    QTest::keyClick(&find<QCheckBox>("healthNever"), Qt::Key_Space);
    command(AddCommand{QStringLiteral("http://new/a.jpg"), CameraAddress{0, 3}, {}, {}});
    EXPECT_FALSE(HealthOptions(house_.house.settings).isNever({0, 3})) << "the new camera";
}

// Another camera was put into its row, and the book has not looked at the table since.
TEST_F(HealthWindowTest, ChoosesNothingForACameraThatHasTakenItsRow)
{
    ASSERT_EQ(cell(table().currentIndex().row(), HealthTable::Camera),
              QStringLiteral("0:3 Garage"));
    EXPECT_EQ(house_.house.settings.change([](SettingsDraft &draft) {
        forgetCamera(draft, {0, 3});
        setUrl(draft, {0, 3}, u"http://new/a.jpg");
    }),
              SettingsChange::Made);
    QTest::keyClick(&find<QCheckBox>("healthNever"), Qt::Key_Space);
    EXPECT_FALSE(HealthOptions(house_.house.settings).isNever({0, 3})) << "the new camera";
}

TEST_F(HealthWindowTest, APressChoosesNothingForTheCameraThatIsSelectedMeanwhile)
{
    auto &never = find<QCheckBox>("healthNever");
    const QPoint at(5, never.height() / 2);
    QTest::mousePress(&never, Qt::LeftButton, {}, at);
    house_.house.addCamera({0, 3}, {});
    house_.house.engine.adoptSettings();
    const QString selected = cell(table().currentIndex().row(), HealthTable::Camera).left(3);
    QTest::mouseRelease(&never, Qt::LeftButton, {}, at);
    EXPECT_FALSE(HealthOptions(house_.house.settings).isNever(*cameraFromText(selected)));
    EXPECT_FALSE(never.isChecked());
    QTest::mouseClick(&never, Qt::LeftButton, {}, at);
    EXPECT_TRUE(HealthOptions(house_.house.settings).isNever(*cameraFromText(selected)));
}

TEST_F(HealthWindowTest, StaysInOrderWhenSeveralChangeTogether)
{
    for (int row = 0; row < kCameras; ++row) {
        house_.house.settings.write(QStringLiteral("Camera0%1").arg(row), u"Name",
                                    QStringLiteral("Camera %1").arg(row));
    }
    book_.followTable();
    table().sortByColumn(HealthTable::Failures, Qt::DescendingOrder);
    QSignalSpy shown(table().model(), &QAbstractItemModel::layoutChanged);
    for (const int row : {4, 2, 0, 1}) {
        for (int i = 0; i < 10 - 2 * row; ++i) {
            book_.addFailure({0, row}, QStringLiteral("no answer"));
        }
    }
    EXPECT_TRUE(QTest::qWaitFor([&] { return !shown.isEmpty(); }));
    QStringList order;
    for (int row = 0; row < kCameras; ++row) {
        order.append(cell(row, HealthTable::Failures));
    }
    EXPECT_EQ(order, QStringList({QStringLiteral("10"), QStringLiteral("8"), QStringLiteral("6"),
                                  QStringLiteral("2"), QStringLiteral("1")}));
}

TEST_F(HealthWindowTest, WritesNothingBecauseItIsOpened)
{
    EXPECT_EQ(house_.house.settings.read(u"Health", u"Notices"), QString());
    EXPECT_EQ(house_.house.settings.read(u"Health", u"DeleteOldest"), QString());
    EXPECT_EQ(house_.house.settings.read(u"Health", u"LateTimes"), QString());
    EXPECT_EQ(house_.house.settings.read(u"Health", u"LimitMB"), QString());
}

TEST_F(HealthWindowTest, ItsPartsHaveNamesThatPeopleUnderstand)
{
    for (const char *const name :
         {"healthFilter", "healthTable", "healthRoom", "healthNotices", "healthMail",
          "healthDelete", "healthStop", "healthNever", "healthLateTimes", "healthLimit"}) {
        EXPECT_FALSE(find<QWidget>(name).accessibleName().isEmpty()) << name;
    }
}

TEST_F(HealthWindowTest, ShowsItsTitlesWholeInLargeLetters)
{
    window_.close();
    QFont large = table().font();
    large.setPointSize(2 * large.pointSize());
    large.setBold(true);
    table().horizontalHeader()->setFont(large);
    window_.present();
    for (int column = 0; column < HealthTable::kColumns; ++column) {
        EXPECT_GE(table().columnWidth(column), table().horizontalHeader()->sectionSizeHint(column));
    }
}

TEST_F(HealthWindowTest, OpensAtTheTopOfTheScreenAndStaysWhereItIsMoved)
{
    const QRect room = window_.screen()->availableGeometry();
    EXPECT_EQ(window_.y(), room.top());
    EXPECT_TRUE(room.contains(window_.geometry()));
    window_.move(room.topLeft() + QPoint(3, 70));
    window_.close();
    window_.present();
    EXPECT_EQ(window_.pos(), room.topLeft() + QPoint(3, 70));
}

TEST_F(HealthWindowTest, TheTipOfACellTellsWhatDoesNotFitIntoIt)
{
    const QString reason =
        QStringLiteral("no answer from <a> camera that is far away ").repeated(3).trimmed();
    book_.addFailure({0, 3}, reason);
    window_.present();
    const auto tipOf = [this](int row, HealthTable::Column column) {
        const QPoint place = table().visualRect(table().model()->index(row, column)).center();
        QHelpEvent help(QEvent::ToolTip, place, table().viewport()->mapToGlobal(place));
        QApplication::sendEvent(table().viewport(), &help);
        return QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText();
    };
    table().scrollTo(table().model()->index(0, HealthTable::Failure));
    EXPECT_EQ(tipOf(0, HealthTable::Failure), reason);
    EXPECT_EQ(tipOf(1, HealthTable::Failure), table().toolTip());
    QToolTip::hideText();
}

TEST_F(HealthWindowTest, ChoosesTheFirstRowInAMirroredWindowToo)
{
    window_.close();
    table().setCurrentIndex({});
    window_.setLayoutDirection(Qt::RightToLeft);
    window_.present();
    EXPECT_TRUE(table().selectionModel()->isRowSelected(0));
}

TEST_F(HealthWindowTest, TheTabKeyGoesDownOneColumnOfChoicesAndThenTheOther)
{
    QStringList visited;
    for (int i = 0; i < 9; ++i) {
        visited.append(window_.focusWidget()->objectName());
        QTest::keyClick(window_.focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(visited.join(u' '),
              QStringLiteral("healthTable healthNotices healthMail healthNever healthLateTimes "
                             "healthDelete healthStop healthLimit healthFilter"));
}

TEST_F(HealthWindowTest, EscapeClosesIt)
{
    QTest::keyClick(&window_, Qt::Key_Escape);
    EXPECT_FALSE(window_.isVisible());
}

} // namespace
} // namespace velmora::test
