// Films to keep and copies of a range, made under mouse and keys.
#include "ui/FilmKeep.h"

#include "FilmKeepTest.h"
#include "TurnedWheel.h"
#include "support/RefusedCalls.h"
#include "support/ScopedEnv.h"

#include <QComboBox>
#include <QDir>
#include <QImageReader>
#include <QProgressBar>
#include <QScopeGuard>
#include <QSpinBox>

#include <ctime>
#include <optional>
#include <sys/stat.h>
#include <utility>

namespace velmora::test {
namespace {

TEST_F(FilmKeepTest, BeginsWithAllImages)
{
    EXPECT_EQ(window_.objectName(), QStringLiteral("filmExport"));
    EXPECT_EQ(find<QLineEdit>("filmFrom").text(), QStringLiteral("2006-03-07 00:00:00"));
    EXPECT_EQ(find<QLineEdit>("filmTo").text(), QStringLiteral("2006-03-07 00:00:29"));
    EXPECT_TRUE(forecast().startsWith(QStringLiteral("30 images, 1.2 seconds, about ")));
    EXPECT_FALSE(find<QPushButton>("filmCancel").isEnabled());
    EXPECT_FALSE(find<QPushButton>("filmOpen").isEnabled());
}

// Given more room, none shows more of its letters.
void expectNamesWhole(const QWidget &window)
{
    constexpr int kMore = 20;
    for (QLabel *const label : window.findChildren<QLabel *>()) {
        if (label->buddy() != nullptr) {
            const QSize usual = label->size();
            label->resize(usual + QSize(kMore, 0));
            const QImage more = label->grab({usual.width(), 0, kMore, usual.height()}).toImage();
            QImage ground = more;
            ground.fill(more.pixel(kMore - 1, 0));
            EXPECT_EQ(more, ground) << label->text().toStdString();
            label->resize(usual);
        }
    }
}

TEST_F(FilmKeepTest, ShowsTheNamesOfItsBoxesWhole)
{
    expectNamesWhole(window_);
}

TEST_F(FilmKeepTest, ShowsTheNamesOfItsBoxesWholeInLettersThatAreChosenLater)
{
    for (const int points : {11, 16, 24}) {
        QFont chosen = window_.font();
        chosen.setPointSize(points);
        window_.setFont(chosen);
        QCoreApplication::processEvents();
        SCOPED_TRACE(points);
        expectNamesWhole(window_);
    }
}

TEST_F(FilmKeepTest, TheWheelChangesNothingThatHasNotTheFocus)
{
    find<QWidget>("filmFrom").setFocus();
    for (QWidget *const box :
         {&find<QWidget>("filmForm"), &find<QWidget>("filmSize"), &find<QWidget>("filmRate")}) {
        turnWheel(*box);
    }
    EXPECT_EQ(find<QComboBox>("filmForm").currentIndex(), 0);
    EXPECT_EQ(find<QComboBox>("filmSize").currentIndex(), 0);
    EXPECT_FALSE(find<QWidget>("filmRate").hasFocus());
}

TEST_F(FilmKeepTest, ForecastsWhatIsTypedAndChosen)
{
    retype("filmFrom", QStringLiteral("2006-03-07 00:00:10"));
    EXPECT_TRUE(forecast().startsWith(QStringLiteral("20 images"))) << forecast().toStdString();
    find<QComboBox>("filmThinning").setFocus();
    QTest::keyClick(&find<QComboBox>("filmThinning"), Qt::Key_Down);
    find<QSpinBox>("filmThinningNumber").selectAll();
    QTest::keyClicks(&find<QSpinBox>("filmThinningNumber"), QStringLiteral("4"));
    EXPECT_TRUE(forecast().startsWith(QStringLiteral("5 images"))) << forecast().toStdString();
    retype("filmFrom", QStringLiteral("yesterday"));
    EXPECT_TRUE(forecast().contains(QStringLiteral("days or times")));
    EXPECT_FALSE(find<QPushButton>("filmMake").isEnabled());
    EXPECT_FALSE(find<QPushButton>("filmCopy").isEnabled());
}

// A file may be long in answering, or never answer.
TEST_F(FilmKeepTest, OpensNoFileOfAFolderThatIsShownForChoosing)
{
    for (const char *const button : {"filmMake", "filmCopy"}) {
        const QString folder = QLatin1String(button);
        house_.house.tree.write(folder + QStringLiteral("/of no kind"), "x");
        click(button);
        EXPECT_EQ(filesOpenedForListing(window_, house_.house.tree.path(folder)), QStringList());
        window_.findChild<QFileDialog *>()->reject();
        house_.settle();
    }
}

// That would hold up everything else while a large folder is deleted, or moved to another disk.
TEST_F(FilmKeepTest, NothingIsDeletedOrMovedWhereATargetIsChosen)
{
    for (const char *const button : {"filmMake", "filmCopy"}) {
        const QString other = QLatin1String(button) + QStringLiteral("/other");
        house_.house.tree.write(other + QStringLiteral("/film.mp4"), "x");
        click(button);
        EXPECT_FALSE(changesFiles(window_, QFileInfo(house_.house.tree.path(other))));
        window_.findChild<QFileDialog *>()->reject();
        house_.settle();
    }
}

TEST_F(FilmKeepTest, AFilmOfSecondsLastsThatLong)
{
    find<QComboBox>("filmThinning").setCurrentIndex(2);
    find<QSpinBox>("filmThinningNumber").setValue(15);
    EXPECT_TRUE(forecast().startsWith(QStringLiteral("30 images, 15.0 seconds")))
        << forecast().toStdString();
    find<QSpinBox>("filmThinningNumber").setValue(1);
    EXPECT_TRUE(forecast().startsWith(QStringLiteral("25 images, 1.0 seconds")));
}

TEST_F(FilmKeepTest, ForecastsByTheSizeOfTheFirstPicture)
{
    const QSize first = QImageReader(house_.imagePath({0, 0}, storedName(0))).size();
    ASSERT_TRUE(first.isValid());
    EXPECT_EQ(maker_.forecast(maker_.usualWish()).bytes,
              filmBytes(FilmForm::Mp4, filmSize(first), 30));
}

TEST_F(FilmKeepTest, BeginsAndEndsWithTheImagesThatHaveADate)
{
    house_.house.putImage({0, 0}, QStringLiteral("2000_readme.jpg"));
    house_.house.putImage({0, 0}, QStringLiteral("20zz.jpg"));
    house_.browser.chooseCameraAgain();
    house_.settle();
    window_.present({});
    EXPECT_EQ(maker_.usualWish().from, QStringLiteral("2006-03-07 00:00:00"));
    EXPECT_EQ(maker_.usualWish().to, QStringLiteral("2006-03-07 00:00:29"));
}

// The names hold universal time; on the clocks here, that hour did not exist.
TEST_F(FilmKeepTest, BeginsAndEndsWithImagesOfTheHourThatTheLocalClocksSkipped)
{
    std::optional<ScopedEnv> zone(std::in_place, "TZ", "Europe/Paris");
    ::tzset();
    const auto atEnd = qScopeGuard([&zone] {
        zone.reset();
        ::tzset();
    });
    house_.house.putImage({0, 0}, QStringLiteral("20050327_0215000000.jpg"));
    house_.house.putImage({0, 0}, QStringLiteral("20060326_0230000000.jpg"));
    house_.browser.chooseCameraAgain();
    house_.settle();
    window_.present({});
    EXPECT_EQ(maker_.usualWish().from, QStringLiteral("2005-03-27 02:15:00"));
    EXPECT_EQ(maker_.usualWish().to, QStringLiteral("2006-03-26 02:30:00"));
    EXPECT_EQ(maker_.forecast(maker_.usualWish()).images, 32);
}

TEST_F(FilmKeepTest, SaysThatTheImagesAreAwayInsteadOfCopyingNone)
{
    QDir(house_.house.tree.path(u"drives/c")).rename(QStringLiteral("in"), QStringLiteral("away"));
    QSignalSpy ended(&maker_, &FilmMaker::ended);
    maker_.copyImages(maker_.usualWish(), out());
    maker_.makeFilm(maker_.usualWish(), out(QStringLiteral("/a.mp4")));
    ASSERT_EQ(ended.size(), 2);
    for (const QList<QVariant> &told : ended) {
        EXPECT_TRUE(told.first().toString().startsWith(
            QStringLiteral("The folder of the images is not there: C:\\in\\")));
    }
    EXPECT_EQ(maker_.result(), QString());
    EXPECT_FALSE(find<QPushButton>("filmOpen").isEnabled());
}

TEST_F(FilmKeepTest, NoFilmIsMadeOfAFolderThatCouldNotBeReadToItsEnd)
{
    const RefusedCall failing(Call::ReadFolder, EIO, 1, 1);
    store(storedName(kImages));
    QSignalSpy ended(&maker_, &FilmMaker::ended);
    maker_.makeFilm(maker_.usualWish(), out(QStringLiteral("/a.mp4")));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !ended.isEmpty(); }));
    EXPECT_EQ(ended.first().first().toString(),
              QStringLiteral("No film was made: the folder could not be read to its end: "
                             "Input/output error"));
    EXPECT_EQ(maker_.result(), QString());
}

