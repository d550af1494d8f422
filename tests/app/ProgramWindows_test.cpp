// Windows of the program's own additions are made when they are first wanted, and are then as much
// a part of it as the others.
#include "ProgramHouse.h"

#include <QLineEdit>
#include <QPlainTextEdit>

namespace velmora::test {
namespace {

const QString kMain = QStringLiteral("Interface");
const QString kBrowser = QStringLiteral("planche");
const QString kSheet = QStringLiteral("CameraSheet");
const QString kList = QStringLiteral("CameraListWindow");
const QString kCalendar = QStringLiteral("calendar");
const QString kKeep = QStringLiteral("filmExport");

class ProgramWindowsOnDemand : public ProgramHouse
{
protected:
    void press(const QString &window, const QString &name, Qt::Key key,
               Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(control(window, name), key, modifiers);
        settle();
    }

    void goTo(const QString &name)
    {
        topLevel(kMain)->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(topLevel(kMain)));
        control(kMain, name)->setFocus();
    }

    void openFromTheFirstRow(Qt::Key key)
    {
        click(kBrowser, QStringLiteral("cSetUp"));
        goTo(QStringLiteral("Source0"));
        press(kMain, QStringLiteral("Source0"), key);
    }

    [[nodiscard]] QString box(const QString &window, const QString &name)
    {
        return qobject_cast<QLineEdit *>(control(window, name))->text();
    }
};

TEST_F(ProgramWindowsOnDemand, AreNotMadeByTheStart)
{
    start();
    for (const QString &name : {kSheet, kList, kCalendar, kKeep, QStringLiteral("health")}) {
        EXPECT_EQ(topLevel(name), nullptr) << name.toStdString();
    }
}

TEST_F(ProgramWindowsOnDemand, AreMadeOnce)
{
    start();
    click(kBrowser, QStringLiteral("bCalendar"));
    const QWidget *const made = topLevel(kCalendar);
    topLevel(kCalendar)->close();
    click(kBrowser, QStringLiteral("bCalendar"));
    EXPECT_EQ(topLevel(kCalendar), made);
    EXPECT_TRUE(isVisible(kCalendar));
}

TEST_F(ProgramWindowsOnDemand, TheRowShowsWhatTheSheetHasStored)
{
    start();
    openFromTheFirstRow(Qt::Key_F4);
    ASSERT_TRUE(isVisible(kSheet));
    qobject_cast<QLineEdit *>(control(kSheet, QStringLiteral("sheetName")))
        ->setText(QStringLiteral("Yard"));
    click(kSheet, QStringLiteral("sheetSave"));
    EXPECT_TRUE(
        control(kMain, QStringLiteral("Source0"))->toolTip().contains(QStringLiteral("0:0 Yard")));
}

TEST_F(ProgramWindowsOnDemand, TheRowTakesTheAddressOfTheSheet)
{
    start();
    openFromTheFirstRow(Qt::Key_F4);
    qobject_cast<QLineEdit *>(control(kSheet, QStringLiteral("sheetAddress")))
        ->setText(QStringLiteral("http://cam/b.png"));
    click(kSheet, QStringLiteral("sheetSave"));
    EXPECT_EQ(box(kMain, QStringLiteral("Source0")), QStringLiteral("http://cam/b.png"));
}

TEST_F(ProgramWindowsOnDemand, TheRowsShowTheCamerasOfAList)
{
    start();
    openFromTheFirstRow(Qt::Key_F6);
    ASSERT_TRUE(isVisible(kList));
    qobject_cast<QPlainTextEdit *>(control(kList, QStringLiteral("listText")))
        ->setPlainText(QStringLiteral("http://cam/c.png\n"));
    click(kList, QStringLiteral("listStore"));
    EXPECT_EQ(box(kMain, QStringLiteral("Source1")), QStringLiteral("http://cam/c.png"));
}

// What is being typed into a row counts before the list finds rows for its cameras.
TEST_F(ProgramWindowsOnDemand, AListIsStoredAfterWhatIsBeingTyped)
{
    start();
    openFromTheFirstRow(Qt::Key_F6);
    qobject_cast<QPlainTextEdit *>(control(kList, QStringLiteral("listText")))
        ->setPlainText(QStringLiteral("http://cam/c.png\n"));
    goTo(QStringLiteral("Source1"));
    QTest::keyClicks(control(kMain, QStringLiteral("Source1")), QStringLiteral("http://cam/d.png"));
    click(kList, QStringLiteral("listStore"));
    EXPECT_EQ(SettingsFile(tree_.path()).read(u"Liste0", u"lst1"),
              QStringLiteral("http://cam/d.png"));
}

TEST_F(ProgramWindowsOnDemand, AFilmTakesTheDaysOfTheCalendar)
{
    for (const QString &name :
         {QStringLiteral("20060301_1000000110.png"), QStringLiteral("20060304_1000000110.png")}) {
        tree_.write(QStringLiteral("drives/c/in/http%3A%2F%2Fcam%2Fa%2Epng/") + name, "picture");
    }
    start();
    click(kBrowser, QStringLiteral("bKeep"));
    ASSERT_TRUE(isVisible(kKeep));
    click(kBrowser, QStringLiteral("bCalendar"));
    press(kCalendar, QStringLiteral("calendarDays"), Qt::Key_Home);
    press(kCalendar, QStringLiteral("calendarDays"), Qt::Key_End, Qt::ShiftModifier);
    EXPECT_EQ(box(kKeep, QStringLiteral("filmFrom")), QStringLiteral("2006-03-01"));
    EXPECT_EQ(box(kKeep, QStringLiteral("filmTo")), QStringLiteral("2006-03-04"));
}

} // namespace
} // namespace velmora::test
