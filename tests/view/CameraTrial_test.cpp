// The test of a camera says what the capture then does with the same answer.
#include "view/CameraTrial.h"

#include "cameras/CameraChoices.h"
#include "capture/CaptureTest.h"

#include <tuple>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

constexpr CameraAddress kCamera{0, 3};

using Case = std::tuple<Keep, const char *, qsizetype>; // rule, date sent, bytes

class CameraTrialTest : public CaptureTest, public testing::WithParamInterface<Case>
{
protected:
    CameraTrialTest()
    {
        const SettingsChange change = house_.settings.change(
            [&](SettingsDraft &draft) { setCameraKeep(draft, kCamera, choice()); });
        EXPECT_EQ(change, SettingsChange::Made);
    }

    [[nodiscard]] static KeepChoice choice() { return {std::get<Keep>(GetParam()), 5}; }

    QString verdict()
    {
        CameraTrial &trial = house_.view.trial();
        QString verdict;
        QObject context;
        QObject::connect(&trial, &CameraTrial::ended, &context,
                         [&](const TrialResult &result) { verdict = result.verdict; });
        trial.begin({kCamera, cameraUrl(kCamera), {}, choice()});
        house_.finish();
        return verdict;
    }

    /// Whether the capture keeps the picture; an hour later its name would be another.
    bool isKept()
    {
        const qsizetype before = house_.stored().size();
        house_.load(kCamera);
        clock_.advance(1h);
        return house_.stored().size() > before;
    }

    [[nodiscard]] static ScriptedReply reply()
    {
        const auto &[keep, date, bytes] = GetParam();
        return goodReply(QString::fromLatin1(date), bytes);
    }
};

TEST_P(CameraTrialTest, SaysNewOfWhatTheCaptureKeeps)
{
    add(kCamera, reply());
    EXPECT_EQ(verdict().contains(u"new: "), isKept()) << "into an empty folder";
    EXPECT_EQ(verdict().contains(u"new: "), isKept()) << "the same again";
    add(kCamera, goodReply(QStringLiteral("Tue, 07 Mar 2006 15:05:09 GMT"), 2500));
    ASSERT_TRUE(isKept());
    add(kCamera, reply());
    EXPECT_EQ(verdict().contains(u"new: "), isKept()) << "after another picture";
}

class TrialOfALongAddress : public CaptureTest
{
};

// The row would refuse it, but it can be typed into the sheet and tried.
TEST_F(TrialOfALongAddress, EndsWithAVerdict)
{
    const QString address = QStringLiteral("http://cam/") + QString(250, u'a');
    source_.answer(address, goodReply());
    CameraTrial &trial = house_.view.trial();
    QString verdict;
    QObject context;
    QObject::connect(&trial, &CameraTrial::ended, &context,
                     [&](const TrialResult &result) { verdict = result.verdict; });
    trial.begin({kCamera, address, {}, {}});
    house_.finish();
    EXPECT_EQ(house_.allTexts(), QStringList()) << house_.allTexts().join(u'|').toStdString();
    EXPECT_FALSE(verdict.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Answers, CameraTrialTest,
    testing::Combine(testing::Values(Keep::Dated, Keep::Differing, Keep::Clearly),
                     testing::Values("", "Tue, 07 Mar 2006 14:05:09 GMT", "no date at all"),
                     testing::Values(999, 1000)));

} // namespace
} // namespace velmora::test
