// The whole way of a picture, from a camera on the network to a file in its folder.
#include "CaptureTest.h"
#include "HttpExchange.h"
#include "support/LoopbackCamera.h"

namespace velmora::test {
namespace {

class CaptureRoad : public testing::Test
{
protected:
    void add(CameraAddress camera, const QByteArray &path, const CameraAnswer &answer,
             const QByteArray &userInfo = {})
    {
        camera_.answer(path, answer);
        house_.addCamera(camera, QString::fromLatin1(camera_.url(path, userInfo)));
    }

    LoopbackCamera camera_;
    HttpClient client_;
    FakeClock clock_;
    CaptureHouse house_{client_, clock_};
};

const QByteArray kDateLine = "Last-Modified: Tue, 07 Mar 2006 14:05:09 GMT\r\n";

TEST_F(CaptureRoad, EndsInAFileForAJpg)
{
    add({0, 0}, "/a.jpg", picture(3000, kDateLine));
    house_.tick();
    EXPECT_EQ(house_.images({0, 0}), QStringList{kImageName});
    EXPECT_EQ(house_.tree.read(house_.folder({0, 0}) + u'/' + kImageName), jpeg(3000));
    EXPECT_EQ(camera_.requests().value(0).version, "HTTP/1.0");
}

TEST_F(CaptureRoad, EndsInAFileForAnyOtherAddress)
{
    add({0, 0}, "/snap?res=2", picture(3000, kDateLine));
    house_.tick();
    EXPECT_EQ(house_.images({0, 0}), QStringList{kImageName});
    EXPECT_EQ(camera_.requests().value(0).version, "HTTP/1.1");
}

TEST_F(CaptureRoad, KeepsGoodAndBadCamerasApart)
{
    add({0, 0}, "/missing", response("404 Not Found", {}, QByteArray(5000, 'n')));
    add({0, 1}, "/good", afterTurns(picture(3000, kDateLine), 1000));
    add({0, 2}, "/cut", pictureDeclared(3000, 5000));
    add({4, 0}, "/old", redirect("/new"));
    camera_.answer("/new", picture(3000, kDateLine));
    add({4, 1}, "/locked", locked(picture(3000), {LockKind::Digest, "me", "pw"}), "me:pw@");
    add({9, 9}, "/short", picture(999));
    house_.tick();
    EXPECT_EQ(house_.stored(),
              (QStringList{QStringLiteral("0:1"), QStringLiteral("4:0"), QStringLiteral("4:1")}));
    EXPECT_EQ(house_.failed(),
              (QStringList{QStringLiteral("0:0"), QStringLiteral("0:2"), QStringLiteral("9:9")}));
    EXPECT_EQ(house_.images({0, 0}) + house_.images({0, 2}) + house_.images({9, 9}), QStringList());
}

TEST_F(CaptureRoad, EndsInNoFileForAnAnswerCutInItsHeaders)
{
    CameraAnswer cut;
    cut.bytes = "HTTP/1.1 200 OK\r\nContent-Ty";
    add({0, 0}, "/a.jpg", cut);
    house_.tick();
    EXPECT_EQ(house_.failed(), QStringList{QStringLiteral("0:0")});
    EXPECT_EQ(house_.images({0, 0}), QStringList());
}

TEST_F(CaptureRoad, KeepsTheEventLoopAliveWithAHundredCameras)
{
    for (int i = 0; i < 100; ++i) {
        add({i / kRows, i % kRows}, "/camera" + QByteArray::number(i) + ".jpg",
            afterTurns(picture(50000, kDateLine), 10));
    }
    const LoopTurns loop;
    QList<int> turns;
    QObject::connect(&house_.store, &ImageStore::imageStored, &house_,
                     [&] { turns.append(loop.turns()); });
    house_.tick();
    EXPECT_EQ(house_.stored().size(), 100);
    RecordProperty("TurnsBetweenFirstAndLast", turns.last() - turns.first());
    EXPECT_GE(turns.last() - turns.first(), 5) << "of the hundred bodies a few are read at a time";
}

TEST_F(CaptureRoad, EndsAtOnceWhenItIsGivenUp)
{
    for (int row = 0; row < kRows; ++row) {
        add({0, row}, "/silent" + QByteArray::number(row), silence());
    }
    LoopTurns loop;
    loop.then(1000, [&] {
        house_.scheduler.giveUp();
        loop.restart();
    });
    house_.tick();
    EXPECT_LE(loop.turns(), 100);
    EXPECT_EQ(camera_.requests().size(), kRows);
    EXPECT_EQ(house_.stored() + house_.failed(), QStringList());
}

} // namespace
} // namespace velmora::test
