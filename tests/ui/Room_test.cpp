// Windows in large letters, and texts longer than their place.
#include "BrowserWindowHouse.h"
#include "WindowHouse.h"
#include "support/LoopbackCameraAnswers.h"
#include "ui/CameraSheet.h"
#include "ui/ContactSheet.h"
#include "ui/ListBoxes.h"
#include "view/CameraTrial.h"

#include <QApplication>
#include <QHelpEvent>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QToolTip>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

constexpr int kLarge = 16; // points

// As a user chooses them for all programs.
class Letters
{
public:
    explicit Letters(int points)
    {
        QFont chosen = usual_;
        chosen.setPointSize(points);
        QApplication::setFont(chosen);
    }

    Q_DISABLE_COPY_MOVE(Letters)

    ~Letters() { QApplication::setFont(usual_); }

private:
    QFont usual_ = QApplication::font();
};

// The tip that the pointer brings up there; empty for none.
QString tipAt(QWidget &widget, QPoint place)
{
    QToolTip::hideText();
    QHelpEvent help(QEvent::ToolTip, place, widget.mapToGlobal(place));
    QApplication::sendEvent(&widget, &help);
    QString tip = QToolTip::text();
    QToolTip::hideText();
    return tip;
}

class LargeLettersTest : public testing::Test
{
    Letters letters_{kLarge};
};

class LargeBrowser : public LargeLettersTest
{
protected:
    LargeBrowser() { house_.openOn(3); }

    ContactSheet &sheet() { return house_.find<ContactSheet>(QStringLiteral("contactSheet")); }

    void resizeSheet(QSize size)
    {
        house_.window.resize(house_.window.size() + size - sheet().size());
        house_.settle();
    }

    BrowserWindowHouse house_;
};

TEST_F(LargeBrowser, ShowsTheNamesOfImagesWhole)
{
    for (const int side : {720, 500, 1100, 432}) {
        resizeSheet({side, side});
        auto &list = house_.find<FileView>(QStringLiteral("LstDir"));
        if (side >= 720) {
            EXPECT_LE(list.sizeHintForColumn(0), list.viewport()->width()) << side;
        }
        for (const char *const name : {"lstGroupe", "lstCam"}) {
            auto &choices = house_.find<ChoiceList>(QString::fromLatin1(name));
            EXPECT_EQ(choices.verticalScrollBar()->maximum(), 0) << side << name;
        }
    }
}

TEST_F(LargeBrowser, ShowsTheWholeForecastOfTheDisk)
{
    auto &room = house_.find<QLabel>(QStringLiteral("diskRoom"));
    house_.window.showRoom(QStringLiteral("66.66 GiB free, full in 88 days at this rate"));
    for (const int side : {720, 500, 1100, 432}) {
        resizeSheet({side, side});
        EXPECT_LE(room.heightForWidth(room.width()), room.height()) << side;
    }
}

TEST_F(LargeBrowser, HasTheUsersLettersWhereThereIsRoom)
{
    auto &controls = house_.find<QWidget>(QStringLiteral("controls"));
    resizeSheet({720, 720});
    EXPECT_LT(controls.font().pointSizeF(), kLarge);
    resizeSheet({1600, 1600});
    EXPECT_EQ(controls.font().pointSizeF(), kLarge);
}

TEST_F(LargeBrowser, ItsButtonsAtTheFootAreAsHighAsTheirLetters)
{
    for (const char *const name : {"bKeep", "bCalendar", "bHealth"}) {
        auto &button = house_.find<QAbstractButton>(QString::fromLatin1(name));
        EXPECT_GE(button.height(), button.fontMetrics().height()) << name;
    }
}

TEST_F(LargeBrowser, ItsFilmShowsTheDaysWhole)
{
    house_.filmWindow.show();
    for (const char *const name : {"tDebut", "tFin"}) {
        const auto &box = house_.find<QLineEdit>(QString::fromLatin1(name));
        EXPECT_GT(box.width(), box.fontMetrics().horizontalAdvance(QStringLiteral("20060307")) + 8)
            << name;
    }
}