TEST_F(FilmKeepTest, ACopyOfAFolderThatCouldNotBeReadToItsEndSaysSo)
{
    const RefusedCall failing(Call::ReadFolder, EIO, 1, 1);
    store(storedName(kImages));
    QSignalSpy ended(&maker_, &FilmMaker::ended);
    maker_.copyImages(maker_.usualWish(), out());
    ASSERT_TRUE(QTest::qWaitFor([&] { return !ended.isEmpty(); }));
    EXPECT_EQ(ended.first().first().toString(),
              QStringLiteral("31 images copied; there may be more: the folder could not be read to "
                             "its end: Input/output error."));
    EXPECT_EQ(maker_.result(), QString());
}

TEST_F(FilmKeepTest, SaysThatThereAreNoImages)
{
    house_.addImages({0, 1}, 0);
    house_.clickRow(QStringLiteral("lstCam"), 1);
    window_.present({});
    EXPECT_EQ(forecast(), QStringLiteral("There are no images."));
    EXPECT_FALSE(find<QPushButton>("filmMake").isEnabled());
}

TEST_F(FilmKeepTest, MakesAFilmAndOpensIt)
{
    QSignalSpy opened(&window_, &FilmKeep::openWanted);
    click("filmMake");
    const QString told = answer(out(QStringLiteral("/a")));
    EXPECT_TRUE(QFile::exists(out(QStringLiteral("/a.mp4")))) << told.toStdString();
    EXPECT_EQ(QDir(out()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
              QStringList({QStringLiteral("a.mp4")}));
    EXPECT_EQ(window_.focusWidget(), &find<QPushButton>("filmOpen"));
    QTest::keyClick(&find<QPushButton>("filmOpen"), Qt::Key_Space);
    QTest::keyClick(&find<QPushButton>("filmShowFolder"), Qt::Key_Space);
    ASSERT_EQ(opened.size(), 2);
    EXPECT_EQ(opened.front().front().toString(), out(QStringLiteral("/a.mp4")));
    EXPECT_EQ(opened.back().front().toString(), out());
}

TEST_F(FilmKeepTest, TellsWhatEndedWhileItWasClosed)
{
    click("filmMake");
    QSignalSpy ended(&maker_, &FilmMaker::ended);
    choose(out(QStringLiteral("/a")));
    ASSERT_TRUE(QTest::qWaitFor([&] { return maker_.isBusy(); }));
    window_.close();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !ended.isEmpty(); }, 20'000));
    window_.present({});
    EXPECT_EQ(find<QLabel>("filmTimeLeft").text(), QStringLiteral("The film is ready: 30 images."));
    QSignalSpy opened(&window_, &FilmKeep::openWanted);
    click("filmOpen");
    ASSERT_EQ(opened.size(), 1);
    EXPECT_EQ(opened.front().front().toString(), out(QStringLiteral("/a.mp4")));
    window_.close();
    window_.present({});
    EXPECT_EQ(find<QLabel>("filmTimeLeft").text(), QString());
    EXPECT_FALSE(find<QPushButton>("filmOpen").isEnabled());
}

