// Films to keep and copies of a range, made under mouse and keys.
#include "ui/FilmKeep.h"

#include "BrowserWindowHouse.h"
#include "support/RefusedCalls.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QImageReader>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

constexpr int kImages = 30;

class FilmKeepTest : public testing::Test
{
protected:
    FilmKeepTest()
    {
        house_.openOn(kImages);
        house_.house.tree.makeFolder(u"out");
        window_.present({});
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
    }

    ~FilmKeepTest() override
    {
        maker_.cancel();
        EXPECT_TRUE(QTest::qWaitFor([this] { return !maker_.isBusy(); }));
    }

    FilmKeepTest(const FilmKeepTest &) = delete;
    FilmKeepTest &operator=(const FilmKeepTest &) = delete;
    FilmKeepTest(FilmKeepTest &&) = delete;
    FilmKeepTest &operator=(FilmKeepTest &&) = delete;

    template <typename Control>
    Control &find(const char *name)
    {
        return *window_.findChild<Control *>(QLatin1String(name));
    }

    void retype(const char *box, const QString &text)
    {
        find<QLineEdit>(box).selectAll();
        QTest::keyClicks(&find<QLineEdit>(box), text);
    }

    void click(const char *button)
    {
        QTest::mouseClick(&find<QPushButton>(button), Qt::LeftButton);
    }

    QString text(const char *box) { return find<QLineEdit>(box).text(); }

    /// The capture stores an image, and the browser lists the folder again.
    void store(const QString &name)
    {
        house_.house.putImage({0, 0}, name, pictureBytes(Qt::red));
        house_.browser.refresh();
        house_.settle();
    }

    void openFilm()
    {
        house_.click(QStringLiteral("bFilm"));
        house_.holdFilm();
        window_.present({});
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
    }

    void pauseFilm()
    {
        openFilm();
        QTest::mousePress(&house_.find<QPushButton>(QStringLiteral("PauseCine")), Qt::LeftButton);
        QTest::mouseRelease(&house_.find<QPushButton>(QStringLiteral("PauseCine")), Qt::LeftButton);
        ASSERT_FALSE(house_.film.isRunning());
    }

    void expectPaused()
    {
        EXPECT_FALSE(house_.film.isRunning());
        EXPECT_EQ(house_.film.face().PauseCine, QStringLiteral("Start"));
    }

    [[nodiscard]] QString forecast() { return find<QLabel>("filmForecast").text(); }

    /// Answers the box that asks for a file or a folder.
    void choose(const QString &path)
    {
        auto *const box = window_.findChild<QFileDialog *>();
        auto *const name = box->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        name->setText(path); // pasted: the box completes typed text from what it has read
        const auto buttons = box->findChild<QDialogButtonBox *>()->buttons();
        for (QAbstractButton *const button : buttons) {
            if (box->findChild<QDialogButtonBox *>()->buttonRole(button) ==
                QDialogButtonBox::AcceptRole) {
                QTest::mouseClick(button, Qt::LeftButton);
                return;
            }
        }
    }

    /// The same, and waits for the end.
    QString answer(const QString &path)
    {
        QSignalSpy ended(&maker_, &FilmMaker::ended);
        choose(path);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !ended.isEmpty(); }, 20'000));
        return find<QLabel>("filmTimeLeft").text();
    }

    [[nodiscard]] QString out(const QString &name = {}) const
    {
        return house_.house.tree.path(QStringLiteral("out") + name);
    }

    BrowserWindowHouse house_;
    FilmMaker maker_{{house_.house.table, house_.house.storage, house_.data, house_.film,
                      house_.clock, house_.house.scope}};
    FilmKeep window_{maker_, house_.film};
};