TEST_F(LargeLettersTest, TheMainWindowFitsOnAScreenOf1280Pixels)
{
    constexpr int kFrames = 16;
    WindowHouse house;
    EXPECT_LE(house.window.minimumSizeHint().width(), 1280 - kFrames);
}

// In letters of 10 points, a line of text is higher than an empty one.
TEST(UsualLetters, OfTextsThatComeLeaveTheRowsWhereTheyAre)
{
    const Letters letters(10);
    WindowHouse house;
    const auto &rows = house.find<QScrollArea>(QStringLiteral("pageArea"));
    const int height = rows.height();
    for (const char *const label : {"Locale", "lWeb", "lReason", "lTest", "lMessage"}) {
        house.find<QLabel>(QString::fromLatin1(label)).setText(QStringLiteral("Text"));
        QCoreApplication::sendPostedEvents();
        EXPECT_EQ(rows.height(), height) << label;
        EXPECT_FALSE(rows.verticalScrollBar()->isVisible()) << label;
    }
}

class SheetRoom : public testing::Test
{
protected:
    SheetRoom()
    {
        house_.house.addCamera(kCamera, kUrl);
        answer("A very long title ", QStringLiteral("Tue, 07 Mar 2006 14:05:09 GMT"));
        sheet_.present(kCamera);
        test();
    }

    void answer(const QByteArray &word, const QString &date)
    {
        house_.source.answer(
            kUrl, {"<html><title>" + word.repeated(6) + "</title>" + QByteArray(2000, 'x'),
                   date,
                   QStringLiteral("text/html"),
                   {},
                   {}});
    }

    void test()
    {
        QSignalSpy ended(&house_.house.view.trial(), &CameraTrial::ended);
        QTest::mouseClick(sheet_.findChild<QPushButton *>(QStringLiteral("sheetTest")),
                          Qt::LeftButton);
        EXPECT_TRUE(ended.wait(5000));
        QCoreApplication::processEvents();
    }

    QWidget &part(const char *name) { return *sheet_.findChild<QWidget *>(QLatin1String(name)); }

    static constexpr CameraAddress kCamera{0, 3};
    const QString kUrl = QStringLiteral("http://cam/x.jpg");
    WindowHouse house_;
    CameraSheet sheet_{house_.house.settings, house_.house.view.trial()};
};

class LargeSheetRoom : private Letters, public SheetRoom
{
protected:
    LargeSheetRoom()
        : Letters(kLarge)
    {
    }
};

TEST_F(LargeSheetRoom, ShowsTheWholeResultOfATest)
{
    const QWidget &result = part("sheetResult");
    EXPECT_LE(result.heightForWidth(result.width()), result.height());
}

TEST_F(SheetRoom, ShowsTheWholeResultOfATest)
{
    const QWidget &result = part("sheetResult");
    EXPECT_LE(result.heightForWidth(result.width()), result.height());
    sheet_.resize(sheet_.minimumWidth(), sheet_.height());
    QCoreApplication::processEvents();
    EXPECT_LE(result.heightForWidth(result.width()), result.height());
}

TEST_F(SheetRoom, StaysOnTheScreenWhateverACameraAnswers)
{
    const QSize usual = sheet_.minimumSizeHint();
    answer("A very long title ", QStringLiteral("date ").repeated(600));
    test();
    EXPECT_LE(sheet_.minimumSizeHint().height(), 2 * usual.height());
    answer(QByteArray(80, 'W'), QString(3000, u'W'));
    test();
    EXPECT_LE(sheet_.minimumSizeHint().width(), usual.width());
}

TEST_F(SheetRoom, KeepsItsBoxesTogetherWhenItIsMaximised)
{
    const int usual = part("sheetKeep").y();
    sheet_.resize(1200, 900);
    QCoreApplication::processEvents();
    EXPECT_EQ(part("sheetKeep").y(), usual);
    EXPECT_LT(part("sheetResult").y(), usual + 120);
}