TEST_F(FilmKeepTest, AFilmGoesWhereTheLinkInItsPlaceLeads)
{
    house_.house.tree.write(u"elsewhere/a.mp4", "old");
    ASSERT_TRUE(
        QFile::link(house_.house.tree.path(u"elsewhere/a.mp4"), out(QStringLiteral("/a.mp4"))));
    EXPECT_EQ(film(out(QStringLiteral("/a.mp4"))), QStringLiteral("The film is ready: 30 images."));
    EXPECT_TRUE(QFileInfo(out(QStringLiteral("/a.mp4"))).isSymLink());
    EXPECT_GT(house_.house.tree.read(u"elsewhere/a.mp4").size(), 1000);
    EXPECT_EQ(house_.house.tree.files(u"elsewhere"), QStringList({QStringLiteral("a.mp4")}));
}

TEST_F(FilmKeepTest, LeavesAloneWhatIsNoFileInThePlaceOfAFilm)
{
    const QString pipe = out(QStringLiteral("/pipe.mp4"));
    const QString folder = out(QStringLiteral("/folder.mp4"));
    const QString nowhere = out(QStringLiteral("/nowhere.mp4"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    ASSERT_TRUE(QFile::link(house_.house.tree.path(u"gone/a.mp4"), nowhere));
    ASSERT_TRUE(QDir().mkpath(folder));
    EXPECT_EQ(film(pipe), pipe + QStringLiteral(" cannot be written: Invalid argument"));
    EXPECT_EQ(film(nowhere),
              nowhere + QStringLiteral(" cannot be written: No such file or directory"));
    EXPECT_EQ(film(folder), folder + QStringLiteral(" cannot be written: Is a directory"));
    EXPECT_FALSE(QFileInfo(pipe).isFile());
    EXPECT_TRUE(QFileInfo(nowhere).isSymLink());
}

TEST_F(FilmKeepTest, WhoTypesWhileAFilmIsMadeKeepsTheKeys)
{
    click("filmMake");
    QSignalSpy ended(&maker_, &FilmMaker::ended);
    choose(out(QStringLiteral("/a")));
    ASSERT_TRUE(QTest::qWaitFor([&] { return maker_.isBusy(); }));
    auto &box = find<QLineEdit>("filmTo");
    QTest::mouseClick(&box, Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !ended.isEmpty(); }, 20'000));
    EXPECT_TRUE(find<QPushButton>("filmOpen").isEnabled());
    EXPECT_EQ(window_.focusWidget(), &box);
}

TEST_F(FilmKeepTest, AKeyPressedTwiceDoesNotCancel)
{
    QSignalSpy ended(&maker_, &FilmMaker::ended);
    find<QPushButton>("filmMake").setFocus();
    QTest::keyClick(&find<QPushButton>("filmMake"), Qt::Key_Space);
    choose(out(QStringLiteral("/a")));
    ASSERT_TRUE(QTest::qWaitFor([&] { return maker_.isBusy(); }));
    QTest::keyClick(window_.focusWidget(), Qt::Key_Space);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !ended.isEmpty(); }, 20'000));
    EXPECT_TRUE(QFile::exists(out(QStringLiteral("/a.mp4"))));
    EXPECT_EQ(window_.focusWidget(), &find<QPushButton>("filmOpen"));
}

TEST_F(FilmKeepTest, CancelLeavesNothingBehind)
{
    click("filmMake");
    QSignalSpy ended(&maker_, &FilmMaker::ended);
    choose(out(QStringLiteral("/a")));
    ASSERT_TRUE(QTest::qWaitFor([&] { return maker_.isBusy(); }));
    click("filmCancel");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !ended.isEmpty(); }));
    EXPECT_TRUE(QDir(out()).isEmpty());
    EXPECT_TRUE(find<QPushButton>("filmMake").isEnabled());
    EXPECT_FALSE(find<QPushButton>("filmOpen").isEnabled());
}

