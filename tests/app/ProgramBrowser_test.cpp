// How one window of the running program leads to another, and how renaming files affects them.
#include "ProgramHouse.h"
#include "cameras/CameraChoices.h"
#include "support/BusyClock.h"

#include <QAbstractButton>
#include <QClipboard>
#include <QImage>
#include <QLineEdit>
#include <QListView>
#include <QSlider>
#include <QTimer>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

const QString kBrowser = QStringLiteral("planche");
const QString kMain = QStringLiteral("Interface");
const QString kFilm = QStringLiteral("fCine");
const QString kFolder = QStringLiteral("drives/c/in/http%3A%2F%2Fcam%2Fa%2Epng/");

class ProgramBrowser : public ProgramHouse
{
protected:
    void putImage(const QString &name) { tree_.write(QString(kFolder + name), "picture"); }

    void putImages(int count)
    {
        for (int i = 0; i < count; ++i) {
            putImage(QStringLiteral("20050101_0000%1%2")
                         .arg(i, 2, 10, QLatin1Char('0'))
                         .arg(QStringLiteral("0101.png")));
        }
    }

    QString position() { return text(kBrowser, QStringLiteral("NbI")); }
};

TEST_F(ProgramBrowser, SetupClosesTheFilm)
{
    putImages(3);
    start();
    click(kBrowser, QStringLiteral("bFilm"));
    ASSERT_TRUE(isVisible(kFilm));
    click(kBrowser, QStringLiteral("cSetUp"));
    EXPECT_FALSE(isVisible(kFilm));
    EXPECT_TRUE(isVisible(kMain));
}

// The film button reads the folder first, which takes several turns of the event loop.
TEST_F(ProgramBrowser, SetupOpensNoFilmThatWasStillToBeOpened)
{
    writeSettings("StRep=C:\\in\\\r\nCamera=1\r\n");
    putImages(3);
    BusyClock busy(clock_, 0ms);
    engine_ = std::make_unique<CaptureEngine>(tree_.path(), busy, source_);
    program_ = std::make_unique<Program>(*engine_, opener_, mail_);
    program_->start();
    settle();
    busy.setCost(10ms);
    putImage(QStringLiteral("20050102_0000000101.png"));
    QTest::mouseClick(control(kBrowser, QStringLiteral("bFilm")), Qt::LeftButton);
    EXPECT_GT(engine_->scope().running(), 0);
    click(kBrowser, QStringLiteral("cSetUp"));
    EXPECT_TRUE(isVisible(kMain));
    EXPECT_FALSE(isVisible(kFilm));
    end();
    program_.reset();
    engine_.reset();
}

TEST_F(ProgramBrowser, SetupReadsTheRowsOfTheMainWindowAgain)
{
    start();
    engine_->settings().write(u"Groupe0", u"lNew0", 77);
    QTest::mousePress(control(kBrowser, QStringLiteral("cSetUp")), Qt::LeftButton);
    settle();
    EXPECT_EQ(text(kMain, QStringLiteral("lNew0")), QStringLiteral("77"));
}

TEST_F(ProgramBrowser, SetupShowsTheMainWindowWhenItIsReleased)
{
    start();
    QWidget *const button = control(kBrowser, QStringLiteral("cSetUp"));
    QTest::mousePress(button, Qt::LeftButton);
    topLevel(kMain)->hide();
    QTest::mouseRelease(button, Qt::LeftButton);
    EXPECT_TRUE(isVisible(kMain));
}

// With real keys in both windows.
TEST_F(ProgramBrowser, DeleteTakesNoImageOfAnAddressThatWasTypedOver)
{
    putImages(3);
    start();
    click(kBrowser, QStringLiteral("cSetUp"));
    QWidget *const box = control(kMain, QStringLiteral("Source0"));
    QTest::mouseClick(box, Qt::LeftButton);
    QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(box, QStringLiteral("http://cam/b.png"));
    QTest::keyClick(box, Qt::Key_Tab);
    QTest::keyClick(control(kBrowser, QStringLiteral("LstDir")), Qt::Key_Delete);
    EXPECT_EQ(topLevel(kBrowser)->findChild<QMessageBox *>(), nullptr);
    settle();
    EXPECT_EQ(position(), QStringLiteral("0"));
    EXPECT_EQ(text(kBrowser, QStringLiteral("lCamera")), QStringLiteral("cam/b.png"));
    EXPECT_FALSE(tree_.exists(u"drives/c/in/http%3A%2F%2Fcam%2Fb%2Epng"));
    EXPECT_TRUE(tree_.exists(kFolder + QStringLiteral("20050101_0000020101.png")));
}