TEST(ListWithTheKeyboard, IsOutlinedOnALightGroundAndOnADarkOne)
{
    BrowserWindowHouse house;
    house.openOn(3);
    house.window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&house.window));
    const QPalette light = QApplication::palette();
    QPalette dark = light;
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::Text, QColor(238, 238, 236));
    dark.setColor(QPalette::Highlight, QColor(21, 83, 158));
    for (const QPalette &palette : {light, dark}) {
        for (const char *const name : {"lstGroupe", "lstCam", "LstDir"}) {
            auto &list = house.find<QListView>(QString::fromLatin1(name));
            list.setPalette(palette);
            list.setFocus(Qt::TabFocusReason);
            ASSERT_TRUE(list.hasFocus());
            const auto edge = [&list] { return list.grab().toImage().pixelColor(0, 60); };
            const QColor with = edge();
            house.find<QWidget>(QStringLiteral("bFilm")).setFocus();
            EXPECT_NE(with, edge()) << name;
            const int ground = qGray(palette.color(QPalette::Base).rgb());
            EXPECT_GT(std::abs(qGray(with.rgb()) - ground), 90) << name;
        }
    }
}

// At the middle of each edge, on a display of that many pixels to one of the window.
QList<QColor> edgesOf(QWidget &widget, double scale)
{
    QPixmap shown((QSizeF(widget.size()) * scale).toSize());
    shown.setDevicePixelRatio(scale);
    widget.render(&shown);
    const QImage image = shown.toImage();
    const int right = image.width() - 1;
    const int bottom = image.height() - 1;
    return {image.pixelColor(0, bottom / 2), image.pixelColor(right, bottom / 2),
            image.pixelColor(right / 2, 0), image.pixelColor(right / 2, bottom)};
}

TEST(ListWithTheKeyboard, IsOutlinedOnAllSidesOfAScaledDisplay)
{
    BrowserWindowHouse house;
    house.openOn(3);
    house.window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&house.window));
    auto &list = house.find<QListView>(QStringLiteral("LstDir"));
    for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        list.setFocus(Qt::TabFocusReason);
        const QList<QColor> with = edgesOf(list, scale);
        house.find<QWidget>(QStringLiteral("bFilm")).setFocus();
        const QList<QColor> without = edgesOf(list, scale);
        for (int edge = 0; edge < 4; ++edge) {
            EXPECT_NE(with.at(edge), without.at(edge)) << scale << ' ' << edge;
            EXPECT_EQ(with.at(edge), with.front()) << scale << ' ' << edge;
        }
    }
}

TEST(LongText, IsInTheTipOfAListThatElidesIt)
{
    BrowserWindowHouse house;
    const QString name =
        QStringLiteral("20060310 the longest name of all pictures that were ever brought in.jpg");
    house.openOn(3);
    house.house.putImage({0, 0}, name);
    house.browser.chooseCameraAgain();
    house.settle();
    auto &list = house.find<FileView>(QStringLiteral("LstDir"));
    const auto tipOf = [&](int row) {
        const QRect place = list.visualRect(list.model()->index(row, 0));
        return tipAt(*list.viewport(), place.center());
    };
    EXPECT_EQ(tipOf(list.model()->rowCount() - 1), name);
    EXPECT_EQ(tipOf(0), list.toolTip());
}

TEST(LongText, IsInTheTipOfTheLineAboutTheCapture)
{
    WindowHouse house;
    house.window.show();
    auto &line = house.find<QLabel>(QStringLiteral("lTest"));
    const QString usual = QStringLiteral("Test http://cam/");
    line.setText(usual);
    EXPECT_EQ(tipAt(line, line.rect().center()), QString());
    const QString address = usual + QString(300, u'x');
    line.setText(address);
    EXPECT_EQ(tipAt(line, line.rect().center()), address);
}

} // namespace
} // namespace velmora::test