TEST_F(FilmKeepTest, CopiesARangeToAFolder)
{
    QSignalSpy opened(&window_, &FilmKeep::openWanted);
    retype("filmFrom", QStringLiteral("2006-03-07 00:00:10"));
    click("filmCopy");
    EXPECT_EQ(answer(out()), QStringLiteral("20 images copied."));
    ASSERT_EQ(house_.house.tree.files(u"out").size(), 20);
    EXPECT_EQ(house_.house.tree.files(u"out").first(), storedName(10));
    EXPECT_EQ(find<QProgressBar>("filmProgress").value(),
              find<QProgressBar>("filmProgress").maximum());
    QTest::keyClick(&find<QPushButton>("filmShowFolder"), Qt::Key_Space);
    ASSERT_EQ(opened.size(), 1);
    EXPECT_EQ(opened.front().front().toString(), out());
}

// It has not been deleted: listed again, it can be copied.
TEST_F(FilmKeepTest, SaysThatAnotherProgramRenamesTheImagesOfACopy)
{
    const QString older = house_.imagePath({0, 0}, QStringLiteral("20060101_000000.jpg"));
    ASSERT_TRUE(QFile::copy(house_.imagePath({0, 0}, storedName(0)), older));
    store(storedName(kImages));
    ASSERT_TRUE(
        QFile::rename(older, house_.imagePath({0, 0}, QStringLiteral("20060101_0000000100.jpg"))));
    click("filmCopy");
    EXPECT_TRUE(answer(out()).endsWith(
        QStringLiteral(" copied. The images are being renamed. Begin again when that is done.")));
    EXPECT_EQ(house_.house.tree.files(u"out"), QStringList());
}

