// The program from start-up to its end: which windows are shown, and the order of events.
#include "ProgramHouse.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QLineEdit>
#include <QTabBar>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

class ProgramTest : public ProgramHouse
{
};

TEST_F(ProgramTest, ShowsTheImagesWhenTheStorageIsThere)
{
    start();
    EXPECT_TRUE(isVisible(QStringLiteral("planche")));
    EXPECT_FALSE(isVisible(QStringLiteral("Interface")));
    EXPECT_TRUE(isVisible(QStringLiteral("frmSplash")));
}

TEST_F(ProgramTest, ShowsTheMainWindowWithItsRowsWhenTheStorageIsMissing)
{
    writeSettings("StRep=C:\\none\\\r\nSelecteur=0\r\n");
    start();
    EXPECT_TRUE(isVisible(QStringLiteral("Interface")));
    EXPECT_EQ(topLevel(QStringLiteral("Interface"))
                  ->findChild<QLineEdit *>(QStringLiteral("Source0"))
                  ->text(),
              QStringLiteral("http://cam/a.png"));
    EXPECT_FALSE(tree_.exists(u"drives/c/none"));
    EXPECT_TRUE(source_.requested().isEmpty());
}

TEST_F(ProgramTest, ShowsTheImagesBesideTheMainWindowWhenTheStorageIsMissing)
{
    writeSettings("StRep=C:\\none\\\r\n");
    start();
    EXPECT_TRUE(isVisible(QStringLiteral("planche")));
}

TEST_F(ProgramTest, PutsTheStartBoxOnTopForOneTurnOfTheLoop)
{
    engine_ = std::make_unique<CaptureEngine>(tree_.path(), clock_, source_);
    program_ = std::make_unique<Program>(*engine_, opener_, mail_);
    const auto isOnTop = [] {
        return topLevel(QStringLiteral("frmSplash"))->windowFlags() & Qt::WindowStaysOnTopHint;
    };
    program_->start();
    EXPECT_TRUE(isVisible(QStringLiteral("frmSplash")));
    EXPECT_TRUE(isOnTop());
    settle();
    EXPECT_TRUE(isVisible(QStringLiteral("frmSplash")));
    EXPECT_FALSE(isOnTop());
}

TEST_F(ProgramTest, ShowsTheStoredOptions)
{
    writeSettings("StRep=C:\\in\r\nDebug=1\r\nTempo=7\r\nTIO=9.0\r\nSelecteur=3\r\n"
                  "[Liste3]\r\nLstAct=1\r\n");
    start();
    const QWidget *const window = topLevel(QStringLiteral("Interface"));
    const auto box = [window](const QString &name) {
        return window->findChild<QLineEdit *>(name)->text();
    };
    const auto isChecked = [window](const QString &name) {
        return window->findChild<QCheckBox *>(name)->isChecked();
    };
    EXPECT_EQ(box(QStringLiteral("StRep")), QStringLiteral("C:\\in\\"));
    EXPECT_EQ(box(QStringLiteral("tempo")), QStringLiteral("7"));
    EXPECT_EQ(box(QStringLiteral("TIO")), QStringLiteral("9"));
    EXPECT_EQ(window->findChild<QTabBar *>(QStringLiteral("Selecteur"))->currentIndex(), 3);
    EXPECT_TRUE(isChecked(QStringLiteral("cDebug")));
    EXPECT_TRUE(isChecked(QStringLiteral("ActLst")));
}

TEST_F(ProgramTest, AFreshInstallationHasTheDefaults)
{
    tree_.write(u"Velmora.ini", "");
    start();
    QWidget *const window = topLevel(QStringLiteral("Interface"));
    EXPECT_EQ(window->findChild<QLineEdit *>(QStringLiteral("StRep"))->text(),
              QStringLiteral("C:\\in\\"));
    EXPECT_EQ(window->findChild<QLineEdit *>(QStringLiteral("tempo"))->text(), QStringLiteral("1"));
    EXPECT_EQ(window->findChild<QLineEdit *>(QStringLiteral("TIO"))->text(), QStringLiteral("5"));
    EXPECT_EQ(window->findChild<QTabBar *>(QStringLiteral("Selecteur"))->currentIndex(), 0);
    EXPECT_FALSE(engine_->log().isOn());
    EXPECT_EQ(tree_.read(u"Velmora.ini"), QByteArray("[Control]\r\nlstImg=0\r\n"));
}

