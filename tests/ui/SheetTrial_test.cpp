// The test in a camera's sheet, of a picture too long to stay in memory while it arrives.
#include "WindowHouse.h"
#include "cameras/CameraChoices.h"
#include "support/ScopedEnv.h"
#include "support/StoredPictures.h"
#include "ui/CameraSheet.h"
#include "ui/PictureView.h"

#include <QDir>
#include <QLabel>
#include <QPushButton>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

constexpr CameraAddress kCamera{0, 3};

/// Gives one picture, whose bytes are where the request wants them.
class LongAnswer final : public PictureSource
{
public:
    LongAnswer(Clock &clock, QByteArray picture)
        : clock_(clock)
        , picture_(std::move(picture))
    {
    }

    QCoro::Task<HttpReply> fetch(HttpRequest request, std::stop_token stop) override
    {
        Q_UNUSED(stop);
        HttpReply reply;
        reply.outcome = FetchOutcome::Arrived;
        reply.body = emptyBody(request, stock_);
        reply.body.append(QByteArrayView(picture_).first(1000));
        reply.body.append(QByteArrayView(picture_).sliced(1000));
        co_await clock_.yield();
        co_return reply;
    }

private:
    Clock &clock_;
    QByteArray picture_;
    std::shared_ptr<BodyStock> stock_ = std::make_shared<BodyStock>();
};

class TrialOfALongPicture : public testing::Test
{
protected:
    void test()
    {
        house_.addCamera(kCamera, cameraUrl(kCamera));
        sheet_.present(kCamera);
        QTest::mouseClick(sheet_.findChild<QPushButton *>(QStringLiteral("sheetTest")),
                          Qt::LeftButton);
        rooms_.clock.advance(std::chrono::seconds{1});
    }

    QString storage() { return house_.tree.path(u"drives/c/in"); }

    WindowHouse rooms_;
    CaptureHouse &house_ = rooms_.house;
    LongAnswer source_{rooms_.clock, finePicture({1200, 900})};
    CameraTrial trial_{{house_.table, house_.storage, house_.engine.requests(), source_,
                        rooms_.clock, house_.scope}};
    CameraSheet sheet_{house_.settings, trial_};
};

TEST_F(TrialOfALongPicture, IsShownThoughThereIsNoStorageFolder)
{
    ASSERT_TRUE(QDir().rmdir(storage()));
    test();
    EXPECT_TRUE(sheet_.findChild<PictureView *>(QStringLiteral("sheetPicture"))->holdsPicture());
}

TEST_F(TrialOfALongPicture, LeavesTheStorageFolderAsItIs)
{
    test();
    EXPECT_EQ(QDir(storage()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
}

// A new picture must not be called unchanged because the disk has no room for it.
TEST_F(TrialOfALongPicture, IsJudgedThoughTheDiskTakesNothing)
{
    const ScopedEnv temporary("TMPDIR", QFile::encodeName(house_.tree.path(u"in the way")));
    house_.tree.write(u"in the way", "a file");
    house_.addCamera(kCamera, cameraUrl(kCamera));
    house_.putImage(kCamera, storedName(1));
    ASSERT_EQ(house_.settings.change(
                  [](SettingsDraft &draft) { setCameraKeep(draft, kCamera, {Keep::Differing}); }),
              SettingsChange::Made);
    test();
    const QString result = sheet_.findChild<QLabel *>(QStringLiteral("sheetResult"))->text();
    EXPECT_TRUE(result.contains(u"new: it differs")) << result.toStdString();
}

} // namespace
} // namespace velmora::test