TEST_F(FilmKeepTest, CopiesOverNothing)
{
    house_.house.tree.write(QStringLiteral("out/") + storedName(3), "mine");
    click("filmCopy");
    EXPECT_EQ(answer(out()), QStringLiteral("29 images copied, 1 were there."));
    EXPECT_EQ(house_.house.tree.read(QStringLiteral("out/") + storedName(3)), "mine");
}

TEST_F(FilmKeepTest, ItsPartsHaveNamesThatPeopleUnderstand)
{
    const auto parts = window_.findChildren<QWidget *>(QRegularExpression(QStringLiteral("^film")),
                                                       Qt::FindDirectChildrenOnly);
    EXPECT_GE(parts.size(), 18);
    for (const QWidget *const part : parts) {
        EXPECT_FALSE(part->accessibleName().isEmpty()) << part->objectName().toStdString();
    }
}

TEST_F(FilmKeepTest, ClosedItPlaysNothing)
{
    const auto &timer = find<QTimer>("filmPreviewTimer");
    EXPECT_TRUE(timer.isActive());
    QTest::keyClick(&window_, Qt::Key_Escape);
    EXPECT_FALSE(timer.isActive());
    window_.present({});
    EXPECT_TRUE(timer.isActive());
}

TEST_F(FilmKeepTest, EscapeClosesIt)
{
    QTest::keyClick(&window_, Qt::Key_Escape);
    EXPECT_FALSE(window_.isVisible());
}

TEST_F(FilmKeepTest, CopiesTheRangeThatWasAgreedThoughTheCaptureStoresAnImageMeanwhile)
{
    beginRangeOfFollowingFilm(QStringLiteral("2006-03-07 00:00:10"));
    find<QLineEdit>("filmTo").setFocus();
    retype("filmTo", QStringLiteral("2006-03-07 00:00:14"));
    QTest::keyClick(&find<QLineEdit>("filmTo"), Qt::Key_Return);
    click("filmCopy");
    storeAnImage();
    answer(out());
    EXPECT_EQ(QDir(out()).entryList(QDir::Files).size(), 5);
}

TEST_F(FilmKeepTest, CopiesTheImagesOfTheCameraForWhichTheFolderWasChosen)
{
    click("filmCopy");
    house_.addImages({0, 1}, 3);
    house_.clickRow(QStringLiteral("lstCam"), 1);
    window_.present({}); // "Keep" in the browser, which the question leaves usable
    answer(out());
    EXPECT_EQ(QDir(out()).entryList(QDir::Files).size(), kImages);
}