TEST_F(ProgramTest, LogsItsStartInOrder)
{
    start();
    const QStringList lines = logLines();
    const qsizetype load =
        lines.indexOf(QStringLiteral("********* Interface Form Load ***************"));
    const qsizetype init = lines.indexOf(QStringLiteral("Fin Init"));
    const qsizetype check = lines.indexOf(QStringLiteral("Interface TestSA"));
    const qsizetype capture = lines.indexOf(QStringLiteral("<-Interface ChargeFile->"));
    EXPECT_EQ(load, 0);
    EXPECT_LT(load, init);
    EXPECT_LT(init, check);
    EXPECT_LT(check, capture);
}

TEST_F(ProgramTest, RunsOneTickAtOnce)
{
    start();
    EXPECT_EQ(source_.requested().size(), 1);
    EXPECT_EQ(engine_->scheduler().ticksLeft(), 4);
    EXPECT_EQ(text(QStringLiteral("planche"), QStringLiteral("NbCapt")), QStringLiteral("1"));
}

TEST_F(ProgramTest, CapsTheBrowsersPlace)
{
    writeSettings("StRep=C:\\in\\\r\nPlanche.Top=9000\r\nPlanche.Left=150\r\n");
    start();
    EXPECT_EQ(topLevel(QStringLiteral("planche"))->pos(), QPoint(10, 22));
}

TEST_F(ProgramTest, CapsTheSlideshowsPlace)
{
    writeSettings("StRep=C:\\in\\\r\nfCine.Top=9000\r\nfCine.left=-150\r\n");
    start();
    EXPECT_EQ(topLevel(QStringLiteral("fCine"))->pos(), QPoint(-10, 415));
}

TEST_F(ProgramTest, ANumberOutOfRangeIsReportedOnceAndTheDefaultHolds)
{
    writeSettings("StRep=C:\\in\\\r\nPlanche.Top=99999\r\nSelecteur=70000\r\n");
    start();
    int boxes = 0;
    for (QWidget *const widget : QApplication::topLevelWidgets()) {
        auto *const box = qobject_cast<QMessageBox *>(widget);
        boxes += box != nullptr && box->isVisible() ? 1 : 0;
        EXPECT_TRUE(box == nullptr || box->text().contains(QStringLiteral("Planche.Top=99999")))
            << qPrintable(box->text());
    }
    EXPECT_EQ(boxes, 1);
    EXPECT_EQ(
        qobject_cast<QTabBar *>(control(QStringLiteral("Interface"), QStringLiteral("Selecteur")))
            ->currentIndex(),
        0);
}

TEST_F(ProgramTest, SetupShowsTheMainWindowAndOkGoesBack)
{
    start();
    QTest::mouseClick(
        topLevel(QStringLiteral("planche"))->findChild<QWidget *>(QStringLiteral("cSetUp")),
        Qt::LeftButton);
    EXPECT_TRUE(isVisible(QStringLiteral("Interface")));
    topLevel(QStringLiteral("planche"))->hide();
    QTest::mouseClick(
        topLevel(QStringLiteral("Interface"))->findChild<QWidget *>(QStringLiteral("Cache")),
        Qt::LeftButton);
    EXPECT_FALSE(isVisible(QStringLiteral("Interface")));
    EXPECT_TRUE(isVisible(QStringLiteral("planche")));
}

TEST_F(ProgramTest, ClosingTheBrowserBesideTheMainWindowOnlyHidesIt)
{
    start();
    topLevel(QStringLiteral("Interface"))->show();
    topLevel(QStringLiteral("planche"))->close();
    settle();
    EXPECT_FALSE(isVisible(QStringLiteral("planche")));
    EXPECT_TRUE(isVisible(QStringLiteral("Interface")));
    EXPECT_FALSE(isVisible(QStringLiteral("frmQuitte")));
}

