// The storage folder across all windows: typed in one, waited for in the others.
#include "ProgramHouse.h"
#include "support/StoredPictures.h"

#include <QAbstractButton>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

class ProgramStorage : public ProgramHouse
{
protected:
    QLineEdit &box()
    {
        return *qobject_cast<QLineEdit *>(
            control(QStringLiteral("Interface"), QStringLiteral("StRep")));
    }

    QString browserLine() { return text(QStringLiteral("planche"), QStringLiteral("txtLog")); }

    void bringUp(const QString &window)
    {
        topLevel(window)->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(topLevel(window)));
        settle();
    }

    void openSetup()
    {
        click(QStringLiteral("planche"), QStringLiteral("cSetUp"));
        bringUp(QStringLiteral("Interface"));
    }

    void type(const QString &folder)
    {
        QTest::mouseClick(&box(), Qt::LeftButton);
        box().selectAll();
        QTest::keyClicks(&box(), folder);
        settle();
    }

    void tickSoon()
    {
        engine_->scheduler().setTickCounter(59);
        engine_->launch(engine_->scheduler().Timer_Timer());
        clock_.advance(3s);
    }

    bool timerRuns() { return engine_->timer().isActive(); }

    static QList<QMessageBox *> messageBoxes()
    {
        QList<QMessageBox *> boxes;
        for (QWidget *const widget : QApplication::topLevelWidgets()) {
            if (auto *const box = qobject_cast<QMessageBox *>(widget)) {
                boxes.append(box);
            }
        }
        return boxes;
    }

    [[nodiscard]] QDir in() const { return QDir(tree_.path(u"drives/c/in")); }
};

TEST_F(ProgramStorage, ThatIsHalfTypedIsWaitedForBehindTheBrowserWhichSaysSo)
{
    tree_.makeFolder(u"drives/c/i");
    start();
    openSetup();
    type(QStringLiteral("C:\\i"));
    bringUp(QStringLiteral("planche"));
    EXPECT_TRUE(browserLine().contains(QStringLiteral("waits for the storage folder")));
    tickSoon();
    EXPECT_EQ(tree_.folders(u"drives/c/i"), QStringList());
    EXPECT_FALSE(timerRuns());
    bringUp(QStringLiteral("Interface"));
    QTest::keyClick(&box(), Qt::Key_Return);
    tickSoon();
    EXPECT_EQ(tree_.folders(u"drives/c/i").size(), 2) << "the camera's and the work folder";
    EXPECT_FALSE(browserLine().contains(QStringLiteral("waits")));
}

TEST_F(ProgramStorage, BoxWithTheOldTextDoesNotHoldTheCaptureBehindTheBrowser)
{
    start();
    openSetup();
    QTest::mouseClick(&box(), Qt::LeftButton);
    EXPECT_FALSE(timerRuns());
    bringUp(QStringLiteral("planche"));
    EXPECT_TRUE(timerRuns());
}

TEST_F(ProgramStorage, DeletesNoImageWhileItIsTyped)
{
    start();
    openSetup();
    type(QStringLiteral("C:\\i"));
    bringUp(QStringLiteral("planche"));
    QWidget *const list = control(QStringLiteral("planche"), QStringLiteral("LstDir"));
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Delete);
    EXPECT_EQ(topLevel(QStringLiteral("planche"))->findChild<QMessageBox *>(), nullptr);
    EXPECT_TRUE(browserLine().contains(QStringLiteral("waits")));
}

TEST_F(ProgramStorage, ThatIsGoneIsReportedByTheBrowser)
{
    start();
    ASSERT_TRUE(in().rename(in().path(), tree_.path(u"drives/c/away")));
    clock_.advance(3s);
    EXPECT_EQ(browserLine(), QStringLiteral("The capture has stopped: the storage folder C:\\in\\ "
                                            "is not there"));
    ASSERT_TRUE(in().rename(tree_.path(u"drives/c/away"), in().path()));
    clock_.advance(3s);
    EXPECT_FALSE(browserLine().contains(QStringLiteral("stopped")));
    EXPECT_TRUE(timerRuns());
}

TEST_F(ProgramStorage, WhoseChoiceIsRefusedSaysWhyWhenTheDialogIsGone)
{
    tree_.makeFolder(u"drives/c/My Pics");
    start();
    openSetup();
    click(QStringLiteral("Interface"), QStringLiteral("Browse"));
    auto *const dialog = topLevel(QStringLiteral("Interface"))->findChild<QFileDialog *>();
    ASSERT_TRUE(QTest::qWaitForWindowActive(dialog));
    auto *const name = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    name->setText(tree_.path(u"drives/c/My Pics"));
    QTest::keyClick(name, Qt::Key_Return);
    settle();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(topLevel(QStringLiteral("Interface"))->findChild<QFileDialog *>(), nullptr);
    const QList<QMessageBox *> boxes = messageBoxes();
    ASSERT_EQ(boxes.size(), 1);
    EXPECT_TRUE(boxes.first()->text().contains(QStringLiteral("blank")));
}

TEST_F(ProgramStorage, IsNotCalledGoneOnceItIsBack)
{
    start();
    ASSERT_TRUE(in().rename(in().path(), tree_.path(u"drives/c/away")));
    clock_.advance(11s);
    EXPECT_TRUE(browserLine().contains(QStringLiteral("is gone"))) << "as all are told of it";
    ASSERT_TRUE(in().rename(tree_.path(u"drives/c/away"), in().path()));
    clock_.advance(3s);
    EXPECT_FALSE(browserLine().contains(QStringLiteral("gone")));
}

TEST_F(ProgramStorage, IsNotCalledGoneWhileItIsTyped)
{
    start();
    openSetup();
    type(QStringLiteral("C:\\none"));
    clock_.advance(12s);
    EXPECT_TRUE(browserLine().contains(QStringLiteral("waits for the storage folder")))
        << browserLine().toStdString();
    QTest::keyClick(&box(), Qt::Key_Return);
    clock_.advance(6s);
    EXPECT_EQ(browserLine(),
              QStringLiteral("There is no storage folder C:\\none\\; nothing is stored."));
}

TEST_F(ProgramStorage, IsTheFolderInForceWhenTheProgramEndsWithAnEmptiedBox)
{
    start();
    openSetup();
    QTest::mouseClick(&box(), Qt::LeftButton);
    box().selectAll();
    QTest::keyClick(&box(), Qt::Key_Delete);
    end();
    EXPECT_TRUE(tree_.read(u"Velmora.ini").contains("StRep=C:\\in\\\r\n"));
}

TEST_F(ProgramStorage, RunsTheTickOfTheStartOnceShortNamesAreRenamed)
{
    const QString folder = QStringLiteral("drives/c/in/http%3A%2F%2Fcam%2Fa%2Epng/");
    for (int i = 0; i < 9; ++i) {
        tree_.write(QString(folder + QStringLiteral("20060307_14050%1.jpg").arg(i)), "x");
    }
    start();
    clock_.advance(1s);
    EXPECT_EQ(source_.requested().size(), 1);
    EXPECT_EQ(engine_->scheduler().ticksLeft(), 4);
}

} // namespace
} // namespace velmora::test