TEST_F(FilmKeepTest, ImagesThatAreAwayInTheMiddleOfACopyAreNotCalledDeleted)
{
    QSignalSpy ended(&maker_, &FilmMaker::ended);
    maker_.copyImages(maker_.usualWish(), out());
    ASSERT_TRUE(maker_.isBusy());
    QDir(house_.house.tree.path(u"drives/c")).rename(QStringLiteral("in"), QStringLiteral("away"));
    house_.settle();
    ASSERT_EQ(ended.size(), 1);
    const QString told = ended.first().first().toString();
    EXPECT_FALSE(told.contains(QStringLiteral("deleted"))) << told.toStdString();
}

TEST_F(FilmKeepTest, ImagesThatAreAwayInTheMiddleOfAFilmAreNotCalledDeleted)
{
    for (int i = kImages; i < 3000; ++i) {
        house_.house.putImage({0, 0}, storedName(i), pictureBytes(Qt::red));
    }
    house_.browser.refresh();
    house_.settle();
    QSignalSpy ended(&maker_, &FilmMaker::ended);
    QObject::connect(&maker_, &FilmMaker::advanced, &maker_, [this] {
        QDir(house_.house.tree.path(u"drives/c"))
            .rename(QStringLiteral("in"), QStringLiteral("away"));
    });
    maker_.makeFilm(maker_.usualWish(), out(QStringLiteral("/a.mp4")));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !ended.isEmpty(); }, 20'000));
    const QString told = ended.first().first().toString();
    EXPECT_FALSE(told.contains(QStringLiteral("deleted"))) << told.toStdString();
}

TEST_F(FilmKeepTest, ImagesThatAreToBeRenamedWhileAFilmIsMadeAreInIt)
{
    for (int i = kImages; i < 300; ++i) {
        house_.house.putImage({0, 0}, storedName(i), pictureBytes(Qt::red));
    }
    for (int i = 0; i < 10; ++i) { // of the older form, not in view yet
        house_.house.putImage({0, 0}, QStringLiteral("20060308_12000%1.jpg").arg(i),
                              pictureBytes(Qt::red));
        house_.house.putImage({0, 0}, QStringLiteral("20060309_12000%10912.jpg").arg(i),
                              pictureBytes(Qt::red));
    }
    house_.browser.refresh();
    house_.settle();
    QSignalSpy renamed(&house_.conformity, &Conformity::ended);
    QSignalSpy ended(&maker_, &FilmMaker::ended);
    qsizetype renamedMeanwhile = -1;
    QObject::connect(&maker_, &FilmMaker::ended, &maker_,
                     [&] { renamedMeanwhile = renamed.size(); });
    window_.present({});
    QObject::connect(
        &maker_, &FilmMaker::advanced, &maker_, [this] { house_.browser.chooseFile(305); },
        Qt::SingleShotConnection);
    maker_.makeFilm(maker_.usualWish(), out(QStringLiteral("/a.mp4")));
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            house_.clock.advance(std::chrono::milliseconds{0});
            return !ended.isEmpty();
        },
        20'000));
    EXPECT_EQ(ended.first().first().toString(), QStringLiteral("The film is ready: 320 images."));
    EXPECT_EQ(renamedMeanwhile, 0);
    house_.settle();
    EXPECT_EQ(renamed.size(), 1);
}

TEST_F(FilmKeepTest, WaitsForNoRenamingAndSaysSo)
{
    QSignalSpy ended(&maker_, &FilmMaker::ended);
    house_.house.scope.launch(house_.conformity.run());
    ASSERT_TRUE(house_.conformity.isRunning());
    maker_.copyImages(maker_.usualWish(), out());
    EXPECT_FALSE(maker_.isBusy());
    ASSERT_EQ(ended.size(), 1);
    EXPECT_EQ(ended.first().first().toString(),
              QStringLiteral("The images are being renamed. Begin again when that is done."));
    house_.settle();
    maker_.copyImages(maker_.usualWish(), out());
    EXPECT_TRUE(maker_.isBusy());
    house_.settle();
}

} // namespace
} // namespace velmora::test
