// Several addresses pasted into an address box: the question, and the rows that they fill.
#include "DroppedText.h"
#include "WindowHouse.h"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

const QString kAskedAgain = QStringLiteral("The rows have changed meanwhile.\n\n"
                                           "2 addresses were pasted. Fill rows 1 to 2?\n\n"
                                           "The address that row 2 has now is overwritten.");

class AddressPasteTest : public testing::Test
{
protected:
    QMessageBox *question() { return house_.window.findChild<QMessageBox *>(); }

    void paste(int row, const QString &text)
    {
        QGuiApplication::clipboard()->setText(text);
        house_.type(QStringLiteral("Source%1").arg(row), QString());
        QTest::keySequence(&house_.find<QLineEdit>(QStringLiteral("Source%1").arg(row)),
                           QKeySequence::Paste);
    }

    void answer(QMessageBox::StandardButton button)
    {
        ASSERT_NE(question(), nullptr);
        QTest::mouseClick(question()->button(button), Qt::LeftButton);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    /// As another program would, of which this one may not have heard.
    void putElsewhere(int row, const QString &url) const
    {
        house_.house.engine.settings().write(u"Liste0", rowKey(u"lst", row), url);
    }

    QString stored(int row) { return house_.stored(u"Liste0", rowKey(u"lst", row)); }

    QString box(int row)
    {
        return house_.find<QLineEdit>(QStringLiteral("Source%1").arg(row)).text();
    }

    bool drop(int row, const QString &text)
    {
        return dropText(house_.find<QLineEdit>(QStringLiteral("Source%1").arg(row)), text);
    }

    WindowHouse house_;

    // Row 2 gets another camera between the first question and its answer.
    void expectAnotherQuestionForAnotherCamera()
    {
        paste(1, QStringLiteral("a\nb"));
        putElsewhere(2, QStringLiteral("http://cam/other.jpg"));
        answer(QMessageBox::Yes);
        EXPECT_EQ(stored(2), QStringLiteral("http://cam/other.jpg"));
        ASSERT_NE(question(), nullptr);
        EXPECT_EQ(question()->text(), kAskedAgain);
    }
};

TEST_F(AddressPasteTest, FillsTheRowAndThoseBelowAfterOneQuestion)
{
    paste(3, QStringLiteral("http://cam/a.jpg\r\n\r\n http://cam/b.jpg \r\nhttp://cam/c.jpg\r\n"));
    ASSERT_NE(question(), nullptr);
    EXPECT_EQ(question()->text(), QStringLiteral("3 addresses were pasted. Fill rows 3 to 5?\n\n"
                                                 "No address is overwritten."));
    EXPECT_EQ(stored(3), QString());
    answer(QMessageBox::Yes);
    EXPECT_EQ(question(), nullptr);
    EXPECT_EQ(stored(3), QStringLiteral("http://cam/a.jpg"));
    EXPECT_EQ(stored(4), QStringLiteral("http://cam/b.jpg"));
    EXPECT_EQ(stored(5), QStringLiteral("http://cam/c.jpg"));
    EXPECT_EQ(box(5), QStringLiteral("http://cam/c.jpg"));
    EXPECT_EQ(stored(6), QString());
}

TEST_F(AddressPasteTest, SaysWhichRowsAreOverwrittenAndWhatFindsNoRow)
{
    house_.house.addCamera({0, 8}, QStringLiteral("http://cam/old.jpg"));
    house_.house.addCamera({0, 9}, QStringLiteral("http://cam/older.jpg"));
    house_.selectTab(0);
    paste(8, QStringLiteral("a\nb\nc\nd"));
    ASSERT_NE(question(), nullptr);
    EXPECT_EQ(question()->text(),
              QStringLiteral("4 addresses were pasted. Fill rows 8 to 9?\n\n"
                             "The addresses that rows 8 and 9 have now are overwritten.\n\n"
                             "2 of them find no row in this group and are left out."));
    EXPECT_EQ(question()->defaultButton(), question()->button(QMessageBox::No));
    answer(QMessageBox::Yes);
    EXPECT_EQ(stored(8), QStringLiteral("a"));
    EXPECT_EQ(stored(9), QStringLiteral("b"));
}

TEST_F(AddressPasteTest, ChangesNothingWhenToldNo)
{
    house_.type(QStringLiteral("Source2"), QStringLiteral("http"));
    paste(2, QStringLiteral("a\nb"));
    answer(QMessageBox::No);
    EXPECT_EQ(box(2), QStringLiteral("http"));
    EXPECT_EQ(box(3), QString());
    EXPECT_EQ(stored(2), QString());
}

TEST_F(AddressPasteTest, AsksAgainWhenARowWasFilledMeanwhile)
{
    paste(1, QStringLiteral("a\nb"));
    putElsewhere(2, QStringLiteral("http://cam/other.jpg"));
    house_.house.page.reread();
    answer(QMessageBox::Yes);
    EXPECT_EQ(stored(1), QString());
    EXPECT_EQ(stored(2), QStringLiteral("http://cam/other.jpg"));
    ASSERT_NE(question(), nullptr);
    EXPECT_EQ(question()->text(), kAskedAgain);
    EXPECT_EQ(question()->defaultButton(), question()->button(QMessageBox::No));
    answer(QMessageBox::No);
    EXPECT_EQ(question(), nullptr);
    EXPECT_EQ(stored(1), QString());
    EXPECT_EQ(box(2), QStringLiteral("http://cam/other.jpg"));
}

TEST_F(AddressPasteTest, AsksAgainWhenARowWasFilledUnheardOf)
{
    expectAnotherQuestionForAnotherCamera();
    answer(QMessageBox::Yes);
    EXPECT_EQ(question(), nullptr);
    EXPECT_EQ(stored(1), QStringLiteral("a"));
    EXPECT_EQ(stored(2), QStringLiteral("b"));
    EXPECT_EQ(box(2), QStringLiteral("b"));
}

TEST_F(AddressPasteTest, AsksAgainWhenAnAddressToBeOverwrittenIsAnotherMeanwhile)
{
    house_.house.addCamera({0, 2}, QStringLiteral("http://cam/old.jpg"));
    house_.selectTab(0);
    expectAnotherQuestionForAnotherCamera();
}

TEST_F(AddressPasteTest, AsksOnceWhenOnlyOtherRowsWereFilledMeanwhile)
{
    house_.type(QStringLiteral("Source1"), QStringLiteral("http"));
    paste(1, QStringLiteral("a\nb"));
    putElsewhere(0, QStringLiteral("http://cam/zero.jpg"));
    putElsewhere(3, QStringLiteral("http://cam/three.jpg"));
    answer(QMessageBox::Yes);
    EXPECT_EQ(question(), nullptr);
    EXPECT_EQ(stored(1), QStringLiteral("a"));
    EXPECT_EQ(stored(2), QStringLiteral("b"));
    EXPECT_EQ(stored(3), QStringLiteral("http://cam/three.jpg"));
}

TEST_F(AddressPasteTest, TheFilledRowIsLeftOnce)
{
    paste(2, QStringLiteral("a\nb"));
    answer(QMessageBox::Yes);
    house_.window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&house_.window));
    house_.leaveBox();
    EXPECT_FALSE(house_.house.tree.exists(u"drives/c/in/a"));
}