TEST_F(ProgramBrowser, SaysInItsStatusLineWhatTheWarningSays)
{
    start();
    engine_->problems().warn(QStringLiteral("trouble"));
    EXPECT_EQ(text(kBrowser, QStringLiteral("txtLog")), QStringLiteral("trouble"));
}

TEST_F(ProgramBrowser, ADoubleClickOpensTheImageOnTheDesktop)
{
    putImages(3);
    start();
    QWidget *const cell = control(kBrowser, QStringLiteral("Vue0"));
    QTest::mouseDClick(cell->window()->windowHandle(), Qt::LeftButton, {},
                       cell->mapTo(cell->window(), cell->rect().center()));
    settle();
    EXPECT_EQ(opener_.opened, QStringList{tree_.path(
                                  QString(kFolder + QStringLiteral("20050101_0000000101.png")))});
}

TEST_F(ProgramBrowser, TheRightButtonCopiesAnImageToTheClipboard)
{
    putImages(1);
    QImage image(64, 48, QImage::Format_RGB32);
    image.fill(Qt::red);
    ASSERT_TRUE(
        image.save(tree_.path(QString(kFolder + QStringLiteral("20050101_0000000101.png")))));
    QGuiApplication::clipboard()->clear();
    start();
    QTest::mousePress(control(kBrowser, QStringLiteral("Vue0")), Qt::RightButton);
    settle();
    EXPECT_EQ(QGuiApplication::clipboard()->image().size(), image.size());
}

TEST_F(ProgramBrowser, SpaceInTheListPausesTheFilm)
{
    putImages(3);
    start();
    click(kBrowser, QStringLiteral("bFilm"));
    topLevel(kBrowser)->activateWindow(); // the film's own keys work in its window only
    ASSERT_TRUE(QTest::qWaitForWindowActive(topLevel(kBrowser)));
    QTest::keyClick(control(kBrowser, QStringLiteral("LstDir")), Qt::Key_Space);
    const auto *const button =
        qobject_cast<QAbstractButton *>(control(kFilm, QStringLiteral("PauseCine")));
    EXPECT_EQ(button->text(), QStringLiteral("Start"));
}

TEST_F(ProgramBrowser, SaysWhichCameraStoredAnImageAndWhichFailed)
{
    writeSettings("StRep=C:\\in\\\r\n");
    start();
    EXPECT_EQ(text(kBrowser, QStringLiteral("Capt")), QStringLiteral("0:0"));
    EXPECT_EQ(text(kBrowser, QStringLiteral("NbCapt")), QStringLiteral("1"));
    source_.answer(QStringLiteral("http://cam/a.png"), {{}, {}, {}, {}, QStringLiteral("gone")});
    engine_->scheduler().setTickCounter(59);
    engine_->launch(engine_->scheduler().Timer_Timer());
    settle();
    EXPECT_EQ(text(kBrowser, QStringLiteral("txtLog")), QStringLiteral("Camera 0:0: gone"));
}

TEST_F(ProgramBrowser, TellsThatOfACameraWithoutDatesOnlyOnePictureIsKept)
{
    source_.answer(QStringLiteral("http://cam/a.png"), {QByteArray(2000, 'x'), {}, {}, {}, {}});
    start();
    for (int pass = 1; pass < 3; ++pass) {
        EXPECT_FALSE(text(kMain, QStringLiteral("lMessage")).contains(QStringLiteral("date")));
        engine_->scheduler().setTickCounter(59);
        engine_->launch(engine_->scheduler().Timer_Timer());
        settle();
    }
    const QString notice = undatedNotice(SettingsFile(tree_.path()).snapshot(), {0, 0});
    EXPECT_EQ(text(kMain, QStringLiteral("lMessage")), notice);
    EXPECT_EQ(text(kBrowser, QStringLiteral("txtLog")), notice);
    EXPECT_EQ(logLines().count(notice), 1);
}

