// Notices by mail: gathered, and not repeated.
#include "health/NoticeMail.h"

#include "support/FakeClock.h"
#include "support/MailDouble.h"
#include "support/TempTree.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

class NoticeMailTest : public testing::Test
{
protected:
    NoticeMailTest()
    {
        settings_.write(u"Mail", u"Server", u"mail.example.org");
        settings_.write(u"Mail", u"To", u"guard@example.org");
        HealthOptions(settings_).set(HealthChoice::Mail, true);
        QObject::connect(&mail_, &NoticeMail::failed, &mail_,
                         [this](const QString &text) { failures_.append(text); });
    }

    ~NoticeMailTest() override
    {
        scope_.requestStop();
        clock_.advance(1s);
    }

    NoticeMailTest(const NoticeMailTest &) = delete;
    NoticeMailTest &operator=(const NoticeMailTest &) = delete;
    NoticeMailTest(NoticeMailTest &&) = delete;
    NoticeMailTest &operator=(NoticeMailTest &&) = delete;

    void finish(std::optional<MailProblem> problem = {})
    {
        sender_.finish(std::move(problem));
        clock_.advance(0ms);
    }

    TempTree tree_;
    SettingsFile settings_{tree_.path()};
    FakeClock clock_;
    TaskScope scope_{[](const QString &text) { ADD_FAILURE() << text.toStdString(); }};
    MailDouble sender_;
    NoticeMail mail_{settings_, sender_, clock_, scope_};
    QStringList failures_;
};

TEST_F(NoticeMailTest, SendsNothingUntilItIsChosen)
{
    HealthOptions(settings_).set(HealthChoice::Mail, false);
    mail_.add(QStringLiteral("Camera 0:1 is late"));
    clock_.advance(1h);
    EXPECT_TRUE(sender_.texts.isEmpty());
}

TEST_F(NoticeMailTest, PutsWhatComesTogetherIntoOneMail)
{
    for (int i = 0; i < 10; ++i) {
        mail_.add(QStringLiteral("Camera 0:%1 is late").arg(i));
    }
    clock_.advance(30s);
    ASSERT_EQ(sender_.texts.size(), 1);
    EXPECT_TRUE(sender_.texts.first().contains("Camera 0:0 is late"));
    EXPECT_TRUE(sender_.texts.first().contains("Camera 0:9 is late"));
}

TEST_F(NoticeMailTest, SendsTheNextOneTenMinutesLater)
{
    mail_.add(QStringLiteral("Camera 0:1 is late"));
    clock_.advance(20s);
    finish();
    mail_.add(QStringLiteral("Camera 0:1 is back"));
    clock_.advance(9min);
    EXPECT_EQ(sender_.texts.size(), 1);
    clock_.advance(1min);
    ASSERT_EQ(sender_.texts.size(), 2);
    EXPECT_FALSE(sender_.texts.last().contains("is late"));
}

TEST_F(NoticeMailTest, SendsNothingThatStillWaitsWhenItIsNoLongerChosen)
{
    mail_.add(QStringLiteral("Camera 0:1 is late"));
    HealthOptions(settings_).set(HealthChoice::Mail, false);
    clock_.advance(1h);
    EXPECT_TRUE(sender_.texts.isEmpty());
    HealthOptions(settings_).set(HealthChoice::Mail, true);
    mail_.add(QStringLiteral("Camera 0:1 is back"));
    clock_.advance(20s);
    ASSERT_EQ(sender_.texts.size(), 1);
    EXPECT_FALSE(sender_.texts.last().contains("is late"));
}

TEST_F(NoticeMailTest, GathersOnWhileTheServerHangs)
{
    mail_.add(QStringLiteral("Camera 0:1 is late"));
    clock_.advance(20s);
    mail_.add(QStringLiteral("Camera 0:2 is late"));
    clock_.advance(5h);
    EXPECT_EQ(sender_.texts.size(), 1);
    finish();
    clock_.advance(20s);
    ASSERT_EQ(sender_.texts.size(), 2);
    EXPECT_TRUE(sender_.texts.last().contains("Camera 0:2 is late"));
    EXPECT_FALSE(sender_.texts.last().contains("Camera 0:1 is late"));
}

TEST_F(NoticeMailTest, SendsAgainWhatDidNotGo)
{
    mail_.add(QStringLiteral("Camera 0:1 is late"));
    clock_.advance(20s);
    finish(MailProblem{MailFailure::TimedOut, {}, {}});
    EXPECT_EQ(failures_.size(), 1);
    clock_.advance(10min);
    ASSERT_EQ(sender_.texts.size(), 2);
    EXPECT_TRUE(sender_.texts.last().contains("Camera 0:1 is late"));
}

TEST_F(NoticeMailTest, SendsWhatCameWhileAFullMailWasOnItsWay)
{
    for (int i = 0; i < 200; ++i) {
        mail_.add(QStringLiteral("old %1.").arg(i));
    }
    clock_.advance(20s);
    ASSERT_EQ(sender_.texts.size(), 1);
    mail_.add(QStringLiteral("The storage folder is gone"));
    finish();
    clock_.advance(10min);
    ASSERT_EQ(sender_.texts.size(), 2);
    EXPECT_TRUE(sender_.texts.last().contains("The storage folder is gone"));
    EXPECT_FALSE(sender_.texts.last().contains("old 1"));
}

TEST_F(NoticeMailTest, TellsOnceThatNoServerIsSet)
{
    settings_.write(u"Mail", u"Server", QString());
    mail_.add(QStringLiteral("Camera 0:1 is late"));
    clock_.advance(1h);
    EXPECT_EQ(failures_.size(), 1);
    EXPECT_TRUE(sender_.texts.isEmpty());
}

} // namespace
} // namespace velmora::test