TEST_F(AddressPasteTest, ShowsTheLivePictureOfTheFirstAlone)
{
    QStringList wanted;
    QObject::connect(&house_.house.page, &CameraPage::liveViewWanted, &house_.window,
                     [&wanted](CameraAddress, const QString &url) { wanted.append(url); });
    paste(2, QStringLiteral("a\nb\nc"));
    answer(QMessageBox::Yes);
    EXPECT_EQ(wanted, QStringList{QStringLiteral("a")});
}

TEST_F(AddressPasteTest, IsOfferedByTheMenuOfTheBox)
{
    QGuiApplication::clipboard()->setText(QStringLiteral("a\nb"));
    auto &box = house_.find<QLineEdit>(QStringLiteral("Source3"));
    box.setFocus();
    QContextMenuEvent wish(QContextMenuEvent::Keyboard, {5, 5}, box.mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(&box, &wish);
    auto *const menu = box.findChild<QMenu *>();
    ASSERT_NE(menu, nullptr);
    for (QAction *const action : menu->actions()) {
        if (action->text().contains(QStringLiteral("Paste"))) {
            QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
        }
    }
    ASSERT_NE(question(), nullptr);
    EXPECT_TRUE(question()->text().startsWith(QStringLiteral("2 addresses were pasted.")));
    answer(QMessageBox::No);
}

TEST_F(AddressPasteTest, ADropIsOneToo)
{
    EXPECT_TRUE(drop(3, QStringLiteral("http://cam/a.jpg\n")));
    EXPECT_EQ(box(3), QStringLiteral("http://cam/a.jpg"));
    EXPECT_EQ(question(), nullptr);
    EXPECT_TRUE(drop(3, QStringLiteral("a\nb\nc")));
    ASSERT_NE(question(), nullptr);
    EXPECT_TRUE(question()->text().startsWith(QStringLiteral("3 addresses were pasted.")));
    answer(QMessageBox::No);
    EXPECT_EQ(box(3), QStringLiteral("http://cam/a.jpg"));
}

TEST_F(AddressPasteTest, ADroppedAddressIsStoredOnceItsBoxIsLeft)
{
    drop(3, QStringLiteral("http://cam/a.jpg"));
    EXPECT_EQ(stored(3), QString());
    drop(4, QStringLiteral("http://cam/b.jpg"));
    EXPECT_EQ(stored(3), QStringLiteral("http://cam/a.jpg"));
    house_.selectTab(1);
    EXPECT_EQ(stored(4), QStringLiteral("http://cam/b.jpg"));
}

// It is dragged from a window that is active meanwhile, and may stay so.
TEST_F(AddressPasteTest, ADroppedAddressIsStoredThoughTheWindowIsNotActivated)
{
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    drop(3, QStringLiteral("http://cam/a.jpg"));
    house_.house.engine.adoptSettings();
    EXPECT_EQ(box(3), QStringLiteral("http://cam/a.jpg"));
    house_.window.close();
    EXPECT_EQ(stored(3), QStringLiteral("http://cam/a.jpg"));
}

TEST_F(AddressPasteTest, ADroppedAddressIsStoredByTheNextDropThoughTheWindowIsNotActivated)
{
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    drop(3, QStringLiteral("http://cam/a.jpg"));
    drop(4, QStringLiteral("http://cam/b.jpg"));
    EXPECT_EQ(stored(3), QStringLiteral("http://cam/a.jpg"));
    EXPECT_EQ(stored(4), QString());
}

} // namespace
} // namespace velmora::test