TEST_F(ProgramBrowser, ACaptureShowsInTheBrowserThatFollows)
{
    writeSettings("StRep=C:\\in\\\r\nAuto=1\r\n");
    putImages(3);
    start();
    EXPECT_EQ(position(), QStringLiteral("4 / 4"));
}

TEST_F(ProgramBrowser, AClickOnTheFilmSelectsInTheBrowser)
{
    writeSettings("StRep=C:\\in\\\r\nVitesse=1000\r\n");
    putImages(9);
    start();
    click(kBrowser, QStringLiteral("bFilm"));
    auto *const from = topLevel(kFilm)->findChild<QSlider *>(QStringLiteral("sDebut"));
    from->setValue(6);
    click(kFilm, QStringLiteral("iCine"));
    EXPECT_EQ(position(), QStringLiteral("5 / 9"));
}

TEST_F(ProgramBrowser, TheStoredImageOpensEnlarged)
{
    putImages(1);
    start();
    click(kBrowser, QStringLiteral("cSetUp"));
    click(kMain, QStringLiteral("Source0"));
    click(kMain, QStringLiteral("iTarget"));
    EXPECT_TRUE(isVisible(QStringLiteral("Zoom")));
}

TEST_F(ProgramBrowser, RenamingHoldsTheButtonsThatTouchFolders)
{
    putImage(QStringLiteral("20050101_000000.png"));
    engine_ = std::make_unique<CaptureEngine>(tree_.path(), clock_, source_);
    program_ = std::make_unique<Program>(*engine_, opener_, mail_);
    bool ran = false;
    QObject::connect(&engine_->conformity(), &Conformity::began, program_.get(), [&] {
        ran = true;
        EXPECT_FALSE(control(kMain, QStringLiteral("Import"))->isEnabled());
        EXPECT_FALSE(control(kMain, QStringLiteral("MakeDir"))->isEnabled());
        EXPECT_FALSE(engine_->timer().isActive());
    });
    program_->start();
    settle();
    EXPECT_TRUE(ran);
    EXPECT_TRUE(control(kMain, QStringLiteral("Import"))->isEnabled());
    EXPECT_TRUE(control(kMain, QStringLiteral("MakeDir"))->isEnabled());
    EXPECT_TRUE(engine_->timer().isActive());
    EXPECT_FALSE(tree_.exists(QString(kFolder + QStringLiteral("20050101_000000.png"))));
}

TEST_F(ProgramBrowser, RenamingSaysWhatItDoesInBothWindows)
{
    putImage(QStringLiteral("20050101_000000.png"));
    engine_ = std::make_unique<CaptureEngine>(tree_.path(), clock_, source_);
    program_ = std::make_unique<Program>(*engine_, opener_, mail_);
    QStringList browserTexts;
    QStringList mainTexts;
    QObject::connect(&engine_->conformity(), &Conformity::statusChanged, program_.get(), [&] {
        browserTexts.append(text(kBrowser, QStringLiteral("txtLog")));
        mainTexts.append(text(kMain, QStringLiteral("lTmp")));
    });
    program_->start();
    settle();
    ASSERT_EQ(browserTexts.size(), 3);
    EXPECT_EQ(browserTexts.at(0), QStringLiteral("Mise en conformité des fichiers"));
    EXPECT_TRUE(browserTexts.at(1).startsWith(QStringLiteral("Mise en conformité:2005")));
    EXPECT_EQ(browserTexts.at(2), QStringLiteral("Poursuite du chargement"));
    EXPECT_EQ(mainTexts.first(2), browserTexts.first(2));
    EXPECT_EQ(text(kMain, QStringLiteral("lTmp")), QString());
}

TEST_F(ProgramBrowser, ARenamedImageIsListedByItsNewName)
{
    putImage(QStringLiteral("20050101_000000.png"));
    start();
    settle();
    const auto *const list = topLevel(kBrowser)->findChild<QListView *>(QStringLiteral("LstDir"));
    ASSERT_GE(list->model()->rowCount(), 1);
    EXPECT_EQ(list->model()->index(0, 0).data().toString().size(), 23);
}