TEST_F(FilmKeepTest, BeginsWithAllImages)
{
    EXPECT_EQ(window_.objectName(), QStringLiteral("filmExport"));
    EXPECT_EQ(find<QLineEdit>("filmFrom").text(), QStringLiteral("2006-03-07 00:00:00"));
    EXPECT_EQ(find<QLineEdit>("filmTo").text(), QStringLiteral("2006-03-07 00:00:29"));
    EXPECT_TRUE(forecast().startsWith(QStringLiteral("30 images, 1.2 seconds, about ")));
    EXPECT_FALSE(find<QPushButton>("filmCancel").isEnabled());
    EXPECT_FALSE(find<QPushButton>("filmOpen").isEnabled());
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

TEST_F(FilmKeepTest, WhatIsTypedIsTheRangeOfTheFilm)
{
    house_.click(QStringLiteral("bFilm"));
    house_.holdFilm();
    window_.present({});
    retype("filmFrom", QStringLiteral("2006-03-07 00:00:05"));
    QTest::keyClick(&find<QLineEdit>("filmFrom"), Qt::Key_Return);
    EXPECT_EQ(house_.film.face().range, (PlayRange{6, kImages}));
    retype("filmTo", QStringLiteral("2006-03-07 00:00:19"));
    QTest::keyClick(&find<QLineEdit>("filmTo"), Qt::Key_Return);
    EXPECT_EQ(house_.film.face().range, (PlayRange{6, 20}));
}

TEST_F(FilmKeepTest, TheSlidersOfTheFilmAreItsRange)
{
    house_.click(QStringLiteral("bFilm"));
    house_.holdFilm();
    window_.present({});
    find<QPushButton>("filmMake").setFocus();
    house_.film.sDebut_Change(11);
    EXPECT_EQ(find<QLineEdit>("filmFrom").text(), QStringLiteral("2006-03-07 00:00:10"));
    EXPECT_TRUE(forecast().startsWith(QStringLiteral("20 images")));
}

TEST_F(FilmKeepTest, TheSlidersReachABoxInWhichTheCursorStands)
{
    openFilm();
    find<QLineEdit>("filmTo").setFocus();
    house_.film.sDebut_Change(11);
    EXPECT_EQ(text("filmFrom"), QStringLiteral("2006-03-07 00:00:10"));
    retype("filmTo", QStringLiteral("2006-03-07 00:00:19"));
    QTest::keyClick(&find<QLineEdit>("filmTo"), Qt::Key_Return);
    house_.film.sFin_Change(25);
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-07 00:00:24"));
}

TEST_F(FilmKeepTest, ItsRangeEndsWithAnImageThatWasStoredSince)
{
    store(storedName(kImages));
    openFilm();
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-07 00:00:30"));
    EXPECT_TRUE(forecast().startsWith(QStringLiteral("31 images"))) << forecast().toStdString();
}

TEST_F(FilmKeepTest, ItsRangeGrowsWithAPausedFilm)
{
    pauseFilm();
    find<QLineEdit>("filmFrom").setFocus();
    store(storedName(kImages));
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-07 00:00:30"));
    EXPECT_TRUE(forecast().startsWith(QStringLiteral("31 images"))) << forecast().toStdString();
}

TEST_F(FilmKeepTest, ItsRangeEndsWithTheLastImageLeft)
{
    pauseFilm();
    for (int i = 20; i < kImages; ++i) {
        ASSERT_TRUE(QFile::remove(house_.imagePath({0, 0}, storedName(i))));
    }
    store(storedName(5));
    EXPECT_TRUE(forecast().startsWith(QStringLiteral("20 images"))) << forecast().toStdString();
    house_.film.sDebut_Change(3);
    EXPECT_EQ(text("filmFrom"), QStringLiteral("2006-03-07 00:00:02"));
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-07 00:00:19"));
}

TEST_F(FilmKeepTest, LeavesAPausedFilmPaused)
{
    pauseFilm();
    retype("filmFrom", QStringLiteral("2006-03-07 00:00:05"));
    QTest::keyClick(&find<QLineEdit>("filmFrom"), Qt::Key_Return);
    EXPECT_EQ(house_.film.face().range, (PlayRange{6, kImages}));
    expectPaused();
    retype("filmTo", QStringLiteral("2006-03-07 00:00:19"));
    QTest::keyClick(&find<QLineEdit>("filmTo"), Qt::Key_Return);
    EXPECT_EQ(house_.film.face().range, (PlayRange{6, 20}));
    expectPaused();
    using std::chrono::year;
    window_.takeDays({year{2006} / 3 / 7, year{2006} / 3 / 9});
    EXPECT_EQ(house_.film.face().range, (PlayRange{1, kImages}));
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-09")); // as it was chosen
    expectPaused();
}

TEST_F(FilmKeepTest, AMomentHalfTypedIsNotTakenWhenAnotherWindowComesUp)
{
    store(QStringLiteral("20060308_1200000812.jpg"));
    openFilm();
    find<QLineEdit>("filmTo").setFocus();
    retype("filmTo", QStringLiteral("2006-03-07"));
    house_.window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&house_.window));
    EXPECT_EQ(house_.film.face().range, (PlayRange{1, kImages + 1}));
    house_.film.sDebut_Change(5);
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-07"));
    window_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    QTest::keyClicks(&find<QLineEdit>("filmTo"), QStringLiteral(" 00:00:15"));
    find<QPushButton>("filmMake").setFocus(); // leaves the box
    EXPECT_EQ(text("filmTo"), QStringLiteral("2006-03-07 00:00:15"));
    EXPECT_EQ(house_.film.face().range.end, 16);
}

