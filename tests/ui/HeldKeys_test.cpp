// Keys that are held down: what they do they do once.
#include "BrowserWindowHouse.h"
#include "WindowHouse.h"
#include "ui/CameraListWindow.h"

#include <QFileDialog>
#include <QPlainTextEdit>
#include <QPushButton>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

constexpr int kRepeats = 5; // an odd number: with the first press, a switch would be back

const QString kSpace = QStringLiteral(" ");
const QString kEnter = QStringLiteral("\r");

void press(QWidget &widget, Qt::Key key, const QString &text = {})
{
    QTest::simulateEvent(&widget, true, key, Qt::NoModifier, text, false);
}

void repeat(QWidget &widget, Qt::Key key, const QString &text = {})
{
    QTest::simulateEvent(&widget, true, key, Qt::NoModifier, text, true);
}

void hold(QWidget &widget, Qt::Key key, const QString &text)
{
    press(widget, key, text);
    for (int i = 0; i < kRepeats; ++i) {
        repeat(widget, key, text);
    }
    QTest::simulateEvent(&widget, false, key, Qt::NoModifier, text, false);
}

TEST(HeldKeys, SpaceOnAFolderLinkOpensItOnce)
{
    WindowHouse house;
    house.house.addCamera({0, 6}, QStringLiteral("a1"));
    house.house.tree.makeFolder(house.house.folder({0, 6}));
    hold(house.find<QWidget>(QStringLiteral("n6")), Qt::Key_Space, kSpace);
    EXPECT_EQ(house.opener.opened.size(), 1);
}

TEST(HeldKeys, EnterInAnAddressFetchesOnce)
{
    WindowHouse house;
    house.retype(QStringLiteral("Source0"), QStringLiteral("http://cam/0.jpg"));
    house.clock.advance(std::chrono::seconds(10));
    const qsizetype before = house.source.requested().size();
    hold(house.find<QWidget>(QStringLiteral("Source0")), Qt::Key_Return, kEnter);
    house.clock.advance(std::chrono::seconds(10));
    EXPECT_EQ(house.source.requested().size(), before + 1);
}

TEST(HeldKeys, SpacePausesTheFilm)
{
    BrowserWindowHouse house;
    house.addImages({0, 0}, 12);
    house.open();
    house.click(QStringLiteral("bFilm"));
    house.holdFilm();
    const auto &button = house.find<QPushButton>(QStringLiteral("PauseCine"));
    ASSERT_EQ(button.text(), QStringLiteral("Pause"));
    hold(house.filmWindow, Qt::Key_Space, kSpace);
    EXPECT_EQ(button.text(), QStringLiteral("Start"));
    hold(house.find<QWidget>(QStringLiteral("LstDir")), Qt::Key_Space, kSpace);
    EXPECT_EQ(button.text(), QStringLiteral("Pause"));
}

TEST(HeldKeys, EnterInTheListEnlargesTheImage)
{
    BrowserWindowHouse house;
    house.openOn(5);
    hold(house.find<QWidget>(QStringLiteral("LstDir")), Qt::Key_Return, kEnter);
    EXPECT_TRUE(house.find<QWidget>(QStringLiteral("ZoomImage")).isVisible());
}

TEST(HeldKeys, EscapeClosesWhatIsInFrontAndNotTheWindowBehind)
{
    WindowHouse house;
    CameraListWindow window(house.house.settings);
    window.present();
    auto &text = *window.findChild<QPlainTextEdit *>();
    text.setPlainText(QStringLiteral("http://cam/0.jpg"));
    window.findChild<QPushButton *>(QStringLiteral("listOpen"))->click();
    QWidget &dialog = *window.findChild<QFileDialog *>();
    press(dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    repeat(window, Qt::Key_Escape);
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(text.toPlainText(), QStringLiteral("http://cam/0.jpg"));
    press(window, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
}

} // namespace
} // namespace velmora::test