TEST_F(ProgramTest, TheLastPassLoadsFixedCamerasBehindTheClosingBox)
{
    start();
    source_.answer(
        QStringLiteral("http://cam/a.png"),
        {QByteArray(2000, 'y'), QStringLiteral("Tue, 07 Mar 2006 14:06:09 GMT"), {}, 2000ms, {}});
    topLevel(QStringLiteral("planche"))->close();
    settle();
    EXPECT_TRUE(isVisible(QStringLiteral("frmQuitte")));
    EXPECT_FALSE(isVisible(QStringLiteral("planche")));
    EXPECT_EQ(source_.requested().size(), 2);
    clock_.advance(2s);
    ended_ = true;
    EXPECT_FALSE(isVisible(QStringLiteral("frmQuitte")));
    EXPECT_EQ(engine_->settings().read(u"Groupe0", u"lNew0"), QStringLiteral("2"));
    EXPECT_FALSE(engine_->timer().isActive());
}

TEST_F(ProgramTest, AKeyInTheClosingBoxGivesTheLastPassUp)
{
    start();
    source_.answer(
        QStringLiteral("http://cam/a.png"),
        {QByteArray(2000, 'y'), QStringLiteral("Tue, 07 Mar 2006 14:06:09 GMT"), {}, 4000ms, {}});
    topLevel(QStringLiteral("planche"))->close();
    settle();
    ASSERT_TRUE(isVisible(QStringLiteral("frmQuitte")));
    QTest::keyClick(topLevel(QStringLiteral("frmQuitte")), Qt::Key_Escape);
    settle();
    ended_ = true;
    EXPECT_EQ(source_.stopped().size(), 1);
    EXPECT_EQ(engine_->settings().read(u"Groupe0", u"lNew0"), QStringLiteral("1"));
    EXPECT_EQ(engine_->settings().read(u"Groupe0", u"SB0"), QStringLiteral("65280"));
}

TEST_F(ProgramTest, EndsWithoutALastPassWhenTheStorageIsMissing)
{
    writeSettings("StRep=C:\\none\\\r\n");
    start();
    end();
    EXPECT_TRUE(source_.requested().isEmpty());
    EXPECT_FALSE(isVisible(QStringLiteral("Interface")));
}

TEST_F(ProgramTest, StoresTheBrowsersPlaceWhenItEnds)
{
    start();
    topLevel(QStringLiteral("planche"))->move(20, 10);
    end();
    EXPECT_EQ(engine_->settings().read(u"Control", u"Planche.Top"), QStringLiteral("150"));
    EXPECT_EQ(engine_->settings().read(u"Control", u"Planche.Left"), QStringLiteral("300"));
}

TEST_F(ProgramTest, ClearsWhatAKilledRunLeft)
{
    tree_.write(u".velmora-999999999-1.part", "half");
    tree_.write(u"drives/c/in/tmp/.velmora-999999999-2.part", "half");
    start();
    EXPECT_FALSE(tree_.exists(u".velmora-999999999-1.part"));
    EXPECT_FALSE(tree_.exists(u"drives/c/in/tmp/.velmora-999999999-2.part"));
}

TEST_F(ProgramTest, StopsWhenTheStorageGoesAndGoesOnWhenItIsBack)
{
    start();
    ASSERT_TRUE(QFile::rename(tree_.path(u"drives/c/in"), tree_.path(u"drives/c/away")));
    clock_.advance(3s);
    EXPECT_EQ(engine_->storage().lastCheck(), StorageCheck::Missing);
    EXPECT_FALSE(engine_->timer().isActive());
    ASSERT_TRUE(QFile::rename(tree_.path(u"drives/c/away"), tree_.path(u"drives/c/in")));
    clock_.advance(3s);
    EXPECT_EQ(engine_->storage().lastCheck(), StorageCheck::Found);
    EXPECT_TRUE(engine_->timer().isActive());
}

TEST_F(ProgramTest, OpensItsGuideFromTheMainWindow)
{
    start();
    click(QStringLiteral("planche"), QStringLiteral("cSetUp"));
    click(QStringLiteral("Interface"), QStringLiteral("BL"));
    const QString guide = QFileInfo(QCoreApplication::applicationDirPath()).dir().path() +
                          QStringLiteral("/share/velmora/guide/index.html");
    EXPECT_EQ(opener_.opened, QStringList({guide}));
}

} // namespace
} // namespace velmora::test
