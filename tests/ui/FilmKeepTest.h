// A window that makes films and copies of a range, over the browser with thirty images.
#pragma once

#include "BrowserWindowHouse.h"
#include "FileBoxHands.h"
#include "ui/FilmKeep.h"

#include <QPushButton>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace velmora::test {

inline constexpr int kImages = 30;

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

    /// Opens the film, which follows images that arrive but does not play on by itself, and types
    /// the beginning of its range.
    void beginRangeOfFollowingFilm(const QString &from)
    {
        openFilm();
        house_.tick(QStringLiteral("cAuto"));
        house_.holdFilm();
        window_.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
        find<QLineEdit>("filmFrom").setFocus();
        retype("filmFrom", from);
        QTest::keyClick(&find<QLineEdit>("filmFrom"), Qt::Key_Return);
    }

    /// The capture stores one more image of the film's camera.
    void storeAnImage()
    {
        house_.house.putImage({0, 0}, storedName(kImages), pictureBytes(Qt::red));
        Q_EMIT house_.house.store.imageStored({0, 0}, storedName(kImages));
        house_.settle();
        house_.holdFilm();
    }

    /// Another program deletes the oldest images, and the browser lists the folder again.
    void removeFirst(int images)
    {
        for (int i = 0; i < images; ++i) {
            ASSERT_TRUE(QFile::remove(house_.imagePath({0, 0}, storedName(i))));
        }
        house_.browser.refresh();
        house_.settle();
        house_.holdFilm();
    }

    [[nodiscard]] QString forecast() { return find<QLabel>("filmForecast").text(); }

    void choose(const QString &path) { answerFileBox(window_, path); }

    /// The same, and waits for the end.
    QString answer(const QString &path)
    {
        QSignalSpy ended(&maker_, &FilmMaker::ended);
        choose(path);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !ended.isEmpty(); }, 20'000));
        return find<QLabel>("filmTimeLeft").text();
    }

    /// Makes a film of all images under a path; what is said at its end.
    QString film(const QString &path)
    {
        QSignalSpy ended(&maker_, &FilmMaker::ended);
        maker_.makeFilm(maker_.usualWish(), path);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !ended.isEmpty(); }, 20'000));
        return find<QLabel>("filmTimeLeft").text();
    }

    [[nodiscard]] QString out(const QString &name = {}) const
    {
        return house_.house.tree.path(QStringLiteral("out") + name);
    }

    BrowserWindowHouse house_;
    FilmMaker maker_{{house_.house.table, house_.house.storage, house_.data, house_.film,
                      house_.conformity, house_.clock, house_.house.scope}};
    FilmKeep window_{maker_, house_.film};
};

} // namespace velmora::test
