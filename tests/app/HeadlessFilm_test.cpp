// A film made without windows that ends before its first picture.
#include "app/HeadlessFilm.h"

#include "support/StoredPictures.h"
#include "support/TempTree.h"

#include <QTimer>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

class HeadlessFilmTest : public testing::Test
{
protected:
    HeadlessFilmTest()
    {
        tree_.write(u"Velmora.ini", "[Control]\r\nStRep=C:\\in\\\r\n"
                                    "[Liste0]\r\nlst0=http://cam/a.png\r\n");
        for (const QString &name : {QStringLiteral("20060307_1405090714.png"),
                                    QStringLiteral("20060307_1405100714.png")}) {
            tree_.write(QStringLiteral("drives/c/in/http%3A%2F%2Fcam%2Fa%2Epng/") + name,
                        pictureBytes(Qt::red));
        }
    }

    [[nodiscard]] FilmRequest request() const
    {
        FilmRequest request;
        request.span = {"2006", "2007"};
        request.target = target();
        return request;
    }

    [[nodiscard]] QString target() const { return tree_.path(QStringLiteral("film.mp4")); }

    static void runUntilItQuits()
    {
        QTimer limit;
        QObject::connect(&limit, &QTimer::timeout, qApp, &QCoreApplication::quit);
        limit.start(20s);
        QCoreApplication::exec();
    }

    TempTree tree_;
    SystemClock clock_;
    HeadlessFilm film_{request(), tree_.path(), clock_};
};

TEST_F(HeadlessFilmTest, IsMade)
{
    film_.start();
    runUntilItQuits();
    EXPECT_EQ(film_.status(), HeadlessFilm::kMade);
    EXPECT_TRUE(QFile::exists(target()));
}

TEST_F(HeadlessFilmTest, IsNotMadeIfInterruptedBeforeItsFirstPicture)
{
    film_.start();
    film_.interrupt();
    runUntilItQuits();
    EXPECT_EQ(film_.status(), HeadlessFilm::kInterrupted);
    EXPECT_FALSE(QFile::exists(target()));
}

} // namespace
} // namespace velmora::test