TEST_F(FilmKeepTest, WhatIsNoMomentYetOutlivesAnotherWindow)
{
    house_.click(QStringLiteral("bFilm"));
    house_.holdFilm();
    window_.present({});
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    find<QLineEdit>("filmFrom").setFocus();
    retype("filmFrom", QStringLiteral("2006-0"));
    house_.window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&house_.window));
    house_.film.sDebut_Change(11);
    EXPECT_EQ(find<QLineEdit>("filmFrom").text(), QStringLiteral("2006-0"));
}

TEST_F(FilmKeepTest, TakesTheDaysOfTheCalendar)
{
    using namespace std::chrono;
    window_.takeDays({year{2006} / 3 / 7, year{2006} / 3 / 9});
    EXPECT_EQ(find<QLineEdit>("filmFrom").text(), QStringLiteral("2006-03-07"));
    EXPECT_EQ(find<QLineEdit>("filmTo").text(), QStringLiteral("2006-03-09"));
    EXPECT_TRUE(forecast().startsWith(QStringLiteral("30 images")));
}

TEST_F(FilmKeepTest, BeginsWithTheDaysThatAreChosen)
{
    window_.close();
    using std::chrono::year;
    window_.present(DayRange{year{2006} / 3 / 6, year{2006} / 3 / 9});
    EXPECT_EQ(find<QLineEdit>("filmFrom").text(), QStringLiteral("2006-03-06"));
    EXPECT_EQ(find<QLineEdit>("filmTo").text(), QStringLiteral("2006-03-09"));
    EXPECT_TRUE(forecast().startsWith(QStringLiteral("30 images")));
}

TEST_F(FilmKeepTest, TakesNoDaysOfAnotherCamera)
{
    house_.addImages({0, 1}, 3);
    house_.clickRow(QStringLiteral("lstCam"), 1);
    using std::chrono::year;
    window_.takeDays({year{2006} / 3 / 7, year{2006} / 3 / 9});
    EXPECT_EQ(find<QLineEdit>("filmFrom").text(), QStringLiteral("2006-03-07 00:00:00"));
}

TEST_F(FilmKeepTest, KeepsItsRangeWhenAFilmOfAnotherCameraPlays)
{
    retype("filmFrom", QStringLiteral("2006-03-07 00:00:10"));
    find<QComboBox>("filmForm").setFocus();
    house_.addImages({0, 1}, 3);
    house_.clickRow(QStringLiteral("lstCam"), 1);
    house_.click(QStringLiteral("bFilm"));
    house_.settle();
    EXPECT_EQ(find<QLineEdit>("filmFrom").text(), QStringLiteral("2006-03-07 00:00:10"));
}

TEST_F(FilmKeepTest, KeepsWhatIsTypedWhenItIsOpenedAgain)
{
    retype("filmFrom", QStringLiteral("2006-03-07 00:00:10"));
    using std::chrono::year;
    window_.present(DayRange{year{2006} / 3 / 6, year{2006} / 3 / 9});
    EXPECT_EQ(find<QLineEdit>("filmFrom").text(), QStringLiteral("2006-03-07 00:00:10"));
    EXPECT_TRUE(forecast().startsWith(QStringLiteral("20 images")));
    house_.addImages({0, 1}, 3);
    house_.clickRow(QStringLiteral("lstCam"), 1);
    window_.present({});
    EXPECT_EQ(find<QLineEdit>("filmFrom").text(), QStringLiteral("2006-03-07 00:00:00"));
    EXPECT_TRUE(forecast().startsWith(QStringLiteral("3 images")));
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

TEST_F(FilmKeepTest, EscapeClosesIt)
{
    QTest::keyClick(&window_, Qt::Key_Escape);
    EXPECT_FALSE(window_.isVisible());
}

} // namespace
} // namespace velmora::test