TEST_F(ProgramBrowser, TheEndClosesEveryWindow)
{
    putImages(3);
    start();
    click(kBrowser, QStringLiteral("bFilm"));
    end();
    clock_.advance(60s);
    for (const QString &window : {kBrowser, kMain, kFilm, QStringLiteral("frmQuitte")}) {
        EXPECT_FALSE(isVisible(window)) << window.toStdString();
    }
    EXPECT_NE(engine_->settings().read(u"Control", u"fCine.Top"), QString());
}

TEST_F(ProgramBrowser, DeletesOldImagesAtTheStartAndListsWhatIsLeft)
{
    writeSettings("StRep=C:\\in\\\r\n[Groupe0]\r\nEffM0=1\r\n");
    putImages(3);
    start();
    EXPECT_EQ(tree_.files(kFolder), QStringList({QStringLiteral("20050101_0000020101.png"),
                                                 QStringLiteral("20060307_1405090714.png")}));
    EXPECT_TRUE(position().startsWith(QStringLiteral("1 / "))) << qPrintable(position());
}

TEST_F(ProgramBrowser, DeletesOldImagesWhenATickedCameraStoresAnother)
{
    writeSettings("StRep=C:\\in\\\r\n[Groupe0]\r\nEffM0=1\r\n");
    start();
    putImages(1);
    clock_.advance(1h);
    source_.answer(
        QStringLiteral("http://cam/a.png"),
        {QByteArray(2000, 'x'), QStringLiteral("Tue, 07 Mar 2006 15:00:00 GMT"), {}, {}, {}});
    engine_->scheduler().setTickCounter(59);
    engine_->launch(engine_->scheduler().Timer_Timer());
    settle();
    EXPECT_EQ(tree_.files(kFolder), QStringList({QStringLiteral("20060307_1405090714.png"),
                                                 QStringLiteral("20060307_1500000715.png")}));
}

TEST_F(ProgramBrowser, KeepsOldImagesOfACameraWhoseBoxIsNotTicked)
{
    putImages(3);
    start();
    EXPECT_EQ(tree_.files(kFolder).size(), 4);
}

TEST_F(ProgramBrowser, APausedFilmKeepsTheNameOfTheCameraWhoseImageItShows)
{
    putImages(3);
    start();
    engine_->settings().write(u"Camera00", u"Name", u"Yard");
    engine_->settings().write(u"Camera01", u"Name", u"Gate");
    click(kBrowser, QStringLiteral("bFilm"));
    click(kBrowser, QStringLiteral("cAuto")); // lists the folder again
    ASSERT_TRUE(topLevel(kFilm)->windowTitle().contains(QStringLiteral("Yard")));
    QTest::mousePress(control(kFilm, QStringLiteral("PauseCine")), Qt::LeftButton);
    auto *const cameras = static_cast<QListView *>(control(kBrowser, QStringLiteral("lstCam")));
    QTest::mouseClick(cameras->viewport(), Qt::LeftButton, {},
                      cameras->visualRect(cameras->model()->index(1, 0)).center());
    settle();
    EXPECT_TRUE(topLevel(kFilm)->windowTitle().contains(QStringLiteral("Yard")))
        << topLevel(kFilm)->windowTitle().toStdString();
}

TEST_F(ProgramBrowser, AFilmThatGoesOnIsNamedAfterTheCameraThatItPlays)
{
    putImages(3);
    start();
    engine_->settings().write(u"Camera01", u"Name", u"Gate");
    click(kBrowser, QStringLiteral("bFilm"));
    QTest::mouseClick(control(kFilm, QStringLiteral("PauseCine")), Qt::LeftButton);
    auto *const cameras = static_cast<QListView *>(control(kBrowser, QStringLiteral("lstCam")));
    QTest::mouseClick(cameras->viewport(), Qt::LeftButton, {},
                      cameras->visualRect(cameras->model()->index(1, 0)).center());
    settle();
    QTest::mouseClick(control(kFilm, QStringLiteral("PauseCine")), Qt::LeftButton);
    auto *const cine = topLevel(kFilm)->findChild<QTimer *>(QStringLiteral("cine"));
    ASSERT_TRUE(QMetaObject::invokeMethod(cine, "timeout", Qt::DirectConnection));
    EXPECT_TRUE(topLevel(kFilm)->windowTitle().contains(QStringLiteral("Gate")))
        << topLevel(kFilm)->windowTitle().toStdString();
}

} // namespace
} // namespace velmora::test
